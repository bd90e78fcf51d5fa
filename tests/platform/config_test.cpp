#include "zk_quornex/platform/config.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"
#include "zk_quornex/platform/default/configuration.h"

namespace zk::test {
namespace {

using NS_CORBA::CorbaBaseAgentConfig;
using NS_QUORCORBA::CorbaAgentConfig;

TEST(Config, hasDefaultsBeforeAnyoneConfigures) {
  EXPECT_EQ(CorbaBaseAgentConfig::Instance()->EmsName(), "Quor/1");
  EXPECT_EQ(CorbaBaseAgentConfig::Instance()->EmsVersion(), "1.0");
  EXPECT_EQ(CorbaAgentConfig::Instance()->GetNotifyModel(), 2);
  EXPECT_EQ(CorbaAgentConfig::Instance()->GetCachesize(), 10000);
  EXPECT_EQ(CorbaAgentConfig::Instance()->GetEventlistsize(), 500);
}

TEST(Config, configureFillsBothSingletons) {
  zk::platform::configure({"Quor/9", "3.1", 3, 77, 12});
  EXPECT_EQ(CorbaBaseAgentConfig::Instance()->EmsName(), "Quor/9");
  EXPECT_EQ(CorbaBaseAgentConfig::Instance()->EmsVersion(), "3.1");
  EXPECT_EQ(CorbaAgentConfig::Instance()->GetNotifyModel(), 3);
  EXPECT_EQ(CorbaAgentConfig::Instance()->GetCachesize(), 77);
  EXPECT_EQ(CorbaAgentConfig::Instance()->GetEventlistsize(), 12);
  zk::platform::configure({});
}

TEST(Config, handsOutTheInstalledOneUntilItGoes) {
  CorbaBaseAgentConfig* standard = CorbaBaseAgentConfig::Instance();
  {
    FixedEmsConfig outer;
    FixedEmsConfig inner;
    inner.emsName = "Inner/1";
    EXPECT_EQ(CorbaBaseAgentConfig::Instance()->EmsName(), "Inner/1");
  }
  EXPECT_EQ(CorbaBaseAgentConfig::Instance(), standard);
}

TEST(Config, nullPutsTheStandardOneBack) {
  CorbaAgentConfig* standard = CorbaAgentConfig::Instance();
  FixedAgentConfig fixed;
  EXPECT_EQ(zk::platform::install(static_cast<CorbaAgentConfig*>(nullptr)), &fixed);
  EXPECT_EQ(CorbaAgentConfig::Instance(), standard);
}

}  // namespace
}  // namespace zk::test
