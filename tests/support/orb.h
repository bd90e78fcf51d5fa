// The tests' ORB: the one place of the tests' common support that knows which
// one it is.
#ifndef ZK_TESTS_SUPPORT_ORB_H
#define ZK_TESTS_SUPPORT_ORB_H

#include <thread>

#include "zk_quornex/idl/corba.h"

namespace zk::test {

// The ORB of the process, which serves servants of this process to this machine
// only, for as long as the object lives. One at a time.
class ServingOrb {
 public:
  ServingOrb();
  ~ServingOrb();
  ServingOrb(const ServingOrb&) = delete;
  ServingOrb& operator=(const ServingOrb&) = delete;

 private:
  CORBA::ORB_var orb_;
  std::thread serving_;  // where the ORB has no threads of its own
};

}  // namespace zk::test

#endif
