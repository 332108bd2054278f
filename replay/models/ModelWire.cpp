// Counts are compared with the bytes that are left before anything is allocated, so that a false one costs nothing.
// Numbers are written as they lie in memory: writer and reader are the same program.
#include "replay/models/ModelWire.h"

#include "replay/files/CleanText.h"
#include "scene/MeshEdges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <set>
#include <string_view>
#include <type_traits>
#include <utility>

namespace replay {

namespace {

constexpr std::size_t LongestName = 200;  // bytes
using WirePoint = std::array<float, 3>;

// Numbers stand as they lie in memory.
template <typename Value>
void Put(std::string& bytes, const Value& value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    const std::size_t place = bytes.size();
    bytes.resize(place + sizeof value);
    std::memcpy(bytes.data() + place, &value, sizeof value);
}

void PutCount(std::string& bytes, std::size_t count) {
    Put(bytes, static_cast<std::uint64_t>(count));
}

void PutPart(std::string& bytes, const scene::Part& part) {
    PutCount(bytes, part.name.size());
    bytes += part.name;
    Put(bytes, std::array{part.color.red, part.color.green, part.color.blue});
    PutCount(bytes, part.vertices.size());
    for (const dg::DPoint3D& vertex : part.vertices) {
        Put(bytes, WirePoint{static_cast<float>(vertex.x), static_cast<float>(vertex.y), static_cast<float>(vertex.z)});
    }
    PutCount(bytes, part.triangles.size());
    for (const scene::Triangle& triangle : part.triangles) {
        Put(bytes, triangle);
    }
}

// A terminal could take control characters for commands, and line ends break the line that a name stands on.
std::string PrintableName(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    name = CleanText(name.substr(0, LongestName));
    return name.empty() ? "part" : name;
}

// Gives each name once, with a number behind those that are taken.
class NameGiver {
public:
    std::string Give(const std::string& wanted) {
        std::string name = wanted;
        for (int& number = m_numbers[wanted]; !m_taken.insert(name).second;) {
            number = std::max(number + 1, 2);
            name = wanted + " " + std::to_string(number);
        }
        return name;
    }

private:
    std::set<std::string> m_taken;
    std::map<std::string, int> m_numbers;  // the last that was tried
};

class WireReader {
public:
    explicit WireReader(std::string_view bytes) : m_rest(bytes) {}

    template <typename Value>
    Value Take() {
        Value value;
        std::memcpy(&value, TakeBytes(sizeof value).data(), sizeof value);
        return value;
    }

    // A count of things that take at least so many bytes each and are all still to come.
    std::size_t TakeCount(std::size_t bytesEach, std::size_t most, const char* things) {
        const auto count = Take<std::uint64_t>();
        if (count > most) {
            throw ModelFault("it holds more than " + std::to_string(most) + " " + things);
        }
        if (count > m_rest.size() / bytesEach) {
            throw ModelFault("its reader gave a wrong answer");
        }
        return static_cast<std::size_t>(count);
    }

    std::string_view TakeBytes(std::size_t count) {
        if (count > m_rest.size()) {
            throw ModelFault("its reader gave a wrong answer");
        }
        const std::string_view taken = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return taken;
    }

private:
    std::string_view m_rest;
};

dg::DPoint3D TakeVertex(WireReader& reader) {
    const auto point = reader.Take<WirePoint>();
    for (const float coordinate : point) {
        if (!std::isfinite(coordinate)) {
            throw ModelFault("the model has a coordinate that is not finite");
        }
        if (std::abs(coordinate) > LargestCoordinate) {
            throw ModelFault("the model has a coordinate beyond 1e12");
        }
    }
    return {static_cast<double>(point[0]), static_cast<double>(point[1]), static_cast<double>(point[2])};
}

scene::Triangle TakeTriangle(WireReader& reader, std::size_t vertices) {
    const auto triangle = reader.Take<scene::Triangle>();
    if (std::any_of(triangle.begin(), triangle.end(), [=](std::uint32_t index) { return index >= vertices; })) {
        throw ModelFault("a triangle of the model has a corner that is not there");
    }
    return triangle;
}

dg::Color TakeColor(WireReader& reader) {
    auto values = reader.Take<std::array<float, 3>>();
    for (float& value : values) {
        value = std::isfinite(value) ? std::clamp(value, 0.0F, 1.0F) : 0;
    }
    return {values[0], values[1], values[2], 1};
}

}  // namespace

std::string EncodeModel(const scene::Model& model) {
    std::string bytes;
    PutCount(bytes, model.parts.size());
    for (const scene::Part& part : model.parts) {
        PutPart(bytes, part);
    }
    return bytes;
}

scene::Model DecodeModel(std::string_view bytes) {
    WireReader reader(bytes);
    scene::Model model;
    NameGiver names;
    std::size_t roomForVertices = MostModelVertices;
    std::size_t roomForTriangles = MostModelTriangles;
    model.parts.resize(reader.TakeCount(1, MostModelParts, "parts"));
    for (scene::Part& part : model.parts) {
        const std::size_t length = reader.TakeCount(1, bytes.size(), "bytes");
        part.name = names.Give(PrintableName(std::string(reader.TakeBytes(length))));
        part.color = TakeColor(reader);
        part.vertices.resize(reader.TakeCount(sizeof(WirePoint), roomForVertices, "vertices"));
        roomForVertices -= part.vertices.size();
        for (dg::DPoint3D& vertex : part.vertices) {
            vertex = TakeVertex(reader);
        }
        part.triangles.resize(reader.TakeCount(sizeof(scene::Triangle), roomForTriangles, "triangles"));
        roomForTriangles -= part.triangles.size();
        for (scene::Triangle& triangle : part.triangles) {
            triangle = TakeTriangle(reader, part.vertices.size());
        }
        part.edges = scene::FindSharpEdges(part);
    }
    if (roomForTriangles == MostModelTriangles) {
        throw ModelFault("the model holds no triangles");
    }
    return model;
}

}  // namespace replay
