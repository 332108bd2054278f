#include "replay/Story.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>
#include <variant>

namespace replay {

namespace {

constexpr double EchoSeconds = 0.5;       // mouse messages further apart are told separately
constexpr double UnplayedSeconds = 1;     // a coasting that has not moved by then is not played
constexpr std::size_t MostDrawable = 64;  // items that keep their moments; far more than a sheet can show
constexpr double MillisecondsPerSecond = 1000;

std::string At(double x, double y) {
    return "(" + std::to_string(std::llround(x)) + ", " + std::to_string(std::llround(y)) + ")";
}

std::string Listed(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

// "picked housing" after a click, "selected nothing" after a band.
std::string SelectionText(const char* verb, const viewer::ViewSnapshot& view) {
    return std::string(verb) + " " + (view.selectedParts.empty() ? "nothing" : Listed(view.selectedParts));
}

std::string ContextText(const viewer::ViewSnapshot& view) {
    if (!view.contextMenu) {
        return "no context actions";
    }
    return "context actions of " + (view.contextMenu->empty() ? "the view" : *view.contextMenu);
}

// What a message that the component sent means to the user; empty for those that only accompany others.
std::string SentMessageText(const viewer::SendMessageCall& sent, const viewer::ViewSnapshot& after) {
    const std::string at = " at " + At(sent.x, sent.y);
    const std::string fate = sent.componentAnswer.value_or(false) ? ", which the component swallowed itself" : "";
    if (sent.type == "MsgClickLeft") {
        return "left click" + at + fate + ", " + SelectionText("picked", after);
    }
    if (sent.type == "MsgMouseRightUp") {
        return "right click" + at + fate + ", " + ContextText(after);
    }
    return "";
}

std::string CountsText(const std::map<std::string, int>& counts) {
    int total = 0;
    std::vector<std::string> parts;
    for (const auto& [type, count] : counts) {
        total += count;
        const std::string name = type.rfind("Msg", 0) == 0 ? type.substr(3) : type;
        parts.push_back(name + (count > 1 ? " " + std::to_string(count) : ""));
    }
    return std::to_string(total) + (total == 1 ? " message (" : " messages (") + Listed(parts) + ")";
}

std::string ViewText(const std::optional<viewer::ViewSpec>& view) {
    if (!view) {
        return "detached the view";
    }
    return "attached a view: " + view->kind + " " + std::to_string(view->width) + " x " + std::to_string(view->height);
}

std::string ChangeText(const viewer::ViewChange& change) {
    std::vector<std::string> parts;
    if (change.camera) {
        parts.emplace_back("set the camera");
    }
    if (change.spinCenter) {
        parts.emplace_back("set the spin centre");
    }
    if (change.bounds) {
        parts.emplace_back("set the model's box");
    }
    if (change.navMethod) {
        parts.push_back("set the navigation method to \"" + *change.navMethod + "\"");
    }
    if (change.navSpeed) {
        parts.push_back("set the navigation speed to " + ShortNumber(*change.navSpeed));
    }
    return parts.empty() ? "changed nothing of the view" : Listed(parts);
}

std::string PreferencesText(const std::optional<viewer::PreferenceValues>& values) {
    if (!values) {
        return "sent a preference message without data";
    }
    std::vector<std::string> parts;
    for (const auto& [key, value] : *values) {
        parts.push_back(key + (value ? " on" : " off"));
    }
    return "sent preferences: " + (parts.empty() ? "none" : Listed(parts));
}

// The word for a gesture, and the sentence when there is nothing else to say about it.
std::pair<std::string, std::string> NamesOf(touch::GestureType type, MotionWords words, bool explore) {
    const bool eye = words == MotionWords::Eye;
    const std::string idle = "did not move the view";
    switch (type) {
    case touch::GestureNone: return {"Nothing recognised", idle};
    case touch::GestureTap: return {"Tap", idle};
    case touch::GestureSpin: return {eye && explore ? "Look around" : "Spin", idle};
    case touch::GesturePanZoomRotate: return {eye && explore ? "Fly" : "Pan, zoom, twist", idle};
    case touch::GestureDrag: return {"Drag", "drew no band"};
    case touch::Gesture2DPan: return {"2D pan", idle};
    case touch::Gesture2DZoomPan: return {"2D zoom and pan", idle};
    case touch::GestureMarkup: return {"Markup", "left to the host's drawing tools"};
    }
    return {"?", idle};  // a value outside the enumeration
}

}  // namespace

Story::Story(const std::optional<viewer::ViewSpec>& view, const viewer::ViewSnapshot& first)
    : m_first(first), m_last(first), m_navMethod(view ? view->navMethod : std::string()) {}

void Story::Observe(const Observation& observation, const viewer::ViewSnapshot& after) {
    ++m_eventCount;
    AdvanceClock(observation.event);
    FollowHost(observation, after);
    FollowTouch(observation, after);
    FollowCalls(observation, after);
    FollowCoasting(observation, after);
    FollowMouse(observation);
    FollowModeAndStatus(observation, after);
    AddGestures(m_tracker.Leave(m_now));
    m_last = after;
}

void Story::Finish() {
    AddGestures(m_tracker.EndTouch());
    EndCoasting("the session ends before it moves");
    EndMouseRun();
    std::stable_sort(m_items.begin(), m_items.end(),
                     [](const StoryItem& a, const StoryItem& b) { return a.from < b.from; });
}

void Story::AdvanceClock(const Event& event) {
    if (const auto* tick = std::get_if<TimerEvent>(&event)) {
        m_firstTick = m_firstTick.value_or(tick->now);
        m_now = (static_cast<double>(tick->now) - static_cast<double>(*m_firstTick)) / MillisecondsPerSecond;
    } else if (const auto* touch = std::get_if<TouchEvent>(&event); touch != nullptr && !m_firstTick) {
        const std::int32_t time = touch->frame.records.front().time;
        m_firstTouchTime = m_firstTouchTime.value_or(time);
        m_now = (static_cast<double>(time) - *m_firstTouchTime) / MillisecondsPerSecond;
    }
    if (m_mouseRun && m_now - m_mouseRun->to > EchoSeconds) {
        EndMouseRun();
    }
}

void Story::FollowTouch(const Observation& observation, const viewer::ViewSnapshot& after) {
    const auto* touch = std::get_if<TouchEvent>(&observation.event);
    if (touch == nullptr) {
        return;
    }
    if (m_tracker.GetOpen() == nullptr) {
        EndMouseRun();
    }
    AddGestures(m_tracker.Enter(observation, touch->frame, m_now, m_last, after));
}

void Story::FollowCalls(const Observation& observation, const viewer::ViewSnapshot& after) {
    for (const viewer::Call& call : observation.calls) {
        if (const auto* sent = std::get_if<viewer::SendMessageCall>(&call)) {
            AddAction(SentMessageText(*sent, after));
            NameGesture(sent->type == "MsgMouseRightUp" ? "Press and hold" : "");
        } else if (const auto* plain = std::get_if<viewer::PlainCall>(&call)) {
            if (std::string_view(plain->operation) == "StopTransition") {
                EndCoasting("stopped before it moved");
            }
        } else if (const auto* transition = std::get_if<viewer::AddTransitionCall>(&call)) {
            EndCoasting("replaced before it moved");
            m_coasting =
                Coasting{m_now, m_now, TurnDegrees(transition->start, transition->end), false, MotionMeter(after)};
        } else if (const auto* trace = std::get_if<viewer::TraceCall>(&call)) {
            AddLine("component", "traced: " + trace->text.substr(0, trace->text.find('\n')));
        } else if (const auto* managed = std::get_if<viewer::ManageObjectCall>(&call);
                   managed != nullptr && !managed->accepted) {
            AddLine("host", "refused the request for the model's box");
        }
    }
}

void Story::FollowCoasting(const Observation& observation, const viewer::ViewSnapshot& after) {
    if (!m_coasting || !std::holds_alternative<TimerEvent>(observation.event)) {
        return;
    }
    if (m_coasting->meter.Step(after)) {
        m_coasting->moved = true;
        m_coasting->to = m_now;
        m_tracker.Rebase(after);
    } else if (m_coasting->moved || m_now - m_coasting->from > UnplayedSeconds) {
        EndCoasting("not played by the host");
    }
}

void Story::EndCoasting(const char* unmovedReason) {
    if (!m_coasting) {
        return;
    }
    const Coasting coasting = *m_coasting;
    m_coasting.reset();
    StoryItem item;
    item.from = coasting.from;
    item.to = coasting.moved ? coasting.to : coasting.from;
    item.who = "after release";
    item.what = "Coasting";
    item.words = MotionWords::Model;
    const Motion& motion = coasting.meter.GetMotion();
    const std::string planned = ShortNumber(coasting.plannedDegrees) + " degrees";
    if (!coasting.moved) {
        item.text = planned + ", " + unmovedReason;
    } else {
        const bool whole = std::abs(motion.netDegrees - coasting.plannedDegrees) < 0.5;
        item.text = Describe(motion, MotionWords::Model) + (whole ? "" : ", of " + planned);
        item.drawable = true;
        item.moments.push_back({0, coasting.to, m_last, motion, coasting.meter.GetProgress()});
    }
    m_items.push_back(std::move(item));
}

void Story::FollowMouse(const Observation& observation) {
    const auto* mouse = std::get_if<MouseEvent>(&observation.event);
    if (mouse == nullptr) {
        return;
    }
    if (!m_mouseRun) {
        m_mouseRun = MouseRun{m_now, m_now, {}, {}};
    }
    m_mouseRun->to = m_now;
    ++(observation.handled.value_or(false) ? m_mouseRun->swallowed : m_mouseRun->passed)[mouse->type];
}

void Story::EndMouseRun() {
    if (!m_mouseRun) {
        return;
    }
    const MouseRun run = *m_mouseRun;
    m_mouseRun.reset();
    std::vector<std::string> parts;
    if (!run.swallowed.empty()) {
        parts.push_back("swallowed " + CountsText(run.swallowed));
    }
    if (!run.passed.empty()) {
        parts.push_back("passed on " + CountsText(run.passed));
    }
    StoryItem item;
    item.from = run.from;
    item.to = run.to;
    item.who = "mouse";
    item.text = Listed(parts);
    m_items.push_back(std::move(item));
}

void Story::FollowHost(const Observation& observation, const viewer::ViewSnapshot& after) {
    if (const auto* mode = std::get_if<ModeEvent>(&observation.event)) {
        AddLine("host", "sent \"" + mode->mode + "\" to \"" + mode->workflow + "\"");
    } else if (const auto* preferences = std::get_if<PreferencesEvent>(&observation.event)) {
        AddLine("host", PreferencesText(preferences->values));
    } else if (const auto* attached = std::get_if<SetViewEvent>(&observation.event)) {
        AddLine("host", ViewText(attached->view));
        m_navMethod = attached->view ? attached->view->navMethod : std::string();
        EndCoasting("ended by the host's view");
        m_tracker.Rebase(after);
    } else if (const auto* changed = std::get_if<ViewerEvent>(&observation.event)) {
        AddLine("host", ChangeText(changed->change));
        m_navMethod = changed->change.navMethod.value_or(m_navMethod);
        if (changed->change.camera) {
            EndCoasting("ended by the host's camera");
            m_tracker.Rebase(after);
        }
    }
}

void Story::FollowModeAndStatus(const Observation& observation, const viewer::ViewSnapshot& after) {
    if (m_last.rubberBand && !after.rubberBand) {
        const viewer::RubberBand& band = *m_last.rubberBand;
        AddAction("band from " + At(band.x0, band.y0) + " to " + At(band.x1, band.y1) + ", " +
                  SelectionText("selected", after));
    } else if (std::holds_alternative<MouseEvent>(observation.event) && after.selectedParts != m_last.selectedParts) {
        AddAction(SelectionText("the mouse picked", after));
    }
    if (observation.navigate != m_navigate) {
        m_navigate = observation.navigate;
        AddAction(m_navigate ? "switched to navigate mode" : "switched to select mode");
        // The hold is found on a tick, the tap when the fingers lift.
        NameGesture(std::holds_alternative<TimerEvent>(observation.event) ? "Three-finger hold" : "Two-finger tap");
    }
    if (after.statusText != m_last.statusText) {
        AddLine("status bar", "\"" + after.statusText + "\"");
    }
}

void Story::AddAction(const std::string& text) {
    if (text.empty()) {
        return;
    }
    if (Gesture* gesture = m_tracker.GetOpen()) {
        gesture->actions.push_back(text);
    } else {
        AddLine("view", text);
    }
}

void Story::NameGesture(const char* name) {
    if (Gesture* gesture = m_tracker.GetOpen(); gesture != nullptr && *name != '\0') {
        gesture->name = name;
    }
}

void Story::AddLine(const char* who, std::string text) {
    StoryItem item;
    item.from = m_now;
    item.to = m_now;
    item.who = who;
    item.text = std::move(text);
    m_items.push_back(std::move(item));
}

void Story::AddGestures(std::vector<Gesture> gestures) {
    for (Gesture& gesture : gestures) {
        StoryItem item = ItemOf(std::move(gesture));
        if (++m_drawable > MostDrawable) {
            item.moments.clear();
            item.paths.reset();
        }
        m_items.push_back(std::move(item));
    }
}

StoryItem Story::ItemOf(Gesture gesture) const {
    StoryItem item;
    item.from = gesture.from;
    item.to = gesture.to;
    item.who = std::to_string(gesture.fingers) + (gesture.fingers == 1 ? " finger" : " fingers");
    item.words = WordsFor(gesture.type, gesture.motion);
    auto [what, idle] = NamesOf(gesture.type, item.words, m_navMethod == "explore");
    item.what = gesture.name.empty() ? std::move(what) : std::move(gesture.name);

    std::vector<std::string> parts = std::move(gesture.actions);
    const std::string moved = Describe(gesture.motion, item.words);
    if (!moved.empty()) {
        parts.insert(parts.begin(), moved);
    }
    item.text = parts.empty() ? idle : Listed(parts);
    item.drawable = true;
    item.firstFrame = gesture.firstFrame;
    item.moments = std::move(gesture.moments);
    item.paths = std::move(gesture.paths);
    return item;
}

MotionWords Story::WordsFor(touch::GestureType type, const Motion& motion) const {
    if (type == touch::GestureSpin) {
        const bool turnsInPlace = !motion.orthographic && m_navMethod == "explore";
        return turnsInPlace ? MotionWords::Eye : MotionWords::Model;
    }
    return motion.orthographic ? MotionWords::Picture : MotionWords::Eye;
}

std::string SecondsText(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), std::abs(seconds) < 1e9 ? "%.2f s" : "%.3g s", seconds);
    return text.data();
}

