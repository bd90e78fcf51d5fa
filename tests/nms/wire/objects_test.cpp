#include <gtest/gtest.h>

#include "nms/wire/objects.h"

namespace zk::nms {
namespace {

TEST(Target, isServedByTheManagerOfItsKind) {
  EXPECT_EQ(managerFor("EMS"), "EMS");
  EXPECT_EQ(managerFor("ManagedElement"), "ManagedElement");
  EXPECT_EQ(managerFor("MultiLayerSubnetwork"), "MultiLayerSubnetwork");
  EXPECT_EQ(managerFor("TopologicalLink"), "MultiLayerSubnetwork");
  EXPECT_EQ(managerFor("Node"), "TopologyMap");
  EXPECT_EQ(managerFor("SubMap"), "TopologyMap");
  EXPECT_EQ(managerFor("DisplayLink"), "TopologyMap");
  EXPECT_EQ(managerFor("PTP"), "ManagedElement");
}

TEST(Target, isCheckedBeforeLoggingIn) {
  EXPECT_NO_THROW(checkTarget({"7", "me"}));
  EXPECT_NO_THROW(checkTarget({"EMS=Quor/1", "ems"}));
  EXPECT_NO_THROW(checkTarget({"EMS=Quor/1,Node=/id=7", "me"}));
  EXPECT_THROW(checkTarget({"", "me"}), UsageError);
  EXPECT_THROW(checkTarget({"7", "card"}), UsageError);
  EXPECT_THROW(checkTarget({"Quor/1", "ems"}), UsageError);
}

TEST(MapKinds, areThree) {
  for (const char* kind : {"Node", "SubMap", "DisplayLink"}) {
    EXPECT_TRUE(isMapKind(kind));
  }
  EXPECT_FALSE(isMapKind("ManagedElement"));
}

}  // namespace
}  // namespace zk::nms
