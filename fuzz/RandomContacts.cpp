// Random contacts, in every build: what the fuzzer `feeder` demands.
#include "fuzz/HostileContacts.h"

#include <gtest/gtest.h>

namespace {

TEST(RandomContacts, TheFeederKeepsItsLawsAndIsDeterministic) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        std::vector<std::int64_t> sent[2];
        for (std::vector<std::int64_t>& run : sent) {
            fuzz::RandomChoices choices(seed);
            ASSERT_EQ(fuzz::PlayHostileContacts(choices, 300, run), "") << "seed " << seed;
        }
        ASSERT_EQ(sent[0], sent[1]) << "seed " << seed;
    }
}

}  // namespace
