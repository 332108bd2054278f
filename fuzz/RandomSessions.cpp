// Any integers may come in a touch frame. Tens of thousands of random frames, wild ones and those of real gestures, in
// a host that fails, calls back and changes its views meanwhile, must leave the component consistent, its memory
// bounded and its camera determined by the seed. Run under the sanitizers this also shows that no input is undefined.
#include "fuzz/HostileSession.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace fuzz {
namespace {

constexpr int FramesPerSeed = 15'000;
constexpr int WarmUpFrames = 5'000;
constexpr std::size_t AllowedGrowthBytes = 32'768;

class RandomFrames : public testing::TestWithParam<std::uint32_t> {};

// The hashes of what the views showed after each step. One session at a time: a host answers for the whole process.
std::vector<std::size_t> Play(std::uint32_t seed) {
    RandomChoices choices(seed);
    HostileSession session(choices);
    std::vector<std::size_t> shown;
    shown.reserve(FramesPerSeed);
    std::size_t before = 0;
    while (session.GetFrameCount() < FramesPerSeed && session.GetFault().empty()) {
        session.Step();
        shown.push_back(std::hash<std::string>()(session.GetCameraText()));
        if (before == 0 && session.GetFrameCount() > WarmUpFrames) {
            before = tests::GetBytesInUse();
        }
    }
    EXPECT_EQ(session.GetFault(), "");
    EXPECT_LE(tests::GetBytesInUse(), before + AllowedGrowthBytes);
    EXPECT_GT(session.GetUsedFrameCount(), FramesPerSeed / 50) << "most frames are for nothing";
    return shown;
}

TEST_P(RandomFrames, LeaveTheComponentConsistentItsMemoryBoundedAndItsCameraDetermined) {
    const std::vector<std::size_t> shown = Play(GetParam());
    EXPECT_EQ(FaultyHost::CountComponents(), 0) << "a component has outlived its host";
    EXPECT_TRUE(Play(GetParam()) == shown) << "the same choices show something else";
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomFrames, testing::Values(11, 22, 33, 44),
                         [](const auto& row) { return "Seed" + std::to_string(row.param); });

}  // namespace
}  // namespace fuzz
