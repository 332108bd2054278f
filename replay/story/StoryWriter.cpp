// Columns fit ordinary texts; a longer one moves only the rest of its own line.
#include "replay/story/StoryWriter.h"

#include <algorithm>
#include <cstddef>

namespace replay {

std::string SummaryOf(const Story& story) {
    const viewer::ViewSnapshot& view = story.GetFirstView();
    std::string text = std::to_string(story.GetEventCount()) + (story.GetEventCount() == 1 ? " event" : " events") +
                       " in " + SecondsText(story.GetLength());
    if (story.IsWindow()) {
        text += ", from " + SecondsText(story.GetStartTime()) + " to " + SecondsText(story.GetEndTime());
    }
    if (view.kind.empty()) {
        return text + ", no view";
    }
    text += ", " + view.kind;
    if (view.kind == "other") {
        return text;
    }
    text += " " + std::to_string(view.width) + " x " + std::to_string(view.height) + " px";
    const Motion still = MotionMeter(view).GetMotion();
    if (!still.orthographic) {
        return text + ", perspective";
    }
    return text + ", width " + ShortNumber(still.firstWidth) + " units";
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
