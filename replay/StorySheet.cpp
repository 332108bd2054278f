#include "replay/StorySheet.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace replay {

namespace {

constexpr std::size_t FirstAndLast = 2;

// Moments at equal steps of progress, the last one always among them. A gesture that changed nothing has one.
std::vector<const Moment*> ChooseMoments(const StoryItem& item, std::size_t count) {
    std::vector<const Moment*> chosen;
    const std::vector<Moment>& moments = item.moments;
    const double whole = moments.back().progress;
    if (whole > 0) {
        for (std::size_t step = 0; step + 1 < count; ++step) {
            const double wanted = whole * static_cast<double>(step) / static_cast<double>(count - 1);
            // The last moment that has not gone further: on a rest, the one at its end.
            const auto beyond =
                std::find_if(moments.begin(), moments.end(), [&](const Moment& m) { return m.progress > wanted; });
            const Moment* moment = beyond == moments.begin() ? &moments.front() : &*std::prev(beyond);
            if (moment != &moments.back() && (chosen.empty() || chosen.back() != moment)) {
                chosen.push_back(moment);
            }
        }
    }
    chosen.push_back(&moments.back());
    return chosen;
}

// How many panels an item could use.
std::size_t Wish(const StoryItem& item) {
    return item.moments.back().progress > 0 ? std::min(item.moments.size(), MostPanelsOfGesture) : 1;
}

// Deals the panels out: one to each item as far as they go, then one more to each in turn that can use it.
std::vector<std::size_t> Share(const std::vector<const StoryItem*>& items, std::size_t panels) {
    std::vector<std::size_t> shares(items.size(), 0);
    bool dealt = true;
    while (panels > 0 && dealt) {
        dealt = false;
        for (std::size_t i = 0; i < items.size() && panels > 0; ++i) {
            if (shares[i] < Wish(*items[i])) {
                ++shares[i];
                --panels;
                dealt = true;
            }
        }
    }
    return shares;
}

// The paths of the fingers that took part between a gesture's beginning and a moment of it.
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
            trail.points.push_back(path.points[i].at);
        }
        trails.push_back(std::move(trail));
    }
    return trails;
}

void AddPanels(Sheet& sheet, const StoryItem& item, std::size_t count) {
    const std::vector<const Moment*> chosen = ChooseMoments(item, count);
    for (const Moment* moment : chosen) {
        Panel panel;
        panel.view = moment->view;
        panel.trails = TrailsAt(item, moment->frame);
        panel.heading = item.what;
        panel.time = SecondsText(moment->time);
        const bool last = moment == chosen.back();
        panel.caption = last ? item.text : Describe(moment->motion, item.words);
        if (panel.caption.empty()) {
            panel.caption = item.who;
        }
        sheet.panels.push_back(std::move(panel));
    }
}

}  // namespace

Sheet MakeSheet(const Story& story, const std::string& title, std::shared_ptr<const viewer::Model> model) {
    Sheet sheet;
    sheet.title = title;
    sheet.subtitle = SummaryOf(story);
    sheet.model = std::move(model);
    std::vector<const StoryItem*> items;
    std::size_t gestures = 0;
    for (const StoryItem& item : story.GetItems()) {
        gestures += item.drawable ? 1U : 0U;
        if (!item.moments.empty()) {
            items.push_back(&item);
        }
    }

    sheet.panels.push_back({story.GetFirstView(), {}, "Start", SecondsText(0), ""});
    const std::vector<std::size_t> shares = Share(items, MostPanels - FirstAndLast);
    std::size_t shown = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (shares[i] > 0) {
            ++shown;
            AddPanels(sheet, *items[i], shares[i]);
        }
    }
    if (shown < gestures) {
        sheet.subtitle +=
            "; the first " + std::to_string(shown) + " of " + std::to_string(gestures) + " gestures are shown";
    }
    sheet.panels.push_back({story.GetLastView(), {}, "End", SecondsText(story.GetEndTime()), ""});
    return sheet;
}

}  // namespace replay
