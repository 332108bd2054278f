// The bundled touch recordings: the generator still makes exactly these files. That the hands in them do what their
// names promise is for ProgramTest.cpp to see.
#include "tools/motion/EvemuWriter.h"
#include "tools/motion/GestureCatalogue.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>

namespace {

using namespace replay::motion;

constexpr std::size_t MaxFileBytes = 60'000;

const std::filesystem::path Folder = BUNDLED_RECORDINGS_DIR;

std::string FileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(BundledRecordings, AreWhatTheGeneratorMakes) {
    const std::string readme = FileText(Folder / "README.md");
    std::set<std::string> expected;
    for (const Gesture& gesture : Catalogue()) {
        SCOPED_TRACE(gesture.name);
        EXPECT_TRUE(expected.insert(FileName(gesture)).second) << "name used twice";
        EXPECT_NE(readme.find("| " + FileName(gesture) + " |"), std::string::npos) << "no row in README.md";
        EXPECT_EQ(FindGesture(gesture.name), &gesture);
        const std::string bundled = FileText(Folder / FileName(gesture));
        EXPECT_LE(bundled.size(), MaxFileBytes);
        EXPECT_TRUE(bundled == MakeRecording(gesture))
            << "write the file again with touch-motion, or undo the change to the motion model";
    }
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(Folder)) {
        if (entry.path().extension() == ".evemu") {
            found.insert(entry.path().filename().string());
        }
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(FindGesture("wave"), nullptr);
}

TEST(EvemuWriter, RefusesMoreFingersThanSlots) {
    Scan scan{1, {}};
    for (std::size_t finger = 0; finger < 10; ++finger) {
        scan.contacts.push_back({finger, {static_cast<double>(finger), 0}});
    }
    EXPECT_NO_THROW(WriteEvemu({scan}, "ten"));
    scan.contacts.push_back({10, {}});
    EXPECT_THROW(WriteEvemu({scan}, "eleven"), std::invalid_argument);
}

}  // namespace
