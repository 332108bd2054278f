// Recordings are long, so the YAML is never built as a tree: the parser reports one node after the other, and a table
// says which of them are wanted.
#include "replay/recording/LibinputText.h"

#include "replay/files/ReadError.h"
#include "replay/session/JsonFields.h"

#include <linux/input-event-codes.h>
#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/mark.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

namespace replay {

namespace {

constexpr std::size_t MaxYamlDepth = 16;  // a recording nests eight deep; a bound keeps hostile files cheap
constexpr std::size_t NumbersInList = 5;  // of an axis and of an event

enum class Shape { Scalar, List, Map };

enum class Place {
    Document,
    Root,
    Version,
    Devices,
    Device,
    Node,
    Evdev,
    Name,
    Axes,
    Axis,
    Events,
    EventGroup,
    EvdevEvents,
    Event,
    Number,
    Elsewhere,  // what nobody asks for, and everything below it
};

// What stands under a key of a map, or in a list.
struct Rule {
    Place parent;
    std::string_view key;  // empty: any
    Shape shape;
    Place place;
};

constexpr Rule Rules[] = {
    {Place::Event, "", Shape::Scalar, Place::Number},
    {Place::EvdevEvents, "", Shape::List, Place::Event},
    {Place::EventGroup, "evdev", Shape::List, Place::EvdevEvents},
    {Place::Events, "", Shape::Map, Place::EventGroup},
    {Place::Document, "", Shape::Map, Place::Root},
    {Place::Root, "version", Shape::Scalar, Place::Version},
    {Place::Root, "devices", Shape::List, Place::Devices},
    {Place::Devices, "", Shape::Map, Place::Device},
    {Place::Device, "node", Shape::Scalar, Place::Node},
    {Place::Device, "evdev", Shape::Map, Place::Evdev},
    {Place::Device, "events", Shape::List, Place::Events},
    {Place::Evdev, "name", Shape::Scalar, Place::Name},
    {Place::Evdev, "absinfo", Shape::Map, Place::Axes},
    {Place::Axes, "", Shape::List, Place::Axis},
    {Place::Axis, "", Shape::Scalar, Place::Number},
};

const char* NameOf(Shape shape) {
    switch (shape) {
    case Shape::Scalar: return "a plain value";
    case Shape::List: return "a list";
    case Shape::Map: break;
    }
    return "keys with values";
}

template <typename T>
bool ParseWhole(std::string_view text, T& value) {
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    return fault == std::errc() && end == text.data() + text.size();
}

template <typename T>
bool Fits(std::int64_t value) {
    return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
}

// Names stand in messages, and nobody types a control character.
std::string Printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return text;
}

std::size_t LineOf(const YAML::Mark& mark) {
    return static_cast<std::size_t>(std::max(mark.line, 0)) + 1;
}

class Handler : public YAML::EventHandler {
public:
    explicit Handler(const std::string& fileName) : m_fileName(fileName) {}

    std::vector<DeviceText> TakeDevices() {
        if (!m_hasVersion) {
            throw ReadError(m_fileName, "not a touch recording: expected \"version: 1\" of libinput's format");
        }
        return std::move(m_devices);
    }

    void OnDocumentStart(const YAML::Mark& mark) override {
        if (!m_nodes.empty()) {
            Fail(LineOf(mark), "expected nothing behind the recording");
        }
        m_nodes.push_back({Place::Document, LineOf(mark), Shape::List, false, {}});
    }
    void OnDocumentEnd() override {}  // its node stays, so that a second document is noticed

    void OnNull(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override { Take(LineOf(mark), ""); }
    void OnAlias(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override {
        Fail(LineOf(mark), "expected no alias, found one");
    }
    void OnScalar(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  const std::string& value) override {
        Take(LineOf(mark), value);
    }
    void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                         YAML::EmitterStyle::value /*style*/) override {
        Open(LineOf(mark), Shape::List);
    }
    void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                    YAML::EmitterStyle::value /*style*/) override {
        Open(LineOf(mark), Shape::Map);
    }
    void OnSequenceEnd() override {
        const OpenNode list = std::move(m_nodes.back());
        m_nodes.pop_back();
        if (list.place == Place::Axis) {
            AddAxis(list.line, m_nodes.back().key);
        } else if (list.place == Place::Event) {
            AddEvent(list.line);
        }
    }
    void OnMapEnd() override { m_nodes.pop_back(); }

private:
    // A map or a list whose end is still to come.
    struct OpenNode {
        Place place;
        std::size_t line;
        Shape shape;
        bool hasKey;      // of a map: its key came, the value comes next
        std::string key;  // the one that came last
    };

    [[noreturn]] void Fail(std::size_t line, const std::string& text) const { throw ReadError(m_fileName, line, text); }

    [[noreturn]] void FailEvent(std::size_t line) const {
        Fail(line, "expected an event, \"[seconds, microseconds, type, code, value]\"");
    }

