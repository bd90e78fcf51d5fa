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
                            {ObjectKind::Node, "4", "2"},
                            {ObjectKind::SubMap, "2", "1"},
                            {ObjectKind::SubMap, "/", {}},
                            {ObjectKind::DisplayLink, "1", "2"}};
  for (const ObjectKey& key : keys) {
    SCOPED_TRACE(zk::test::dump(key));
    EXPECT_EQ(inventory->setUserLabel(key, "a label"), Result::Done);
    EXPECT_EQ(inventory->setOwner(key, "an owner"), Result::Done);
    EXPECT_EQ(inventory->setNativeName(key, "a name"), Result::Done);
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
  inventory->setUserLabel(ObjectKey::device(2), "mine", {false, Origin::Nms});
  inventory->setOwner({ObjectKind::Node, "4", {}}, "someone");
  inventory->renameDevice(2, "Renamed");
  EXPECT_THAT(heard.lines(), ElementsAre("nms userLabel 1:2 '" + before + "' 'mine'",
                                         "ems owner 4:2/4 'Veltra' 'someone'",
                                         "ems nativeName 1:2 '" + before + "' 'Renamed'"));
}

TEST_F(Attributes, areNotToldWhenTheyStayTheSame) {
  EXPECT_EQ(inventory->setOwner(ObjectKey::device(2), "Veltra"), Result::Done);
  EXPECT_THAT(heard.lines(), IsEmpty());
}

TEST_F(Attributes, doNotExistOnPhysicalLinks) {
  const ObjectKey key{ObjectKind::PhysicalLink, "1", {}};
  EXPECT_TRUE(inventory->exists(key));
  EXPECT_EQ(inventory->setUserLabel(key, "x", {true, Origin::Ems}), Result::NoSuchObject);
  EXPECT_EQ(inventory->setOwner(key, "x"), Result::NoSuchObject);
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
    EXPECT_EQ(inventory->setUserLabel(ObjectKey::device(2), text), Result::Done) << text;
    EXPECT_EQ(inventory->device(2)->userLabel, text);
    EXPECT_EQ(inventory->labelInUse(ObjectKind::Device, text, "3"), !text.empty()) << text;
  }
  EXPECT_EQ(inventory->count(ObjectKind::Device), 20);
}

TEST_F(Attributes, findObjectsByTextsThatLookLikeSql) {
  const std::string id = "' OR '1'='1";
  EXPECT_FALSE(inventory->link(id));
  EXPECT_FALSE(inventory->exists(ObjectKey::link(id)));
  EXPECT_EQ(inventory->setOwner(ObjectKey::link(id), "x"), Result::NoSuchObject);
  LinkRecord link;
  link.id = id;
  link.aEnd.deviceId = link.zEnd.deviceId = 1;
  EXPECT_EQ(inventory->create(link), Result::Done);
  EXPECT_TRUE(inventory->link(id));
  EXPECT_EQ(inventory->remove(ObjectKey::link(id)), Result::Done);
}

TEST_F(Attributes, neverLeaveADeviceWithoutName) {
  EXPECT_EQ(inventory->renameDevice(2, ""), Result::BadValue);
  EXPECT_NE(inventory->device(2)->name, "");
  EXPECT_EQ(inventory->renameDevice(99, "x"), Result::NoSuchObject);
  EXPECT_EQ(inventory->setNativeName(ObjectKey::link("1"), ""), Result::Done);
}

TEST_F(Attributes, keepUserLabelsUniqueWhereAsked) {
  const ChangeOptions unique{true, Origin::Ems};
  const ChangeOptions shared;
  const auto set = [&](const ObjectKey& key, const char* label, const ChangeOptions& options) {
    return inventory->setUserLabel(key, label, options);
  };
  EXPECT_EQ(set(ObjectKey::device(1), "L", unique), Result::Done);
  EXPECT_EQ(set(ObjectKey::device(1), "L", unique), Result::Done) << "its own label";
  EXPECT_EQ(set(ObjectKey::device(2), "L", unique), Result::LabelInUse);
  EXPECT_NE(inventory->device(2)->userLabel, "L");
  EXPECT_EQ(set(ObjectKey::device(2), "l", unique), Result::Done) << "another case";
  EXPECT_EQ(set(ObjectKey::link("1"), "L", unique), Result::Done) << "another kind";
  EXPECT_EQ(set({ObjectKind::Node, "4", {}}, "L", unique), Result::Done) << "another kind";
  EXPECT_EQ(set({ObjectKind::SubMap, "2", {}}, "L", unique), Result::Done) << "shares a table";
  EXPECT_EQ(set({ObjectKind::Node, "5", {}}, "L", unique), Result::LabelInUse);
  EXPECT_EQ(set(ObjectKey::device(3), "L", shared), Result::Done);
  EXPECT_EQ(set(ObjectKey::device(3), "L", unique), Result::LabelInUse) << "now shared";
  EXPECT_EQ(set(ObjectKey::device(4), "", unique), Result::Done);
  EXPECT_EQ(set(ObjectKey::device(5), "", unique), Result::Done) << "the empty one is no label";
  EXPECT_EQ(inventory->setOwner(ObjectKey::device(2), "Veltra", unique), Result::Done)
      << "owners may be shared";
}

TEST_F(Attributes, tellWhoseLabelIsInUse) {
  inventory->setUserLabel(ObjectKey::device(1), "L");
  EXPECT_TRUE(inventory->labelInUse(ObjectKind::Device, "L", ""));
  EXPECT_TRUE(inventory->labelInUse(ObjectKind::Device, "L", "2"));
  EXPECT_FALSE(inventory->labelInUse(ObjectKind::Device, "L", "1"));
  EXPECT_FALSE(inventory->labelInUse(ObjectKind::Link, "L", ""));
  EXPECT_FALSE(inventory->labelInUse(ObjectKind::PhysicalLink, "L", ""));
}

}  // namespace
