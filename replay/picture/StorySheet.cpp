// Deals a limited number of cards out to the gestures, those that did most first. A gesture's cards are at equal steps
// of its motion and not of time, so that a rest takes none.
#include "replay/picture/StorySheet.h"

#include "replay/story/StoryWriter.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace replay {

namespace {

constexpr std::size_t FirstAndLast = 2;
constexpr std::size_t MostTrails = 50;     // of a panel; a session may have any number of fingers that never lift
constexpr std::size_t MostIdlePanels = 2;  // of touches that nothing came of
// Between two cards of a gesture, see MotionMeter: eleven degrees of a turn, a fifth of the visible width of a way.
constexpr double ProgressOfStep = 0.2;

// How many cards an item's motion could use: two, for the beginning and the end, and more as it goes on.
std::size_t StepsOf(const StoryItem& item) {
    const double progress = item.moments.back().progress - item.moments.front().progress;
    if (!(progress > 0)) {
        return item.effects.empty() ? 1 : 0;
    }
    const double steps = std::min(progress / ProgressOfStep, static_cast<double>(MostPanelsOfGesture));
    return std::min({static_cast<std::size_t>(steps) + 2, item.moments.size(), MostPanelsOfGesture});
}

std::size_t Wish(const StoryItem& item) {
    return item.effects.size() + StepsOf(item);
}

// Moments at equal steps of progress, the last one always among them.
std::vector<const Moment*> ChooseSteps(const std::vector<Moment>& moments, std::size_t count) {
    std::vector<const Moment*> chosen;
    const double first = moments.front().progress;
    const double whole = moments.back().progress - first;
    for (std::size_t step = 0; step + 1 < count; ++step) {
        const double wanted = first + whole * static_cast<double>(step) / static_cast<double>(count - 1);
        // The last moment that has not gone further: on a rest, the one at its end.
        const auto beyond =
            std::find_if(moments.begin(), moments.end(), [&](const Moment& m) { return m.progress > wanted; });
        const Moment* moment = beyond == moments.begin() ? &moments.front() : &*std::prev(beyond);
        if (moment != &moments.back() && (chosen.empty() || chosen.back() != moment)) {
            chosen.push_back(moment);
        }
    }
    chosen.push_back(&moments.back());
    return chosen;
}

// The moments at which something came of the gesture, and the steps of its motion. A step that shows the same frame as
// an effect is left out.
std::vector<const Moment*> ChooseMoments(const StoryItem& item, std::size_t count) {
    std::vector<const Moment*> chosen;
    for (std::size_t i = 0; i < std::min(count, item.effects.size()); ++i) {
        chosen.push_back(&item.effects[i]);
    }
    if (const std::size_t steps = std::min(count - chosen.size(), StepsOf(item)); steps > 0) {
        for (const Moment* step : ChooseSteps(item.moments, steps)) {
            if (std::none_of(item.effects.begin(), item.effects.end(),
                             [&](const Moment& effect) { return effect.frame == step->frame; })) {
                chosen.push_back(step);
            }
        }
    }
    std::stable_sort(chosen.begin(), chosen.end(), [](const Moment* a, const Moment* b) { return a->time < b->time; });
    return chosen;
}

// Deals the panels out: one to each item as far as they go, those that matter most first, then one more to each in turn
// that can use it. The touch with the most fingers is always among them.
std::vector<std::size_t> Share(const std::vector<const StoryItem*>& items, std::size_t panels) {
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return MattersMore(*items[a], *items[b]); });
    const auto most = std::max_element(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return items[a]->fingers < items[b]->fingers;
    });
    if (most != order.end()) {
        std::rotate(order.begin(), most, most + 1);
    }
    std::size_t idle = 0;
    order.erase(std::remove_if(order.begin(), order.end(),
                               [&](std::size_t i) { return !items[i]->isGesture && ++idle > MostIdlePanels; }),
                order.end());
    std::vector<std::size_t> shares(items.size(), 0);
    bool dealt = true;
    while (panels > 0 && dealt) {
        dealt = false;
        for (std::size_t i = 0; i < order.size() && panels > 0; ++i) {
            std::size_t& share = shares[order[i]];
            if (share < Wish(*items[order[i]])) {
                ++share;
                --panels;
                dealt = true;
            }
        }
    }
    return shares;
}