    // Where a node that comes now stands. A missing value may stand for anything.
    Place Enter(std::size_t line, Shape shape, bool isMissing) {
        OpenNode& parent = m_nodes.back();
        parent.hasKey = false;
        const Rule* rule = std::find_if(std::begin(Rules), std::end(Rules), [&](const Rule& candidate) {
            return candidate.parent == parent.place && (candidate.key.empty() || candidate.key == parent.key);
        });
        if (rule == std::end(Rules) || (isMissing && rule->shape != Shape::Scalar)) {
            return Place::Elsewhere;
        }
        if (rule->shape != shape && rule->place == Place::Event) {
            FailEvent(line);
        }
        if (rule->shape != shape) {
            const std::string under = parent.shape == Shape::Map ? " under " + Quoted(parent.key) : "";
            Fail(line, "expected " + std::string(NameOf(rule->shape)) + under);
        }
        return rule->place;
    }

    void Open(std::size_t line, Shape shape) {
        if (m_nodes.back().shape == Shape::Map && !m_nodes.back().hasKey) {
            Fail(line, "expected a plain value as a key");
        }
        const Place place = Enter(line, shape, false);
        if (m_nodes.size() == MaxYamlDepth) {
            Fail(line, "nested more than " + std::to_string(MaxYamlDepth) + " deep");
        }
        m_nodes.push_back({place, line, shape, false, {}});
        m_numberCount = 0;
        if (place == Place::Device) {
            DeviceText& device = m_devices.emplace_back();
            device.isDescribed = true;
            device.descriptionFile = m_fileName;
            device.eventsFile = m_fileName;
        }
    }

    // A value without parts; a missing one is empty.
    void Take(std::size_t line, const std::string& value) {
        OpenNode& parent = m_nodes.back();
        if (parent.shape == Shape::Map && !parent.hasKey) {
            parent.key = value;
            parent.hasKey = true;
            return;
        }
        const Place place = Enter(line, Shape::Scalar, value.empty());
        if (place == Place::Number) {
            AddNumber(line, value);
        } else if (place == Place::Version) {
            m_hasVersion = value == "1";
            if (!m_hasVersion) {
                Fail(line, "unsupported version: expected 1");
            }
        } else if (place == Place::Node) {
            m_devices.back().node = Printable(value);
        } else if (place == Place::Name) {
            m_devices.back().name = Printable(value);
        }
    }

    void AddNumber(std::size_t line, const std::string& text) {
        if (m_numberCount == NumbersInList || !ParseWhole(text, m_numbers.at(m_numberCount))) {
            Fail(line, "expected a list of " + std::to_string(NumbersInList) + " whole numbers");
        }
        ++m_numberCount;
    }

    void AddAxis(std::size_t line, const std::string& key) {
        unsigned code = 0;
        const auto& [minimum, maximum, fuzz, flat, resolution] = m_numbers;
        if (m_numberCount != NumbersInList || !ParseWhole(key, code) || code > ABS_MAX ||
            !std::all_of(m_numbers.begin(), m_numbers.end(), Fits<std::int32_t>)) {
            Fail(line, "expected an axis, \"code: [minimum, maximum, fuzz, flat, resolution]\"");
        }
        m_devices.back().axes[static_cast<int>(code)] = {
            static_cast<std::int32_t>(minimum), static_cast<std::int32_t>(maximum), static_cast<std::int32_t>(fuzz),
            static_cast<std::int32_t>(resolution), line};
    }

    void AddEvent(std::size_t line) {
        const auto& [seconds, microseconds, type, code, value] = m_numbers;
        if (m_numberCount != NumbersInList || seconds < 0 || seconds > LatestSecond || microseconds < 0 ||
            microseconds >= MicrosecondsPerSecond || !Fits<std::uint16_t>(type) || !Fits<std::uint16_t>(code) ||
            !Fits<std::int32_t>(value)) {
            FailEvent(line);
        }
        m_devices.back().events.push_back({seconds * MicrosecondsPerSecond + microseconds,
                                           static_cast<std::uint16_t>(type), static_cast<std::uint16_t>(code),
                                           static_cast<std::int32_t>(value), line});
    }

    const std::string& m_fileName;
    std::vector<OpenNode> m_nodes;  // from the document inward
    std::vector<DeviceText> m_devices;
    bool m_hasVersion = false;
    std::array<std::int64_t, NumbersInList> m_numbers{};  // of the axis or event that is open
    std::size_t m_numberCount = 0;
};

}  // namespace

bool IsLibinputLine(std::string_view line) {
    constexpr std::string_view Starts[] = {"---", "version:", "ndevices:", "libinput:", "system:", "devices:"};
    return std::any_of(std::begin(Starts), std::end(Starts),
                       [&](std::string_view start) { return line.starts_with(start); });
}

std::vector<DeviceText> ReadLibinputText(std::istream& input, const std::string& fileName) {
    Handler handler(fileName);
    try {
        YAML::Parser parser(input);
        while (parser.HandleNextDocument(handler)) {
        }
    } catch (const YAML::Exception& fault) {
        const std::string text = "expected YAML; the parser says: " + Quoted(fault.msg);
        if (fault.mark.is_null()) {
            throw ReadError(fileName, text);
        }
        throw ReadError(fileName, LineOf(fault.mark), text);
    }
    return handler.TakeDevices();
}

}  // namespace replay
