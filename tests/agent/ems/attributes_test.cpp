#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "agent/ems/inventory.h"
#include "tests/agent/ems/support.h"

using namespace zk::agent;
using testing::ElementsAre;
using testing::IsEmpty;
using zk::test::RecordedChanges;

namespace {

class Attributes : public testing::Test {
 protected:
  Attributes() : inventory(Inventory::open(":memory:", {20, 2})) { inventory->setListener(&heard); }

  RecordedChanges heard;
  std::unique_ptr<Inventory> inventory;
};

TEST_F(Attributes, changeOnEveryKindThatHasThem) {
  const ObjectKey keys[] = {ObjectKey::ems(),
                            ObjectKey::device(2),
                            ObjectKey::subnetwork("1"),
                            ObjectKey::link("3"),
                            {ObjectKind::NODE, "4", "2"},
                            {ObjectKind::SUB_MAP, "2", "1"},
                            {ObjectKind::SUB_MAP, "/", {}},
                            {ObjectKind::DISPLAY_LINK, "1", "2"}};
  for (const ObjectKey& key : keys) {
    SCOPED_TRACE(zk::test::dump(key));
    EXPECT_EQ(inventory->setUserLabel(key, "a label"), Result::DONE);
    EXPECT_EQ(inventory->setOwner(key, "an owner"), Result::DONE);
    EXPECT_EQ(inventory->setNativeName(key, "a name"), Result::DONE);
  }
  EXPECT_EQ(heard.lines().size(), 3 * std::size(keys));
  EXPECT_EQ(inventory->ems().userLabel, "a label");
  EXPECT_EQ(inventory->ems().owner, "an owner");
  EXPECT_EQ(inventory->ems().nativeName, "a name");
  EXPECT_EQ(inventory->device(2)->userLabel, "a label");
  EXPECT_EQ(inventory->device(2)->owner, "an owner");
  EXPECT_EQ(inventory->device(2)->name, "a name");
  EXPECT_EQ(inventory->subnetwork().userLabel, "a label");
  EXPECT_EQ(inventory->link("3")->nativeName, "a name");
  EXPECT_EQ(inventory->node("4")->userLabel, "a label");
  EXPECT_EQ(inventory->subMap("2")->owner, "an owner");
  EXPECT_EQ(inventory->displayLink("1")->nativeName, "a name");
  // The neighbours keep theirs.
  EXPECT_EQ(inventory->device(3)->owner, "Veltra");
  EXPECT_EQ(inventory->node("5")->owner, "Veltra");
  EXPECT_EQ(inventory->subMap("3")->owner, "Veltra");
}

TEST_F(Attributes, areToldWithWhatTheyWereAndWhoAsked) {
  const std::string before = inventory->device(2)->name;
  inventory->setUserLabel(ObjectKey::device(2), "mine", {false, Origin::NMS});
  inventory->setOwner({ObjectKind::NODE, "4", {}}, "someone");
  inventory->renameDevice(2, "Renamed");
  EXPECT_THAT(heard.lines(), ElementsAre("nms userLabel 1:2 '" + before + "' 'mine'",
                                         "ems owner 4:2/4 'Veltra' 'someone'",
                                         "ems nativeName 1:2 '" + before + "' 'Renamed'"));
}

TEST_F(Attributes, areNotToldWhenTheyStayTheSame) {
  EXPECT_EQ(inventory->setOwner(ObjectKey::device(2), "Veltra"), Result::DONE);
  EXPECT_THAT(heard.lines(), IsEmpty());
}

TEST_F(Attributes, doNotExistOnPhysicalLinks) {
  const ObjectKey key{ObjectKind::PHYSICAL_LINK, "1", {}};
  EXPECT_TRUE(inventory->exists(key));
  EXPECT_EQ(inventory->setUserLabel(key, "x", {true, Origin::EMS}), Result::NO_SUCH_OBJECT);
  EXPECT_EQ(inventory->setOwner(key, "x"), Result::NO_SUCH_OBJECT);
}

TEST_F(Attributes, keepAnyText) {
  const std::string texts[] = {
      "'; DROP TABLE device; --",
      "\" OR 1=1 --",
      "?1 :name @x $y",
      "%_*[a-z]",
      "Zürich – 東京 – 🛰",
      "two\nlines\tand a tab",
      " spaces around ",
      std::string("nul\0inside", 10),
      "\xff\xfe not UTF-8",
      std::string(100000, 'x'),
      "",
  };
  for (const std::string& text : texts) {
    EXPECT_EQ(inventory->setUserLabel(ObjectKey::device(2), text), Result::DONE) << text;
    EXPECT_EQ(inventory->device(2)->userLabel, text);
    EXPECT_EQ(inventory->labelInUse(ObjectKind::DEVICE, text, "3"), !text.empty()) << text;
  }
  EXPECT_EQ(inventory->count(ObjectKind::DEVICE), 20);
}

TEST_F(Attributes, findObjectsByTextsThatLookLikeSql) {
  const std::string id = "' OR '1'='1";
  EXPECT_FALSE(inventory->link(id));
  EXPECT_FALSE(inventory->exists(ObjectKey::link(id)));
  EXPECT_EQ(inventory->setOwner(ObjectKey::link(id), "x"), Result::NO_SUCH_OBJECT);
  LinkRecord link;
  link.id = id;
  link.aEnd.deviceId = link.zEnd.deviceId = 1;
  EXPECT_EQ(inventory->create(link), Result::DONE);
  EXPECT_TRUE(inventory->link(id));
  EXPECT_EQ(inventory->remove(ObjectKey::link(id)), Result::DONE);
}

TEST_F(Attributes, neverLeaveADeviceWithoutName) {
  EXPECT_EQ(inventory->renameDevice(2, ""), Result::BAD_VALUE);
  EXPECT_NE(inventory->device(2)->name, "");
  EXPECT_EQ(inventory->renameDevice(99, "x"), Result::NO_SUCH_OBJECT);
  EXPECT_EQ(inventory->setNativeName(ObjectKey::link("1"), ""), Result::DONE);
}

TEST_F(Attributes, keepUserLabelsUniqueWhereAsked) {
  const ChangeOptions unique{true, Origin::EMS};
  const ChangeOptions shared;
  const auto set = [&](const ObjectKey& key, const char* label, const ChangeOptions& options) {
    return inventory->setUserLabel(key, label, options);
  };
  EXPECT_EQ(set(ObjectKey::device(1), "L", unique), Result::DONE);
  EXPECT_EQ(set(ObjectKey::device(1), "L", unique), Result::DONE) << "its own label";
  EXPECT_EQ(set(ObjectKey::device(2), "L", unique), Result::LABEL_IN_USE);
  EXPECT_NE(inventory->device(2)->userLabel, "L");
  EXPECT_EQ(set(ObjectKey::device(2), "l", unique), Result::DONE) << "another case";
  EXPECT_EQ(set(ObjectKey::link("1"), "L", unique), Result::DONE) << "another kind";
  EXPECT_EQ(set({ObjectKind::NODE, "4", {}}, "L", unique), Result::DONE) << "another kind";
  EXPECT_EQ(set({ObjectKind::SUB_MAP, "2", {}}, "L", unique), Result::DONE) << "shares a table";
  EXPECT_EQ(set({ObjectKind::NODE, "5", {}}, "L", unique), Result::LABEL_IN_USE);
  EXPECT_EQ(set(ObjectKey::device(3), "L", shared), Result::DONE);
  EXPECT_EQ(set(ObjectKey::device(3), "L", unique), Result::LABEL_IN_USE) << "now shared";
  EXPECT_EQ(set(ObjectKey::device(4), "", unique), Result::DONE);
  EXPECT_EQ(set(ObjectKey::device(5), "", unique), Result::DONE) << "the empty one is no label";
  EXPECT_EQ(inventory->setOwner(ObjectKey::device(2), "Veltra", unique), Result::DONE)
      << "owners may be shared";
}

TEST_F(Attributes, tellWhoseLabelIsInUse) {
  inventory->setUserLabel(ObjectKey::device(1), "L");
  EXPECT_TRUE(inventory->labelInUse(ObjectKind::DEVICE, "L", ""));
  EXPECT_TRUE(inventory->labelInUse(ObjectKind::DEVICE, "L", "2"));
  EXPECT_FALSE(inventory->labelInUse(ObjectKind::DEVICE, "L", "1"));
  EXPECT_FALSE(inventory->labelInUse(ObjectKind::LINK, "L", ""));
  EXPECT_FALSE(inventory->labelInUse(ObjectKind::PHYSICAL_LINK, "L", ""));
}

}  // namespace
