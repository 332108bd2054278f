// Each event goes through the same steps: the clock, what the host did, the touch, the calls, coasting, mouse, mode and
// status. The touch comes before the calls, so that an effect belongs to the gesture on whose frame it came.
#include "replay/story/Story.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>
#include <variant>

namespace replay {

namespace {

constexpr double EchoSeconds = 0.5;       // mouse messages further apart get lines of their own
constexpr double UnplayedSeconds = 1;     // a coasting that has not moved by then is not played
constexpr double SwitchSeconds = 1;       // a status bar that changes later has another cause
constexpr std::size_t MostDrawable = 64;  // items that keep their moments; far more than a sheet can show
constexpr double EffectProgress = 0.5;    // what a click counts beside motion, see MotionMeter
constexpr double MillisecondsPerSecond = 1000;

std::string At(double x, double y) {
    return "(" + std::to_string(std::llround(x)) + ", " + std::to_string(std::llround(y)) + ") px";
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
    return "attached a view: " + view->kind + " " + std::to_string(view->width) + " x " + std::to_string(view->height) +
           " px";
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

// What several fingers did, or would have done; empty when they did nothing.
std::string NameOf(touch::GestureType type, MotionWords words, const Motion& motion) {
    const bool eye = words == MotionWords::Eye;
    switch (type) {
    case touch::GestureNone: return "";
    case touch::GestureTap: return "Tap";
    case touch::GestureSpin: return eye ? "Look around" : "Spin";
    case touch::GesturePanZoomRotate: return eye ? "Fly" : NameOfPictureMotion(motion);
    case touch::GestureDrag: return "Drag";
    case touch::Gesture2DPan: return "Pan";
    case touch::Gesture2DZoomPan: return NameOfPictureMotion(motion);
    case touch::GestureMarkup: return "Markup";
    }
    return "?";  // a value outside the enumeration
}

}  // namespace

Story::Story(const std::optional<viewer::ViewSpec>& view, const viewer::ViewSnapshot& first, const TimeWindow& window)
    : m_window(window),
      m_first(first),
      m_end(first),
      m_last(first),
      m_tracker(window),
      m_navMethod(view ? view->navMethod : std::string()) {
    m_isWindow = std::isfinite(window.from) || std::isfinite(window.to);
}

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
    FollowWindow(after);
    m_last = after;
}

// An event without a time of its own belongs to the one before.
void Story::FollowWindow(const viewer::ViewSnapshot& after) {
    if (m_now < m_window.from) {
        m_first = after;
    }
    if (m_now <= m_window.to) {
        m_end = after;
        m_endTime = m_now;
    }
}

void Story::Finish() {
    AddGestures(m_tracker.EndTouch());
    EndCoasting("the session ends before it moves");
    EndMouseRun();
    m_startTime = std::max(0.0, std::min(m_window.from, m_now));
    m_items.erase(
        std::remove_if(m_items.begin(), m_items.end(),
                       [&](const StoryItem& item) { return item.to < m_window.from || item.from > m_window.to; }),
        m_items.end());
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
            AddAction(SentMessageText(*sent, after), after);
            NameGesture(sent->type == "MsgMouseRightUp" ? "Press and hold" : sent->type == "MsgClickLeft" ? "Tap" : "");
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
        item.isGesture = true;
        if (m_window.Holds(coasting.to)) {
            item.moments.push_back({0, coasting.to, m_last, motion, coasting.meter.GetProgress(), ""});
        }
        AddDrawable(std::move(item));
        return;
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
        AddLine("host", ViewText(*attached->view));
        m_navMethod = *attached->view ? (*attached->view)->navMethod : std::string();
        EndCoasting("ended by the host's view");
        m_tracker.Rebase(after);
    } else if (const auto* changed = std::get_if<ViewerEvent>(&observation.event)) {
        AddLine("host", ChangeText(*changed->change));
        m_navMethod = changed->change->navMethod.value_or(m_navMethod);
        if (changed->change->camera) {
            EndCoasting("ended by the host's camera");
            m_tracker.Rebase(after);
        }
    }
}

void Story::FollowModeAndStatus(const Observation& observation, const viewer::ViewSnapshot& after) {
    if (m_last.rubberBand && !after.rubberBand) {
        AddAction(BandText(*m_last.rubberBand) + ", " + SelectionText("selected", after), after);
    } else if (std::holds_alternative<MouseEvent>(observation.event) && after.selectedParts != m_last.selectedParts) {
        AddAction(SelectionText("the mouse picked", after), after);
    }
    if (observation.navigate.value_or(m_navigate) != m_navigate) {
        m_navigate = *observation.navigate;
        AddAction(m_navigate ? "switched to navigate mode" : "switched to select mode", after);
        m_switchedAt = m_now;
        // The hold is found on a tick, the tap when the fingers lift.
        NameGesture(std::holds_alternative<TimerEvent>(observation.event) ? "Three-finger hold" : "Two-finger tap");
    }
    if (after.statusText != m_last.statusText) {
        AddLine("status bar", "\"" + after.statusText + "\"");
        ShowSwitchedStatus(after.statusText);
    }
}

