// Finds the format by the first line, checks the events, turns protocol A into protocol B, and follows the slots. What
// libmtdev gets is checked and filtered before, because it trusts its input.
#include "replay/recording/RecordingReader.h"

#include "replay/files/InputFile.h"
#include "replay/files/ReadError.h"
#include "replay/recording/DeviceText.h"
#include "replay/recording/EvemuText.h"
#include "replay/recording/LibinputText.h"
#include "replay/recording/SlotTracker.h"
#include "replay/session/JsonFields.h"

#include <linux/input-event-codes.h>
#include <mtdev-plumbing.h>
#include <mtdev.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <new>
#include <streambuf>
#include <system_error>
#include <utility>

namespace replay {

namespace {

// Of a protocol A report, the others are left out: a touch frame holds no more, and libmtdev can take very long to
// tell some thirty fingers apart.
constexpr std::size_t MostContacts = 10;

bool IsEndOfReport(const DeviceEvent& event) {
    return event.type == EV_SYN && event.code == SYN_REPORT;
}

bool IsEndOfContact(const DeviceEvent& event) {
    return event.type == EV_SYN && event.code == SYN_MT_REPORT;
}

// Throws unless the events are whole reports in the order of time, and neither too long nor outside the device's slots.
void CheckEvents(const DeviceText& text) {
    const auto fail = [&](const DeviceEvent& event, const std::string& fault) {
        throw ReadError(text.eventsFile, event.line, fault);
    };
    if (text.events.empty()) {
        throw ReadError(text.eventsFile, "there are no events in it");
    }
    if (!IsEndOfReport(text.events.back())) {
        fail(text.events.back(), "the recording is cut off: expected the end of a report (SYN_REPORT)");
    }
    const auto slots = text.axes.find(ABS_MT_SLOT);
    const std::int64_t firstSlot = slots == text.axes.end() ? 0 : slots->second.minimum;
    const std::int64_t lastSlot =
        slots == text.axes.end() ? 0 : std::min<std::int64_t>(slots->second.maximum, firstSlot + MostSlots - 1);
    std::int64_t time = text.events.front().timeUs;
    for (const DeviceEvent& event : text.events) {
        if (event.timeUs < time) {
            fail(event, "the time runs backward: expected " + std::to_string(time) + " microseconds or later");
        }
        time = event.timeUs;
        if (time - text.events.front().timeUs > LongestRecordingUs) {
            fail(event, "expected a recording of at most an hour");
        }
        const bool isSlot = event.type == EV_ABS && event.code == ABS_MT_SLOT && slots != text.axes.end();
        if (isSlot && (event.value < firstSlot || event.value > lastSlot)) {
            fail(event, "expected a slot from " + std::to_string(firstSlot) + " to " + std::to_string(lastSlot));
        }
    }
}

bool HasTouch(const DeviceText& text) {
    return text.axes.contains(ABS_MT_POSITION_X) && text.axes.contains(ABS_MT_POSITION_Y);
}

ReadError NoTouch(const std::string& fileName) {
    return {fileName, "there is no touch in it: expected a multi-touch device, with axes ABS_MT_POSITION_X and "
                      "ABS_MT_POSITION_Y"};
}

// The device must have the axis.
DeviceAxis AxisOf(const DeviceText& text, int code, const std::optional<double>& sizeMm) {
    const AxisRange& axis = text.axes.at(code);
    if (axis.maximum <= axis.minimum) {
        throw ReadError(text.descriptionFile, axis.line, "expected an axis whose maximum is above its minimum");
    }
    DeviceAxis result{axis.minimum, axis.maximum, sizeMm};
    if (!result.sizeMm && axis.resolution > 0) {
        result.sizeMm = (static_cast<double>(axis.maximum) - axis.minimum) / axis.resolution;
    }
    return result;
}

// What libmtdev is given: a code it has no room for would make it write beyond its tables.
bool IsForConverter(const DeviceEvent& event) {
    if (event.type == EV_ABS) {
        return event.code == ABS_MT_POSITION_X || event.code == ABS_MT_POSITION_Y || event.code == ABS_MT_TRACKING_ID;
    }
    // The touch button matters: without it a report without any finger would be passed over.
    const bool isButton = event.type == EV_KEY && event.code == BTN_TOUCH;
    return isButton || IsEndOfContact(event) || IsEndOfReport(event);
}

using Converter = std::unique_ptr<mtdev, decltype(&mtdev_close_delete)>;

Converter MakeConverter(const DeviceText& text) {
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

void Convert(mtdev* converter, const DeviceEvent& event, DeviceEvents& converted) {
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

// Protocol A lists all fingers in every report, without saying which is which. libmtdev finds that out. Reports with a
// gap are left out whole: the next one lists everything again.
DeviceEvents ToProtocolB(const DeviceText& text) {
    const Converter converter = MakeConverter(text);
    DeviceEvents converted;
    std::vector<const DeviceEvent*> report;
    std::size_t contacts = 0;
    bool hasGap = false;
    for (const DeviceEvent& event : text.events) {
        hasGap = hasGap || (event.type == EV_SYN && event.code == SYN_DROPPED);
        if (IsForConverter(event) && (contacts < MostContacts || event.type == EV_KEY || IsEndOfReport(event))) {
            report.push_back(&event);
            contacts += IsEndOfContact(event) ? 1U : 0U;
        }
        if (!IsEndOfReport(event)) {
            continue;
        }
        if (!hasGap) {
            for (const DeviceEvent* part : report) {
                Convert(converter.get(), *part, converted);
            }
        }
        report.clear();
        contacts = 0;
        hasGap = false;
    }
    return converted;
}

// Lets go of each event when it has been followed: a long recording is not in memory twice.
ReportList ReportsOf(const std::map<int, std::int32_t>& initialValues, DeviceEvents events) {
    SlotTracker tracker(initialValues, events);
    ReportList reports;
    std::optional<std::int64_t> start;
    for (; !events.empty(); events.pop_front()) {
        const DeviceEvent& event = events.front();
        if (tracker.Apply(event)) {
            start = start.value_or(event.timeUs);
            reports.Add({event.timeUs - *start, tracker.Contacts()});
        }
    }
    return reports;
}

// A stream whose beginning was read already.
class WholeText : public std::streambuf {
public:
    WholeText(std::string head, std::istream& rest, const std::string& fileName)
        : m_head(std::move(head)), m_rest(rest), m_fileName(fileName) {
        setg(m_head.data(), m_head.data(), m_head.data() + m_head.size());
    }

private:
    int_type underflow() override {
        m_rest.read(m_piece.data(), static_cast<std::streamsize>(m_piece.size()));
        if (m_rest.bad()) {
            throw ReadError(m_fileName, "cannot be read any further");
        }
        setg(m_piece.data(), m_piece.data(), m_piece.data() + m_rest.gcount());
        return gptr() == egptr() ? traits_type::eof() : traits_type::to_int_type(*gptr());
    }

    std::string m_head;
    std::istream& m_rest;
    const std::string& m_fileName;
    std::array<char, 1 << 14> m_piece{};
};

// The text up to the first line that is neither empty nor a comment, which is the second.
std::pair<std::string, std::string> ReadHead(std::istream& input) {
    std::string head;
    for (std::string line; std::getline(input, line);) {
        head += line;
        head += input.eof() ? "" : "\n";
        const std::size_t start = line.find_first_not_of(" \t\r");
        if (start != std::string::npos && line[start] != '#') {
            return {head, line.substr(start)};
        }
    }
    return {head, ""};
}

DeviceText ReadDescription(const std::string& eventsFile, const std::string& given) {
    const std::string file =
        given.empty() ? std::filesystem::path(eventsFile).replace_extension(".desc").string() : given;
    std::error_code ignored;
    if (given.empty() && !std::filesystem::exists(file, ignored)) {
        throw ReadError(eventsFile, "events without a description: expected " + Quoted(file) +
                                        " beside it, or the device's description with --device FILE");
    }
    std::ifstream input = OpenInputFile(file);
    DeviceText text = ReadEvemuText(input, file);
    if (!text.isDescribed) {
        throw ReadError(file, "not the description of a device: expected its name, \"N: ...\"");
    }
    return text;
}

DeviceText ReadEvemu(std::istream& input, const std::string& fileName, const std::string& descriptionFile) {
    DeviceText text = ReadEvemuText(input, fileName);
    if (!text.isDescribed) {
        DeviceText description = ReadDescription(fileName, descriptionFile);
        description.events = std::move(text.events);
        description.eventsFile = fileName;
        text = std::move(description);
    } else if (!descriptionFile.empty()) {
        throw ReadError(fileName, "it describes its device itself: expected events alone, for the description of " +
                                      Quoted(descriptionFile));
    }
    if (!HasTouch(text)) {
        throw NoTouch(text.descriptionFile);
    }
    return text;
}

std::string ListOf(const std::vector<DeviceText*>& devices) {
    constexpr std::size_t LongestListBytes = 150;
    std::string list;
    for (const DeviceText* device : devices) {
        if (list.size() > LongestListBytes) {
            return list + " and others";
        }
        list += (list.empty() ? "" : ", ") + Quoted(device->name) + " at " + Quoted(device->node);
    }
    return list;
}

// The device that is asked for, by its name or node, among those with touch; without a name the only one that was
// touched.
DeviceText ReadLibinput(std::istream& input, const std::string& fileName, const std::string& wanted) {
    std::vector<DeviceText> devices = ReadLibinputText(input, fileName);
    std::vector<DeviceText*> withTouch;
    std::vector<DeviceText*> meant;
    for (DeviceText& device : devices) {
        if (HasTouch(device)) {
            withTouch.push_back(&device);
            if (wanted.empty() ? !device.events.empty() : device.name == wanted || device.node == wanted) {
                meant.push_back(&device);
            }
        }
    }
    if (withTouch.empty()) {
        throw NoTouch(fileName);
    }
    if (meant.size() == 1) {
        return std::move(*meant.front());
    }
    if (!meant.empty()) {
        throw ReadError(fileName, "choose one of its touch devices with --device: " + ListOf(meant));
    }
    if (wanted.empty()) {
        throw ReadError(fileName, "there are no events in it");
    }
    throw ReadError(fileName, "there is no touch device " + Quoted(wanted) + " in it, but " + ListOf(withTouch));
}

}  // namespace

Recording ReadRecording(std::istream& input, const std::string& fileName, const std::string& device) {
    auto [head, line] = ReadHead(input);
    WholeText whole(std::move(head), input, fileName);
    std::istream stream(&whole);
    DeviceText text =
        IsLibinputLine(line) ? ReadLibinput(stream, fileName, device) : ReadEvemu(stream, fileName, device);
    Recording recording;
    recording.deviceName = text.name;
    recording.x = AxisOf(text, ABS_MT_POSITION_X, text.widthMm);
    recording.y = AxisOf(text, ABS_MT_POSITION_Y, text.heightMm);
    CheckEvents(text);
    const bool isProtocolB = text.axes.contains(ABS_MT_SLOT);
    if (!isProtocolB) {
        text.events = ToProtocolB(text);
    }
    recording.reports = ReportsOf(text.initialValues, std::move(text.events));
    if (recording.reports.GetCount() == 0) {
        throw ReadError(text.eventsFile, "expected a report of touch without lost events (SYN_DROPPED)");
    }
    return recording;
}

}  // namespace replay