// The paths of the fingers that took part between a gesture's beginning and a moment of it, those that landed last.
std::vector<Trail> TrailsAt(const StoryItem& item, std::size_t frame) {
    std::vector<Trail> trails;
    if (!item.paths) {
        return trails;
    }
    for (const FingerPath& path : *item.paths) {
        const bool leftBefore = path.liftedAt && *path.liftedAt < item.firstFrame;
        if (leftBefore || path.points.front().frame > frame) {
            continue;
        }
        Trail trail;
        trail.finger = path.number;
        trail.down = !path.liftedAt || *path.liftedAt > frame;
        for (std::size_t i = 0; i < path.points.size() && path.points[i].frame <= frame; ++i) {
            // Of the way before the gesture only the place where the finger was when it began.
            if (path.points[i].frame <= item.firstFrame) {
                trail.points.clear();
            }
            trail.points.emplace_back(path.points[i].x, path.points[i].y);
        }
        trails.push_back(std::move(trail));
    }
    const auto tooMany = static_cast<std::ptrdiff_t>(trails.size() - std::min(trails.size(), MostTrails));
    trails.erase(trails.begin(), trails.begin() + tooMany);
    return trails;
}

std::string CaptionOf(const StoryItem& item, const Moment& moment, bool isLast) {
    if (isLast && !item.isCut) {
        return item.text;
    }
    if (!moment.effect.empty()) {
        return moment.effect;
    }
    const std::string moved = Describe(moment.motion, item.words);
    if (moved.empty() && moment.view.rubberBand) {
        return BandText(*moment.view.rubberBand);
    }
    return moved.empty() ? item.who + " down" : moved;
}

void AddPanels(Sheet& sheet, const StoryItem& item, std::size_t count) {
    const std::vector<const Moment*> chosen = ChooseMoments(item, count);
    for (const Moment* moment : chosen) {
        Panel panel;
        panel.view = moment->view;
        panel.trails = TrailsAt(item, moment->frame);
        panel.heading = item.what.empty() ? item.who : item.what;
        panel.time = SecondsText(moment->time);
        panel.caption = CaptionOf(item, *moment, moment == chosen.back());
        sheet.panels.push_back(std::move(panel));
    }
}

}  // namespace

Sheet MakeSheet(const Story& story, const std::string& title, std::shared_ptr<const scene::Model> model) {
    Sheet sheet;
    sheet.title = title;
    sheet.subtitle = SummaryOf(story);
    sheet.model = std::move(model);
    std::vector<const StoryItem*> items;
    std::size_t gestures = 0;
    for (const StoryItem& item : story.GetItems()) {
        gestures += item.isGesture ? 1U : 0U;
        if (!item.moments.empty()) {
            items.push_back(&item);
        }
    }

    sheet.panels.push_back({story.GetFirstView(), {}, "Start", SecondsText(story.GetStartTime()), ""});
    const std::vector<std::size_t> shares = Share(items, MostPanels - FirstAndLast);
    std::size_t shown = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (shares[i] > 0) {
            shown += items[i]->isGesture ? 1U : 0U;
            AddPanels(sheet, *items[i], shares[i]);
        }
    }
    if (shown < gestures) {
        sheet.subtitle +=
            "; of " + std::to_string(gestures) + " gestures the " + std::to_string(shown) + " that did most are shown";
    }
    sheet.panels.push_back({story.GetLastView(), {}, "End", SecondsText(story.GetEndTime()), ""});
    return sheet;
}

}  // namespace replay