std::string SummaryOf(const Story& story) {
    const viewer::ViewSnapshot& view = story.GetFirstView();
    std::string text = std::to_string(story.GetEventCount()) + (story.GetEventCount() == 1 ? " event" : " events") +
                       " in " + SecondsText(story.GetEndTime());
    if (view.kind.empty()) {
        return text + ", no view";
    }
    text += ", " + view.kind;
    if (view.kind == "other") {
        return text;
    }
    text += " " + std::to_string(view.width) + " x " + std::to_string(view.height);
    const Motion still = MotionMeter(view).GetMotion();
    if (!still.orthographic) {
        return text + ", perspective";
    }
    return text + ", width " + ShortNumber(still.firstWidth);
}

void WriteStory(const Story& story, const std::string& title, std::ostream& output) {
    constexpr std::size_t TimeColumns = 20;
    constexpr std::size_t WhoColumns = 15;
    output << title << ": " << SummaryOf(story) << '\n';
    for (const StoryItem& item : story.GetItems()) {
        std::string line = SecondsText(item.from);
        line.insert(0, line.size() < 8 ? 8 - line.size() : 0, ' ');
        if (item.to > item.from) {
            line += " - " + SecondsText(item.to);
        }
        line.resize(std::max(line.size() + 1, TimeColumns), ' ');
        line += item.who;
        line.resize(std::max(line.size() + 1, TimeColumns + WhoColumns), ' ');
        output << line << item.what << (item.what.empty() ? "" : ": ") << item.text << '\n';
    }
}

}  // namespace replay
