#include "replay/RecordingReader.h"

#include "replay/EvemuText.h"
#include "replay/InputFile.h"
#include "replay/ReadError.h"
#include "replay/SlotTracker.h"

#include <linux/input-event-codes.h>
#include <mtdev-plumbing.h>
#include <mtdev.h>

#include <memory>
#include <new>

namespace replay {

namespace {

// Of a protocol A report, the others are left out: a touch frame holds no more, and libmtdev can take for ever to tell
// some thirty fingers apart.
constexpr std::size_t MostContacts = 10;

bool IsEndOfReport(const EvemuEvent& event) {
    return event.type == EV_SYN && event.code == SYN_REPORT;
}

bool IsEndOfContact(const EvemuEvent& event) {
    return event.type == EV_SYN && event.code == SYN_MT_REPORT;
}

// Throws unless the events are whole reports that are neither too long nor outside the device's slots.
void CheckEvents(const EvemuText& text, const std::string& fileName) {
    if (text.events.empty() || !IsEndOfReport(text.events.back())) {
        throw ReadError(fileName, text.lineCount,
                        "the recording is cut off: expected the end of a report (SYN_REPORT)");
    }
    const auto slots = text.axes.find(ABS_MT_SLOT);
    for (const EvemuEvent& event : text.events) {
        if (event.timeUs - text.events.front().timeUs > LongestRecordingUs) {
            throw ReadError(fileName, event.line, "expected a recording of at most an hour");
        }
        const bool isSlot = event.type == EV_ABS && event.code == ABS_MT_SLOT && slots != text.axes.end();
        if (isSlot && (event.value < slots->second.minimum || event.value > slots->second.maximum)) {
            throw ReadError(fileName, event.line,
                            "expected a slot from " + std::to_string(slots->second.minimum) + " to " +
                                std::to_string(slots->second.maximum));
        }
    }
}

DeviceAxis AxisOf(const EvemuText& text, int code, const std::optional<double>& sizeMm, const std::string& fileName) {
    const auto found = text.axes.find(code);
    if (found == text.axes.end()) {
        throw ReadError(fileName, "expected a multi-touch device, with axes ABS_MT_POSITION_X and ABS_MT_POSITION_Y");
    }
    const EvemuAxis& axis = found->second;
    if (axis.maximum <= axis.minimum) {
        throw ReadError(fileName, axis.line, "expected an axis whose maximum is above its minimum");
    }
    DeviceAxis result{axis.minimum, axis.maximum, sizeMm};
    if (!result.sizeMm && axis.resolution > 0) {
        result.sizeMm = (static_cast<double>(axis.maximum) - axis.minimum) / axis.resolution;
    }
    return result;
}

// What libmtdev is given: a code it has no room for would make it write beyond its tables.
bool IsForConverter(const EvemuEvent& event) {
    if (event.type == EV_ABS) {
        return event.code == ABS_MT_POSITION_X || event.code == ABS_MT_POSITION_Y || event.code == ABS_MT_TRACKING_ID;
    }
    // The touch button matters: without it a report that tells no finger at all would be passed over.
    const bool isButton = event.type == EV_KEY && event.code == BTN_TOUCH;
    return isButton || IsEndOfContact(event) || IsEndOfReport(event);
}

using Converter = std::unique_ptr<mtdev, decltype(&mtdev_close_delete)>;

Converter MakeConverter(const EvemuText& text) {
    Converter converter(mtdev_new(), &mtdev_close_delete);
    if (!converter || mtdev_init(converter.get()) != 0) {
        throw std::bad_alloc();
    }
    for (const auto& [code, axis] : text.axes) {
        if (code == ABS_MT_POSITION_X || code == ABS_MT_POSITION_Y || code == ABS_MT_TRACKING_ID) {
            mtdev_set_mt_event(converter.get(), code, 1);
            mtdev_set_abs_minimum(converter.get(), code, axis.minimum);
            mtdev_set_abs_maximum(converter.get(), code, axis.maximum);
            mtdev_set_abs_fuzz(converter.get(), code, axis.fuzz);
        }
    }
    return converter;
}

void Convert(mtdev* converter, const EvemuEvent& event, std::vector<EvemuEvent>& converted) {
    input_event raw{};
    raw.input_event_sec = static_cast<decltype(raw.input_event_sec)>(event.timeUs / MicrosecondsPerSecond);
    raw.input_event_usec = static_cast<decltype(raw.input_event_usec)>(event.timeUs % MicrosecondsPerSecond);
    raw.type = event.type;
    raw.code = event.code;
    raw.value = event.value;
    mtdev_put_event(converter, &raw);
    while (mtdev_empty(converter) == 0) {
        mtdev_get_event(converter, &raw);
        converted.push_back({event.timeUs, raw.type, raw.code, raw.value, event.line});
    }
}

// Protocol A tells all fingers in every report, without saying which is which. libmtdev finds that out. Reports with a
// gap are left out whole: the next one tells everything again.
std::vector<EvemuEvent> ToProtocolB(const EvemuText& text) {
    const Converter converter = MakeConverter(text);
    std::vector<EvemuEvent> converted;
    std::vector<const EvemuEvent*> report;
    std::size_t contacts = 0;
    bool hasGap = false;
    for (const EvemuEvent& event : text.events) {
        hasGap = hasGap || (event.type == EV_SYN && event.code == SYN_DROPPED);
        if (IsForConverter(event) && (contacts < MostContacts || event.type == EV_KEY || IsEndOfReport(event))) {
            report.push_back(&event);
            contacts += IsEndOfContact(event) ? 1U : 0U;
        }
        if (!IsEndOfReport(event)) {
            continue;
        }
        if (!hasGap) {
            for (const EvemuEvent* part : report) {
                Convert(converter.get(), *part, converted);
            }
        }
        report.clear();
        contacts = 0;
        hasGap = false;
    }
    return converted;
}

std::vector<Report> ReportsOf(const EvemuText& text) {
    const bool isProtocolB = text.axes.contains(ABS_MT_SLOT);
    const std::vector<EvemuEvent> events = isProtocolB ? text.events : ToProtocolB(text);
    SlotTracker tracker(text.initialValues, events);
    std::vector<Report> reports;
    std::optional<std::int64_t> start;
    for (const EvemuEvent& event : events) {
        if (tracker.Apply(event)) {
            start = start.value_or(event.timeUs);
            reports.push_back({event.timeUs - *start, tracker.Contacts()});
        }
    }
    return reports;
}

}  // namespace

Recording ReadRecording(std::istream& input, const std::string& fileName) {
    const EvemuText text = ReadEvemuText(input, fileName);
    Recording recording;
    recording.deviceName = text.deviceName;
    recording.x = AxisOf(text, ABS_MT_POSITION_X, text.widthMm, fileName);
    recording.y = AxisOf(text, ABS_MT_POSITION_Y, text.heightMm, fileName);
    CheckEvents(text, fileName);
    recording.reports = ReportsOf(text);
    if (recording.reports.empty()) {
        throw ReadError(fileName, "expected a report of touch without lost events (SYN_DROPPED)");
    }
    return recording;
}

Recording ReadRecordingFile(const std::string& fileName) {
    std::ifstream file = OpenInputFile(fileName);
    return ReadRecording(file, fileName);
}

}  // namespace replay
