// What the program asks to be changed, and of whom.
#include <gmock/gmock.h>

#include "tests/nms/support/program.h"

namespace zk::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(Program, setsALabel) {
  const Ended ended = run({"set-label", "7", "Oslo core"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out + ended.err, "");
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 ManagedElement:7");
  EXPECT_EQ(run({"set-label", "EMS=Quor/1,TopologicalLink=5", "", "--unique"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 TopologicalLink:5");
  EXPECT_THAT(network_.changes(), ElementsAre("ManagedElement setUserLabel 'Oslo core'",
                                              "MultiLayerSubnetwork setUserLabel '' unique"));
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Program, setsOwnerAndNativeName) {
  EXPECT_EQ(run({"set-owner", "EMS=Quor/1", "a=b,c"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1");
  EXPECT_EQ(run({"set-native-name", "--kind", "subnetwork", "1", "north"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 MultiLayerSubnetwork:1");
  EXPECT_EQ(run({"set-owner", "--", "7", "-x"}).status, 0);
  EXPECT_THAT(network_.changes(),
              ElementsAre("EMS setOwner 'a=b,c'", "MultiLayerSubnetwork setNativeEMSName 'north'",
                          "ManagedElement setOwner '-x'"));
}

TEST_F(Program, setsTheTextsOfMapObjects) {
  network_.nodes = 2;
  EXPECT_EQ(run({"set-label", "2", "x", "--kind", "node"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 Node:/parentid=2/id=2");
  EXPECT_EQ(run({"set-owner", "EMS=Quor/1,SubMap=/parentid=AllSubmap/id=2", "ops"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 SubMap:/parentid=AllSubmap/id=2");
  EXPECT_THAT(network_.changes(),
              ElementsAre("TopologyMap setUserLabel 'x'", "TopologyMap setOwner 'ops'"));
}

TEST_F(Program, setsNothingWhenUsedWrongly) {
  for (const Arguments& arguments :
       std::vector<Arguments>{{"set-label", "7"},
                              {"set-label"},
                              {"set-label", "", "x"},
                              {"set-label", "EMS=a,7", "x"},
                              {"set-label", "--kind", "card", "7", "x"},
                              {"set-owner", "7", "x", "--unique"}}) {
    const Ended ended = run(arguments);
    EXPECT_EQ(ended.status, 3) << testing::PrintToString(arguments);
  }
  EXPECT_EQ(network_.logins, 0);
}

TEST_F(Program, passesOnARefusalOfAChange) {
  const Ended ended = run({"set-label", "EMS=Quor/1,Node=/id=7", "x"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("EXCPT_NOT_IMPLEMENTED"));
  EXPECT_TRUE(network_.changes().empty());
}

}  // namespace
}  // namespace zk::test
