// Visiting: which visit each class calls, and what becomes of its answer.
#include <gtest/gtest.h>

#include <regex>

#include "tests/names/names.h"
#include "tests/support/apart.h"
#include "tests/support/debuglogs.h"
#include "tests/support/sourceline.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;

// Gives one answer to every visit and keeps who came.
class FixedVisitor : public Name_Visitor {
 public:
  explicit FixedVisitor(unsigned long fixed) : answer(fixed) {}
  unsigned long Visit(TEName* name) override { return note("TEName", name); }
  unsigned long Visit(TEMEName* name) override { return note("TEMEName", name); }
  unsigned long Visit(TESubnetworkName* name) override { return note("TESubnetworkName", name); }
  unsigned long Visit(TETopoLinkName* name) override { return note("TETopoLinkName", name); }

  unsigned long answer;
  std::vector<std::string> visits;
  const TEName* visited = nullptr;

 private:
  unsigned long note(const char* visit, const TEName* name) {
    visits.emplace_back(visit);
    visited = name;
    return answer;
  }
};

class Accept : public testing::Test {
 protected:
  void expectVisited(TEName& name, const std::string& visit, unsigned long refusal) {
    FixedVisitor accepting(0);
    EXPECT_EQ(name.Accept(&accepting), OK);
    EXPECT_EQ(accepting.visits, std::vector<std::string>{visit});
    EXPECT_EQ(accepting.visited, &name);
    for (const unsigned long answer : {1UL, 5UL, 0x411800CBUL, 0x100000000UL, ~0UL}) {
      FixedVisitor refusing(answer);
      EXPECT_EQ(name.Accept(&refusing), refusal) << answer;
      EXPECT_EQ(refusing.visits.size(), 1U);
    }
  }

  void expectNeverVisited(TEName& name) {
    FixedVisitor refusing(5);
    EXPECT_EQ(name.Accept(&refusing), OK);
    EXPECT_TRUE(refusing.visits.empty());
    EXPECT_EQ(name.Accept(nullptr), OK);
    EXPECT_TRUE(log_->texts().empty());
    EXPECT_TRUE(service_->asked().empty());
  }

  void expectAssertion(TEName& name, unsigned long refusal) {
    runApart([&] { assertionIsWritten(name, refusal); });
  }

  void assertionIsWritten(TEName& name, unsigned long refusal) {
    EXPECT_EQ(name.Accept(nullptr), refusal);
    const std::vector<std::string> texts = log_->texts();
    ASSERT_EQ(texts.size(), 1U);
    std::smatch line;
    ASSERT_TRUE(std::regex_match(
        texts[0], line,
        std::regex("ASSERT: file nameconvert, line ([1-9][0-9]*) assertion failed for "
                   "'0 != visitor'\\.\n")))
        << texts[0];
    EXPECT_NE(sourceLine("tename", std::stoi(line[1])).find("visitor != nullptr"),
              std::string::npos)
        << "not the line of the check: " << line[1];
    EXPECT_TRUE(trace_.texts().empty());
  }

  FixedEmsConfig config_;
  CapturedTrace trace_;
  std::shared_ptr<CapturedLog> log_ = std::make_shared<CapturedLog>();
  std::shared_ptr<FixedLogService> service_ = std::make_shared<FixedLogService>(log_);
  ScopedService registered_{"LogSvcInterface", service_};
};

TEST_F(Accept, callsTheVisitOfTheEmssName) {
  TEName name;
  expectVisited(name, "TEName", OTHER_EMS);
}

TEST_F(Accept, callsTheVisitOfAnElement) {
  TEMEName name;
  expectVisited(name, "TEMEName", NO_ELEMENT_ID);
}

TEST_F(Accept, callsTheVisitOfASubnetwork) {
  TESubnetworkName name;
  expectVisited(name, "TESubnetworkName", SUBNETWORK_REFUSED);
}

TEST_F(Accept, callsTheVisitOfALink) {
  TETopoLinkName name;
  expectVisited(name, "TETopoLinkName", LINK_REFUSED);
}

TEST_F(Accept, reportsANullVisitorOfTheEmssName) {
  TEName name;
  expectAssertion(name, OTHER_EMS);
}

TEST_F(Accept, reportsANullVisitorOfAnElement) {
  TEMEName name;
  expectAssertion(name, NO_ELEMENT_ID);
}

TEST_F(Accept, reportsANullVisitorOfASubnetwork) {
  TESubnetworkName name;
  expectAssertion(name, SUBNETWORK_REFUSED);
}

TEST_F(Accept, reportsANullVisitorOfALink) {
  TETopoLinkName name;
  expectAssertion(name, LINK_REFUSED);
}

TEST_F(Accept, writesOneLineForEachNullVisitor) {
  runApart([this] {
    TETopoLinkName name;
    name.Accept(nullptr);
    name.Accept(nullptr);
    EXPECT_EQ(log_->texts().size(), 2U);
  });
}

TEST_F(Accept, alwaysAcceptsAMapName) {
  CANodeName node;
  expectNeverVisited(node);
  CASubMapName submap;
  expectNeverVisited(submap);
  CADispLinkName displayLink;
  expectNeverVisited(displayLink);
  CAPhyLinkName physicalLink;
  expectNeverVisited(physicalLink);
}

TEST_F(Accept, alwaysAcceptsAnAidName) {
  CAAIDName name;
  expectNeverVisited(name);
}

}  // namespace

}  // namespace zk::test
