// Any bytes as a recording of a touch device, in any format that is read. What the reader accepts must keep the
// reader's promises; the session made from it must hold well-formed touch frames and survive being written and read.
// What it refuses, it must refuse with its own error.
#include "fuzz/ReadFault.h"
#include "fuzz/Require.h"
#include "replay/recording/RecordingReader.h"
#include "replay/recording/RecordingSession.h"
#include "replay/session/SessionReader.h"
#include "replay/session/SessionWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <variant>

namespace {

using fuzz::Require;
using replay::Recording;
using replay::RecordingOptions;
using replay::Session;

const std::string FileName = "fuzz.evemu";
// A session has a tick every 10 ms, so that a few bytes can ask for an hour of it. The tenth part of a minute holds
// everything that can happen.
constexpr std::int64_t LongestPlayedUs = 6'000'000;
// Of the events, so many are written and read; the session reader's own fuzzer cares for the rest.
constexpr std::size_t WrittenEvents = 16;
constexpr std::int64_t TickMs = 10;

std::optional<Recording> Read(const std::string& text) {
    std::istringstream input(text);
    try {
        return replay::ReadRecording(input, FileName);
    } catch (const replay::ReadError& error) {
        fuzz::RequireNamedFault(error, FileName, text, true);
        return std::nullopt;
    }
}

void CheckAxis(const replay::DeviceAxis& axis) {
    Require(axis.minimum < axis.maximum, "an axis has a range");
    Require(!axis.sizeMm || *axis.sizeMm > 0, "a device has a size, if any");
}

void CheckRecording(const Recording& recording) {
    CheckAxis(recording.x);
    CheckAxis(recording.y);
    Require(recording.reports.GetCount() > 0 && recording.reports.begin()->timeUs == 0,
            "the first report is at time 0");
    std::int64_t time = 0;
    for (const replay::Report& report : recording.reports) {
        Require(report.timeUs >= time && report.timeUs <= replay::LongestRecordingUs, "times run forward for an hour");
        time = report.timeUs;
        for (std::size_t i = 0; i < report.contacts.size(); ++i) {
            Require(report.contacts[i].trackingId >= 0, "a finger has an id");
            Require(i == 0 || report.contacts[i - 1].slot < report.contacts[i].slot, "fingers come by ascending slot");
        }
    }
}

// The views that recordings are played to: every shape of conversion, and the smallest and largest of sizes.
RecordingOptions OptionsFor(std::size_t choice) {
    RecordingOptions options;
    options.feeding = choice / 4 % 2 == 0 ? input::Feeding::FixedStep : input::Feeding::EveryReport;
    switch (choice % 4) {
    case 0: break;
    case 1:
        options.viewKind = "drawingview";
        options.width = options.height = 2;
        break;
    case 2:
        options.orthographic = false;
        options.navMethod = "explore";
        options.bounds = {};
        options.environment = {"HXAPP_DONTZOOM"};
        break;
    default:
        options.viewKind = "other";
        options.width = options.height = UINT32_MAX;
        break;
    }
    return options;
}

// Follows the fingers from frame to frame. Two slots of a broken device can have the same id at the same time.
class FrameCheck {
public:
    explicit FrameCheck(const RecordingOptions& options) : m_options(options) {}

    void operator()(const replay::TouchEvent& event) {
        std::map<std::int32_t, int> down;
        std::map<std::int32_t, int> known;
        for (std::size_t i = 0; i < event.frame.records.size(); ++i) {
            const workflow::TouchRecord& record = event.frame.records.at(i);
            const bool isUsed = static_cast<std::int32_t>(i) < event.frame.count;
            Require(isUsed == (record.id >= 0), "the records of a frame are as many as its count");
            if (isUsed) {
                CheckRecord(record);
                known[record.id] += record.flags == workflow::TouchDown ? 0 : 1;
                down[record.id] += record.flags == workflow::TouchUp ? 0 : 1;
            }
        }
        std::erase_if(known, [](const auto& finger) { return finger.second == 0; });
        std::erase_if(down, [](const auto& finger) { return finger.second == 0; });
        Require(event.frame.count > 0, "a frame has a finger");
        Require(known == m_down, "every finger that was down is in the frame, and no other moves or lifts");
        m_down = down;
    }

    void operator()(const replay::TimerEvent& event) {
        Require(event.interval == TickMs && (!m_lastTick || event.now == *m_lastTick + TickMs), "ticks are even");
        m_lastTick = event.now;
    }

    template <typename Event>
    void operator()(const Event& /*event*/) {
        Require(false, "a recording gives ticks and frames");
    }

private:
    void CheckRecord(const workflow::TouchRecord& record) {
        Require(record.x >= 1 && record.y >= 1, "pixel zero is no place");
        Require(static_cast<std::uint32_t>(record.x) < m_options.width, "a finger is inside the view's width");
        Require(static_cast<std::uint32_t>(record.y) < m_options.height, "a finger is inside the view's height");
        Require(record.time >= m_lastTime, "the touch clock runs forward");
        Require(record.flags == workflow::TouchDown || record.flags == workflow::TouchMove ||
                    record.flags == workflow::TouchUp,
                "a record has one flag");
        m_lastTime = record.time;
    }

    const RecordingOptions& m_options;
    std::map<std::int32_t, int> m_down;  // how many fingers of each id
    std::int32_t m_lastTime = 1;
    std::optional<std::int64_t> m_lastTick;
};

void CheckSession(const Recording& recording, const RecordingOptions& options) {
    Session session = replay::SessionFromRecording(recording, options);
    FrameCheck check(options);
    for (const replay::Event& event : session.events) {
        std::visit(check, event);
    }
    session.events.resize(std::min(session.events.size(), WrittenEvents));
    std::stringstream text;
    replay::WriteSession(session, text);
    Require(replay::ReadSession(text, FileName) == session, "the session of a recording reads back equal");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::optional<Recording> recording = Read(std::string(data, data + size));
    if (recording) {
        CheckRecording(*recording);
        if (recording->reports.GetLast().timeUs <= LongestPlayedUs) {
            CheckSession(*recording, OptionsFor(size));
        }
    }
    return 0;
}
