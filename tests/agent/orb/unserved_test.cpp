#include "agent/orb/unserved.h"

#include <gtest/gtest.h>

#include "agent/orb/layouts.h"

namespace {

using zk::agent::isUnserved;
using zk::agent::layoutsOf;

TEST(Unserved, areTheOperationsThatTheIdlLeavesOut) {
  for (const char* operation : {"createSNC", "getAllPTPs", "acknowledgeAlarms", "swapSNC",
                                "verifyTMDAssignment", "getAllEdgePoints", "unacknowledgeAlarms"}) {
    EXPECT_TRUE(isUnserved(operation)) << operation;
    const auto layouts = layoutsOf(operation);
    EXPECT_EQ(layouts.begin(), layouts.end()) << operation;
  }
  for (const char* operation : {"", "getEMS", "getAllEdgePointNames", "setUserLabel", "next_n",
                                "_is_a", "createSNCs", "zzz"}) {
    EXPECT_FALSE(isUnserved(operation)) << operation;
  }
}

}  // namespace
