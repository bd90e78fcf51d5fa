// The tests' main: an Any can be copied only once the ORB is up.
#include <gtest/gtest.h>

#include "zk_quornex/idl/corba.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  CORBA::ORB_var orb = CORBA::ORB_init(argc, argv);
  const int result = RUN_ALL_TESTS();
  orb->destroy();
  return result;
}
