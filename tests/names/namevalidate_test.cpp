// What the validating visitor accepts, refuses, and traces.
#include "zk_quornex/names/namevalidate.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;

class NameValidate : public testing::Test {
 protected:
  FixedEmsConfig config_;
  CapturedTrace trace_;
  Name_Validate_Visitor visitor_;
};

// A visitor whose check of the EMS is another one.
class OwnEmsCheck : public Name_Validate_Visitor {
 public:
  using Name_Validate_Visitor::Visit;
  unsigned long Visit(TEName* name) override {
    visited = name;
    return answer;
  }

  unsigned long answer = 0;
  TEName* visited = nullptr;
};

TEST_F(NameValidate, acceptsNamesOfThisEms) {
  TEName ems;
  EXPECT_EQ(visitor_.Visit(&ems), 0UL);
  TEMEName element;
  element.meId_ = 1;
  EXPECT_EQ(visitor_.Visit(&element), 0UL);
  TESubnetworkName subnetwork;
  EXPECT_EQ(visitor_.Visit(&subnetwork), 0UL);
  TETopoLinkName link;
  link.topoLinkId_ = " ";
  EXPECT_EQ(visitor_.Visit(&link), 0UL);
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(NameValidate, refusesAnotherEmsWithTheComparisonsSign) {
  TEName name;
  // Configured is "Quor/1".
  for (const char* later : {"Quor/2", "quor/1", "Quor/1 ", "Quor/11"}) {
    name.emsName_ = later;
    EXPECT_LT(static_cast<long>(visitor_.Visit(&name)), 0L) << later;
  }
  for (const char* earlier : {"", "Quor/", "QUOR/1", "Quor/0"}) {
    name.emsName_ = earlier;
    EXPECT_GT(static_cast<long>(visitor_.Visit(&name)), 0L) << earlier;
    EXPECT_NE(visitor_.Visit(&name), OTHER_EMS) << earlier;
  }
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(NameValidate, reportsTheComparisonAsItIs) {
  TEName name;
  name.emsName_ = "Quor/1xy";
  EXPECT_EQ(visitor_.Visit(&name), static_cast<unsigned long>(-2L));
  name.emsName_ = "Quo";
  EXPECT_EQ(visitor_.Visit(&name), 3UL);
}

TEST_F(NameValidate, refusesAMissingElementId) {
  TEMEName name;
  EXPECT_EQ(visitor_.Visit(&name), OTHER_EMS);
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(NameValidate, refusesEverySubnetworkButOne) {
  TESubnetworkName name;
  for (const char* id : {"", "0", "2", "01", " 1", "1 ", "11"}) {
    name.subnetId_ = id;
    EXPECT_EQ(visitor_.Visit(&name), OTHER_EMS) << id;
  }
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(NameValidate, refusesAnEmptyLinkIdOnly) {
  TETopoLinkName name;
  EXPECT_EQ(visitor_.Visit(&name), OTHER_EMS);
  for (const char* id : {"0", " ", "A-Z/1", "\t"}) {
    name.topoLinkId_ = id;
    EXPECT_EQ(visitor_.Visit(&name), 0UL) << id;
  }
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(NameValidate, looksAtTheEmsBeforeTheId) {
  TEMEName element;
  element.emsName_ = "Quo";
  EXPECT_EQ(visitor_.Visit(&element), 3UL);
  TESubnetworkName subnetwork;
  subnetwork.emsName_ = "Quo";
  subnetwork.subnetId_ = "2";
  EXPECT_EQ(visitor_.Visit(&subnetwork), 3UL);
  TETopoLinkName link;
  link.emsName_ = "Quo";
  EXPECT_EQ(visitor_.Visit(&link), 3UL);
}

TEST_F(NameValidate, checksTheEmsThroughTheVirtualSlot) {
  OwnEmsCheck visitor;
  Name_Visitor& slots = visitor;
  TEMEName element;
  TESubnetworkName subnetwork;
  TETopoLinkName link;

  visitor.answer = 5;
  EXPECT_EQ(slots.Visit(&element), 5UL);
  EXPECT_EQ(visitor.visited, &element);
  EXPECT_EQ(slots.Visit(&subnetwork), 5UL);
  EXPECT_EQ(visitor.visited, &subnetwork);
  EXPECT_EQ(slots.Visit(&link), 5UL);
  EXPECT_EQ(visitor.visited, &link);

  visitor.answer = 0;
  EXPECT_EQ(slots.Visit(&element), OTHER_EMS);
  subnetwork.emsName_ = "other";
  EXPECT_EQ(slots.Visit(&subnetwork), 0UL);
  EXPECT_EQ(slots.Visit(&link), OTHER_EMS);
}

// A check of the EMS that repairs or spoils the name's id.
class ChangingEmsCheck : public Name_Validate_Visitor {
 public:
  explicit ChangingEmsCheck(std::function<void()> change) : change_(std::move(change)) {}

  using Name_Validate_Visitor::Visit;
  unsigned long Visit(TEName*) override {
    change_();
    return 0;
  }

 private:
  std::function<void()> change_;
};

template <class Name>
unsigned long visitChanging(Name& name, std::function<void()> change) {
  ChangingEmsCheck visitor(std::move(change));
  return static_cast<Name_Visitor&>(visitor).Visit(&name);
}

TEST_F(NameValidate, judgesAnElementsIdAfterTheEms) {
  TEMEName name;
  EXPECT_EQ(visitChanging(name, [&] { name.meId_ = 7; }), 0UL);
  EXPECT_EQ(visitChanging(name, [&] { name.meId_ = 0; }), OTHER_EMS);
}

TEST_F(NameValidate, judgesASubnetworksIdAfterTheEms) {
  TESubnetworkName name;
  EXPECT_EQ(visitChanging(name, [&] { name.subnetId_ = "2"; }), OTHER_EMS);
  EXPECT_EQ(visitChanging(name, [&] { name.subnetId_ = "1"; }), 0UL);
}

TEST_F(NameValidate, judgesALinksIdAfterTheEms) {
  TETopoLinkName name;
  EXPECT_EQ(visitChanging(name, [&] { name.topoLinkId_ = "4"; }), 0UL);
  EXPECT_EQ(visitChanging(name, [&] { name.topoLinkId_.clear(); }), OTHER_EMS);
}

TEST_F(NameValidate, tracesANullNameOnceAndSaysWhere) {
  struct {
    unsigned long result;
    const char* text;
  } const cases[] = {
      {visitor_.Visit(static_cast<TEName*>(nullptr)),
       "Name_Validate_Visitor::Visit fail,TEName *pName is nil"},
      {visitor_.Visit(static_cast<TEMEName*>(nullptr)),
       "Name_Validate_Visitor::Visit fail,TEMEName* pName is nil"},
      {visitor_.Visit(static_cast<TESubnetworkName*>(nullptr)),
       "Name_Validate_Visitor::Visit fail,TESubnetworkName* pName is nil"},
      {visitor_.Visit(static_cast<TETopoLinkName*>(nullptr)),
       "Name_Validate_Visitor::Visit fail,TETopoLinkName* pName is nil"},
  };
  const std::vector<TraceLine> lines = trace_.lines();
  ASSERT_EQ(lines.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(cases[i].result, OTHER_EMS) << cases[i].text;
    EXPECT_EQ(lines[i].text, cases[i].text);
    EXPECT_EQ(lines[i].level, 2);
    EXPECT_EQ(lines[i].file, "namevalidate");
    EXPECT_EQ(lines[i].function, "unknown");
    EXPECT_GT(lines[i].line, 0);
  }
}

TEST_F(NameValidate, refusesANullNameBeforeItsEmsIsChecked) {
  OwnEmsCheck visitor;
  visitor.answer = 5;
  EXPECT_EQ(static_cast<Name_Visitor&>(visitor).Visit(static_cast<TEMEName*>(nullptr)), OTHER_EMS);
  EXPECT_EQ(trace_.texts().size(), 1U);
}

}  // namespace

}  // namespace zk::test
