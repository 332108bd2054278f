// The recorded sessions of tests/sessions: each gives its trace to the byte. scripts/accept-traces shows differences
// and accepts them when asked.
#include "replay/play/Player.h"
#include "replay/play/TraceWriter.h"
#include "replay/session/SessionReader.h"
#include "tests/support/Invariants.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

constexpr const char* SessionEnding = ".session.jsonl";

std::string ReadAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string TraceOf(const std::string& name) {
    return ReadAll(fs::path(SESSIONS_DIR) / (name + ".trace.jsonl"));
}

std::string Replayed(const fs::path& path) {
    std::ifstream file(path);
    const replay::Session session = replay::ReadSession(file, path.string());
    replay::Player player(session, TOUCHNAV_PLUGIN, nullptr);
    std::ostringstream trace;
    const auto& component = static_cast<const touch::TouchWorkflow&>(*player.GetViewer().GetComponent());
    player.Play([&](const replay::Observation& observation) {
        replay::WriteTraceLine(observation, trace);
        ASSERT_EQ(tests::FindStateFault(component), "") << "event " << observation.number;
    });
    return trace.str();
}

TEST(Sessions, EachGivesItsTraceToTheByteAndIsListed) {
    const std::string list = ReadAll(fs::path(SESSIONS_DIR) / "README.md");
    int sessions = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(SESSIONS_DIR)) {
        const std::string file = entry.path().filename().string();
        if (!file.ends_with(SessionEnding)) {
            continue;
        }
        ++sessions;
        const std::string name = file.substr(0, file.size() - std::string(SessionEnding).size());
        SCOPED_TRACE(name);
        EXPECT_THAT(list, HasSubstr("| " + name + " |"));
        std::istringstream expected(TraceOf(name));
        std::istringstream actual(Replayed(entry.path()));
        std::string expectedLine;
        std::string actualLine;
        while (std::getline(expected, expectedLine)) {
            std::getline(actual, actualLine);
            ASSERT_EQ(actualLine, expectedLine);
        }
        EXPECT_FALSE(std::getline(actual, actualLine)) << "one line too many: " << actualLine;
    }
    EXPECT_GT(sessions, 0);
}

}  // namespace
