// The program's own servant, called the way an agent calls it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "nms/wire/connection.h"
#include "tests/nms/support/orb.h"

namespace zk::test {
namespace {

class Heard : public nms::SessionListener {
 public:
  void sessionEnded() override { calls.push_back("ended"); }
  void eventLossOccurred(const std::string& time, const std::string& id) override {
    calls.push_back("event loss " + time + " " + id);
  }
  void alarmLossOccurred(const std::string& time, const std::string& id) override {
    calls.push_back("alarm loss " + time + " " + id);
  }
  void eventLossCleared(const std::string& time) override { calls.push_back("cleared " + time); }

  std::vector<std::string> calls;
};

TEST(NmsSession, passesOnWhatTheAgentTells) {
  Heard heard;
  auto* servant = new nms::NmsSession(&heard);
  nmsSession::NmsSession_I_var session = activate<nmsSession::NmsSession_I>(testRootPoa(), servant);
  session->ping();
  session->eventLossOccurred("20121120094200.0Z", "5");
  session->alarmLossOccurred("20121120094201.0Z", "6");
  session->eventLossCleared("20121120094202.0Z");
  EXPECT_FALSE(servant->ended());
  servant->endSession();
  EXPECT_TRUE(servant->ended());
  EXPECT_EQ(heard.calls, (std::vector<std::string>{"event loss 20121120094200.0Z 5",
                                                   "alarm loss 20121120094201.0Z 6",
                                                   "cleared 20121120094202.0Z", "ended"}));
}

TEST(NmsSession, needsNoListener) {
  PortableServer::Servant_var<nms::NmsSession> servant(new nms::NmsSession(nullptr));
  servant->eventLossOccurred("t", "1");
  servant->alarmLossOccurred("t", "1");
  servant->eventLossCleared("t");
  servant->endSession();
  EXPECT_TRUE(servant->ended());
}

TEST(NmsSession, hasNoPartnerBeforeTheLogin) {
  PortableServer::Servant_var<nms::NmsSession> servant(new nms::NmsSession(nullptr));
  session::Session_I_var partner = servant->associatedSession();
  EXPECT_TRUE(CORBA::is_nil(partner.in()));
}

}  // namespace
}  // namespace zk::test
