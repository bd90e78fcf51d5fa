#include "tests/support/orb.h"

namespace zk::test {

namespace {

#if defined(ZK_ORB_TAO)

char option[] = "-ORBListenEndpoints";
char endpoint[] = "iiop://127.0.0.1";
char texts[] = "-ORBNegotiateCodesets";
char code[] = "1";

std::thread serve(CORBA::ORB_ptr orb) {
  return std::thread([orb] { orb->run(); });
}

#else

char option[] = "-ORBendPoint";
char endpoint[] = "giop:tcp:127.0.0.1:";
char texts[] = "-ORBnativeCharCodeSet";
char code[] = "UTF-8";

std::thread serve(CORBA::ORB_ptr) { return {}; }

#endif

}  // namespace

ServingOrb::ServingOrb() {
  char program[] = "test";
  char* arguments[] = {program, option, endpoint, texts, code, nullptr};
  int count = 5;
  orb_ = CORBA::ORB_init(count, arguments);
  serving_ = serve(orb_.in());
}

ServingOrb::~ServingOrb() {
  if (serving_.joinable()) {
    orb_->shutdown(true);
    serving_.join();
  }
  orb_->destroy();
}

}  // namespace zk::test
