// A host that fails, and a component that must not: every fault of a host with every gesture.
#include "tests/support/FaultyHost.h"
#include "tests/support/HostGestures.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

TEST(HostGestures, ReachASoundHostAndEndWithoutATrace) {
    for (const HostGesture& gesture : AllHostGestures()) {
        SCOPED_TRACE(gesture.name);
        FaultyHost host(gesture.setup);
        gesture.prepare(host);
        const int before = host.CountOf(gesture.reaches);
        gesture.play(host);
        EXPECT_GT(host.CountOf(gesture.reaches), before);
        EXPECT_EQ(host.openUpdateGroups, 0);
        EXPECT_EQ(host.CountWaitingRequests(), 0U);
        host.transition = nullptr;
        EXPECT_EQ(host.Component()->GetReferenceCount(), 1);
        host.Drop();
        EXPECT_EQ(FaultyHost::CountComponents(), 0);
    }
}

}  // namespace
}  // namespace tests
