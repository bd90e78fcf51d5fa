// A change that the EMS has made stands, whatever becomes of its notification.
#include <stdexcept>

#include "tests/mo/setters.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::TECommonFunc;
using testing::ElementsAre;

void throwCorba() { throw CORBA::TRANSIENT(); }
void throwStandard() { throw std::runtime_error("no supplier"); }
void throwOther() { throw 7; }

struct Throwing {
  void (*action)();
  const char* reason;
};

const Throwing THROWING[] = {
    {throwCorba, "TRANSIENT"}, {throwStandard, "no supplier"}, {throwOther, "unknown exception"}};

class ReportFailure : public SetterTest {
 protected:
  static std::vector<std::string> expectedTrace(const char* attribute, const char* reason) {
    return {std::string("1 TANotification::OnObjectAVC failed.attribute=") + attribute + "," +
            reason};
  }
};

INSTANTIATE_TEST_SUITE_P(Setter, ReportFailure, testing::Values(OWNER, USER_LABEL), setterName);

TEST_P(ReportFailure, leavesASettersResultByName) {
  NS_QUORCORBA::TEMEName name;
  name.meId_ = 7;
  for (const Throwing& throwing : THROWING) {
    const CapturedTrace trace;
    journal.clear();
    pusher.onPush = throwing.action;
    EXPECT_EQ(set(&name, "north"), 0U);
    EXPECT_EQ(journal, reported());
    EXPECT_EQ(trace.texts(), expectedTrace(GetParam().attribute, throwing.reason));
  }
}

TEST_P(ReportFailure, leavesASettersResultByNmsName) {
  const auto element = makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}});
  for (const Throwing& throwing : THROWING) {
    const CapturedTrace trace;
    pusher.onPush = throwing.action;
    EXPECT_EQ(set(element, "north"), 0U);
    EXPECT_EQ(trace.texts(), expectedTrace(GetParam().attribute, throwing.reason));
  }
}

TEST_P(ReportFailure, ofTheHeaderIsTheSame) {
  NS_QUORCORBA::TEName name;
  const CapturedTrace trace;
  pusher.onHeader = throwCorba;
  EXPECT_EQ(set(&name, "north"), 0U);
  EXPECT_EQ(trace.texts(), expectedTrace(GetParam().attribute, "TRANSIENT"));
}

TEST(ReportFailureOfNativeName, leavesTheResult) {
  const FixedEmsConfig config;
  Journal journal;
  JournalPusher pusher{journal};
  NS_QUORCORBA::TEName name;
  for (const Throwing& throwing : THROWING) {
    const CapturedTrace trace;
    pusher.onPush = throwing.action;
    EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&name, "north"), 0U);
    EXPECT_THAT(trace.texts(),
                ElementsAre(std::string("1 TANotification::OnObjectAVC failed.attribute="
                                        "nativeEMSName,") +
                            throwing.reason));
  }
}

}  // namespace
}  // namespace zk::test
