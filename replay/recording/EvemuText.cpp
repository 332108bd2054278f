// The lines are read here and not by libevemu, which skips lines it does not know, reports faults on the standard error
// stream without a line number, and leaves out the comments, where the physical size and the initial values stand.
#include "replay/recording/EvemuText.h"

#include "replay/files/ReadError.h"

#include <linux/input-event-codes.h>

#include <charconv>
#include <string_view>
#include <system_error>

namespace replay {

namespace {

constexpr int NewestMinorVersion = 3;

// Takes pieces off the front of a line. Every operation answers whether the piece was there.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    bool Text(std::string_view expected) {
        if (!m_rest.starts_with(expected)) {
            return false;
        }
        m_rest.remove_prefix(expected.size());
        return true;
    }

    template <typename T>
    bool Number(T& value, int base = 10) {
        SkipSpaces();
        const auto [end, fault] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value, base);
        if (fault != std::errc{}) {
            return false;
        }
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
        return true;
    }

    // Exactly six digits: the microseconds of a time.
    bool SixDigits(std::int64_t& value) {
        const std::string_view before = m_rest;
        return Number(value) && value >= 0 && before.size() - m_rest.size() == 6 && before.front() != ' ';
    }

    void SkipSpaces() {
        const std::size_t start = m_rest.find_first_not_of(" \t");
        m_rest.remove_prefix(start == std::string_view::npos ? m_rest.size() : start);
    }

    // Nothing but a comment may follow.
    bool End() {
        SkipSpaces();
        return m_rest.empty() || m_rest.front() == '#';
    }

    [[nodiscard]] std::string_view Rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

class Reader {
public:
    Reader(std::istream& input, const std::string& fileName) : m_input(input), m_fileName(fileName) {
        m_text.descriptionFile = fileName;
        m_text.eventsFile = fileName;
    }

    DeviceText Read() {
        std::string line;
        while (std::getline(m_input, line)) {
            ++m_line;
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            ReadLine(line);
        }
        if (m_input.bad()) {
            throw ReadError(m_fileName, m_line + 1, "cannot be read any further");
        }
        if (!m_text.isDescribed && m_text.events.empty()) {
            throw ReadError(m_fileName, "not a touch recording: there is no device in it and no event");
        }
        return std::move(m_text);
    }

private:
    [[noreturn]] void Fail(const std::string& text) const { throw ReadError(m_fileName, m_line, text); }

    void ReadLine(std::string_view line) {
        Scanner scanner(line);
        if (scanner.End()) {
            ReadComment(line);
        } else if (scanner.Text("E:")) {
            ReadEvent(scanner);
        } else if (!m_text.events.empty()) {
            Fail("expected an event, \"E: seconds.microseconds type code value\"");
        } else if (scanner.Text("N:")) {
            scanner.SkipSpaces();
            m_text.name = std::string(scanner.Rest());
            m_text.isDescribed = true;
        } else if (!m_text.isDescribed) {
            Fail("not a touch recording: expected the device's name, \"N: ...\", or an event, \"E: ...\"");
        } else if (scanner.Text("A:")) {
            ReadAxis(scanner);
        } else if (!IsOtherDescription(line)) {
            Fail("expected a line of the device's description or an event");
        }
    }

    // Identity, properties, event bits, lights and switches say nothing about touch.
    static bool IsOtherDescription(std::string_view line) {
        return line.size() > 1 && line[1] == ':' && std::string_view("IPBLS").find(line[0]) != std::string_view::npos;
    }

    void ReadComment(std::string_view line) {
        Scanner scanner(line);
        if (!scanner.Text("#") || !m_text.events.empty()) {
            return;
        }
        scanner.SkipSpaces();
        if (scanner.Text("EVEMU")) {
            ReadVersion(scanner);
        } else if (scanner.Text("Size in mm:")) {
            ReadSize(scanner);
        } else if (scanner.Text("Event type")) {
            m_inAxes = scanner.Number(m_code) && m_code == EV_ABS;
            m_code = -1;
        } else if (scanner.Text("Event code")) {
            m_code = scanner.Number(m_code) ? m_code : -1;
        } else if (std::int32_t value = 0; scanner.Text("Value") && scanner.Number(value) && m_inAxes && m_code >= 0) {
            m_text.initialValues[m_code] = value;
        }
    }

    void ReadVersion(Scanner& scanner) const {
        int major = 0;
        int minor = 0;
        const bool isVersion =
            scanner.Number(major) && scanner.Text(".") && scanner.Number(minor) && scanner.Rest().empty();
        if (!isVersion || major != 1 || minor < 0 || minor > NewestMinorVersion) {
            Fail("unsupported version: expected EVEMU 1.0 to 1." + std::to_string(NewestMinorVersion));
        }
    }

    void ReadSize(Scanner& scanner) {
        double width = 0;
        double height = 0;
        scanner.SkipSpaces();
        if (ReadMillimetres(scanner, width) && scanner.Text("x") && ReadMillimetres(scanner, height)) {
            m_text.widthMm = width;
            m_text.heightMm = height;
        }
    }

    // A comment that is not understood is only a comment, so a size that makes no sense is passed over.
    static bool ReadMillimetres(Scanner& scanner, double& value) {
        int whole = 0;
        const bool isSize = scanner.Number(whole) && whole > 0;
        value = whole;
        return isSize;
    }

    void ReadAxis(Scanner& scanner) {
        unsigned code = 0;
        std::int32_t flat = 0;
        AxisRange axis;
        axis.line = m_line;
        const bool described = scanner.Number(code, 16) && scanner.Number(axis.minimum) &&
                               scanner.Number(axis.maximum) && scanner.Number(axis.fuzz) && scanner.Number(flat);
        // The resolution was added after the first version of the format.
        const bool complete = described && (scanner.End() || (scanner.Number(axis.resolution) && scanner.End()));
        if (!complete || code > ABS_MAX) {
            Fail("expected an axis, \"A: code minimum maximum fuzz flat resolution\"");
        }
        m_text.axes[static_cast<int>(code)] = axis;
    }

    void ReadEvent(Scanner& scanner) {
        std::int64_t seconds = 0;
        std::int64_t microseconds = 0;
        DeviceEvent event;
        event.line = m_line;
        const bool timed = scanner.Number(seconds) && scanner.Text(".") && scanner.SixDigits(microseconds) &&
                           seconds >= 0 && seconds <= LatestSecond;
        const bool complete = timed && scanner.Number(event.type, 16) && scanner.Number(event.code, 16) &&
                              scanner.Number(event.value) && scanner.End();
        if (!complete) {
            Fail("expected an event, \"E: seconds.microseconds type code value\"");
        }
        event.timeUs = seconds * MicrosecondsPerSecond + microseconds;
        m_text.events.push_back(event);
    }

    std::istream& m_input;
    const std::string& m_fileName;
    DeviceText m_text;
    std::size_t m_line = 0;  // that was read last
    bool m_inAxes = false;   // the comments at this place describe absolute axes
    int m_code = -1;         // the event code that the comments at this place describe; -1: none
};

}  // namespace

DeviceText ReadEvemuText(std::istream& input, const std::string& fileName) {
    return Reader(input, fileName).Read();
}

}  // namespace replay
