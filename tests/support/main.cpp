// The tests' main: an Any can be copied only once the ORB is up.
#include <gtest/gtest.h>

#include "tests/support/orb.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const zk::test::ServingOrb orb;
  return RUN_ALL_TESTS();
}
