// The platform used from static initialisers, before main.

#include <gtest/gtest.h>

#include "zk_quornex/platform/bundle.h"
#include "zk_quornex/platform/config.h"
#include "zk_quornex/platform/default/eventsinks.h"
#include "zk_quornex/platform/ems.h"
#include "zk_quornex/platform/services.h"
#include "zk_quornex/platform/timechange.h"
#include "zk_quornex/platform/trace.h"

namespace zk::test {
namespace {

struct Seen {
  std::string emsName = NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName();
  std::string time = NS_QUORCORBA::TimeChange::getUTCTime();
  std::string file = NS_CORBA::GetTss()->file;
  bool security = NS_BUNDLEMGR1::CheckIFBuf<NS_SECURITY_SERVICE1::SecurityIF>("SecurityIF").Get();
  unsigned long owner = EMFMOMgrI::setOwner();
  unsigned long taken = zk::platform::eventSinkCounts("none").taken;
};

const Seen SEEN_BEFORE_MAIN;

// Ends after everything that tests set up: what it calls must still be there.
struct LateCaller {
  ~LateCaller() {
    NS_CORBA::TaDebug(4, "leaving");
    zk::platform::removeEventSink("none");
  }
};

const LateCaller CALLS_AFTER_MAIN;

TEST(EarlyUse, everythingAnswersBeforeMain) {
  EXPECT_EQ(SEEN_BEFORE_MAIN.emsName, "Quor/1");
  EXPECT_EQ(SEEN_BEFORE_MAIN.time.size(), std::string("20121120094200.0Z").size());
  EXPECT_EQ(SEEN_BEFORE_MAIN.file, "unknown");
  EXPECT_TRUE(SEEN_BEFORE_MAIN.security);
  EXPECT_NE(SEEN_BEFORE_MAIN.owner, 0u);
  EXPECT_EQ(SEEN_BEFORE_MAIN.taken, 0u);
}

}  // namespace
}  // namespace zk::test
