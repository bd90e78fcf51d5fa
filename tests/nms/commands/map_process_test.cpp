// The EMS's own topology map, through the program.
#include <gmock/gmock.h>

#include "tests/nms/support/program.h"

namespace zk::test {
namespace {

using testing::HasSubstr;

TEST_F(Program, listsTheMap) {
  network_.nodes = 2;
  EXPECT_EQ(run({"node"}).out,
            "NAME                                      USER LABEL  NATIVE NAME  OWNER  "
            "ADDITIONAL INFO\n"
            "EMS=Quor/1,Node=/parentid=AllSubMap/id=1  drawn       Node                "
            "site=North\\, 2nd floor\n"
            "EMS=Quor/1,Node=/parentid=2/id=2          drawn       Node                "
            "site=North\\, 2nd floor\n");
  const Json::Value submaps = json(run({"-o", "json", "--page", "1", "submap"}).out);
  ASSERT_EQ(submaps.size(), 2U);
  EXPECT_EQ(submaps[1]["name"], "EMS=Quor/1,SubMap=/parentid=AllSubmap/id=2");
  EXPECT_EQ(network_.iteratorsDestroyed, 1);
  EXPECT_EQ(run({"displaylink", "--names"}).out,
            "NAME\n"
            "EMS=Quor/1,DisplayLink=/parentid=2/id=1\n"
            "EMS=Quor/1,DisplayLink=/parentid=2/id=1\n");
}

TEST_F(Program, looksForABareIdInTheMap) {
  network_.nodes = 3;
  EXPECT_EQ(run({"--page", "1", "node", "3"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 Node:/parentid=2/id=3");
  const Ended missing = run({"node", "33"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.err, HasSubstr("no Node with the id '33'"));
  const Ended several = run({"displaylink", "1"});
  EXPECT_EQ(several.status, 1);
  EXPECT_THAT(several.err, HasSubstr("give a full name"));
}

TEST_F(Program, takesAPathOfTheMapAsItWasTyped) {
  network_.nodes = 1;
  EXPECT_EQ(run({"submap", "/parentid=9/id=8"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 SubMap:/parentid=9/id=8");
  EXPECT_EQ(run({"displaylink", "EMS=Other,DisplayLink=/parentid=9/id=8"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Other DisplayLink:/parentid=9/id=8");
}

TEST_F(Program, saysThatAnEmsHasNoMap) {
  const Ended ended = run({"node"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("EXCPT_NOT_IMPLEMENTED"));
}

}  // namespace
}  // namespace zk::test
