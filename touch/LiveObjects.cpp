// Counts by kind. Everything happens on the host's thread, so the counts are plain.
// Tested by tests/package/UnloadTest.cpp.
#include "touch/LiveObjects.h"

#include <cstddef>
#include <iterator>

namespace touch {
namespace {

constexpr const char* Names[] = {"workflow", "bounds request", "transition", "spin-centre markup"};

int s_counts[std::size(Names)] = {};

int& CountOf(ObjectKind kind) noexcept {
    return s_counts[static_cast<std::size_t>(kind)];
}

}  // namespace

LiveObject::LiveObject(ObjectKind kind) noexcept : m_kind(kind) {
    ++CountOf(m_kind);
}

LiveObject::LiveObject(const LiveObject& other) noexcept : LiveObject(other.m_kind) {}

LiveObject::~LiveObject() {
    --CountOf(m_kind);
}

std::string DescribeLiveObjects() {
    std::string text;
    for (std::size_t kind = 0; kind < std::size(Names); ++kind) {
        if (s_counts[kind] > 0) {
            text.append(text.empty() ? "" : ", ").append(std::to_string(s_counts[kind]));
            text.append(" ").append(Names[kind]).append("(s)");
        }
    }
    return text;
}

}  // namespace touch