void Story::ShowSwitchedStatus(const std::string& text) {
    if (!m_switchedAt || m_now - *m_switchedAt > SwitchSeconds) {
        return;
    }
    m_switchedAt.reset();
    std::vector<Moment>* effects = nullptr;
    if (Gesture* open = m_tracker.GetOpen(); open != nullptr && !open->effects.empty()) {
        effects = &open->effects;
    } else if (const auto item =
                   std::find_if(m_items.rbegin(), m_items.rend(), [](const StoryItem& i) { return i.drawable; });
               item != m_items.rend() && !item->effects.empty()) {
        effects = &item->effects;
    }
    if (effects != nullptr) {
        effects->back().view.statusText = text;
        effects->back().time = m_now;
    }
}

void Story::AddAction(const std::string& text, const viewer::ViewSnapshot& after) {
    if (text.empty()) {
        return;
    }
    if (m_tracker.GetOpen() != nullptr) {
        m_tracker.AddEffect(text, m_now, after);
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
        AddDrawable(ItemOf(std::move(gesture)));
    }
}

void Story::AddDrawable(StoryItem item) {
    item.drawable = true;
    m_items.push_back(std::move(item));
    m_drawn.push_back(m_items.size() - 1);
    if (m_drawn.size() <= MostDrawable) {
        return;
    }
    const auto least = std::min_element(m_drawn.begin(), m_drawn.end(), [&](std::size_t a, std::size_t b) {
        return MattersMore(m_items[b], m_items[a]);
    });
    m_items[*least].moments.clear();
    m_items[*least].effects.clear();
    m_items[*least].paths.reset();
    m_drawn.erase(least);
}

StoryItem Story::ItemOf(Gesture gesture) const {
    StoryItem item;
    item.from = gesture.from;
    item.to = gesture.to;
    item.fingers = gesture.fingers;
    item.who = FingersText(gesture.fingers);
    item.words = WordsFor(gesture.type, gesture.motion);

    std::vector<std::string> parts = std::move(gesture.actions);
    const std::string moved = Describe(gesture.motion, item.words);
    if (!moved.empty()) {
        parts.insert(parts.begin(), moved);
    } else if (parts.empty() && gesture.type == touch::GestureMarkup) {
        parts.emplace_back("left to the host's drawing tools");
    }
    item.isGesture = !parts.empty();
    item.text = item.isGesture ? Listed(parts) : "no gesture";
    if (item.isGesture) {
        item.what = gesture.name.empty() ? NameOf(gesture.type, item.words, gesture.motion) : std::move(gesture.name);
    }
    item.firstFrame = gesture.firstFrame;
    item.isCut = gesture.to > m_window.to;
    item.moments = std::move(gesture.moments);
    item.effects = std::move(gesture.effects);
    item.paths = std::move(gesture.paths);
    return item;
}

bool MattersMore(const StoryItem& a, const StoryItem& b) {
    const auto weight = [](const StoryItem& item) {
        const double progress = item.moments.empty() ? 0 : item.moments.back().progress;
        return progress + EffectProgress * static_cast<double>(item.effects.size());
    };
    if (a.isGesture != b.isGesture) {
        return a.isGesture;
    }
    return a.isGesture ? weight(a) > weight(b) : a.fingers > b.fingers;
}

MotionWords Story::WordsFor(touch::GestureType type, const Motion& motion) const {
    const bool explores = !motion.orthographic && m_navMethod == "explore";
    if (type == touch::GestureSpin && !explores) {
        return MotionWords::Model;
    }
    return explores ? MotionWords::Eye : MotionWords::Picture;
}

std::string BandText(const viewer::RubberBand& band) {
    const auto side = [](int a, int b) { return std::to_string(std::abs(static_cast<std::int64_t>(b) - a)); };
    return "band of " + side(band.x0, band.x1) + " x " + side(band.y0, band.y1) + " px from " + At(band.x0, band.y0);
}

std::string FingersText(int fingers) {
    return std::to_string(fingers) + (fingers == 1 ? " finger" : " fingers");
}

std::string SecondsText(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), std::abs(seconds) < 1e9 ? "%.2f s" : "%.3g s", seconds);
    return text.data();
}

}  // namespace replay
