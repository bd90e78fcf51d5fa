// The changes that the traffic makes up, a step at a time.
#include "agent/ems/traffic/changer.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "tests/agent/ems/support.h"

namespace {

using namespace zk::agent;
using Lines = std::vector<std::string>;

// An inventory and what it told of some steps.
struct Trial {
  explicit Trial(SeedOptions seed = {20, 3}, const std::string& path = ":memory:")
      : inventory(Inventory::open(path, seed)) {
    inventory->setListener(&changes);
  }
  ~Trial() { inventory->setListener(nullptr); }

  void steps(Changer& changer, int count) {
    for (int i = 0; i < count; ++i) {
      ASSERT_EQ(changer.step(), Result::DONE) << "step " << i;
    }
  }

  const std::unique_ptr<Inventory> inventory;
  zk::test::RecordedChanges changes;
};

Lines linesOf(unsigned seed) {
  Trial run;
  Changer changer(*run.inventory, seed);
  run.steps(changer, 500);
  return run.changes.lines();
}

TEST(Changer, makesTheSameChangesForTheSameSeed) {
  const Lines lines = linesOf(7);
  EXPECT_GE(lines.size(), 500U);
  EXPECT_EQ(lines, linesOf(7));
  EXPECT_NE(lines, linesOf(8));
}

TEST(Changer, makesEveryKindOfChange) {
  std::map<std::string, int> seen;
  for (const std::string& line : linesOf(1)) {
    const std::string kind = line.rfind("ems ", 0) == 0 ? line.substr(4) : line;
    const bool aboutAnObject = kind.rfind("created", 0) == 0 || kind.rfind("removed", 0) == 0;
    ++seen[kind.substr(0, aboutAnObject ? kind.find(':') : kind.find(' '))];
  }
  for (const char* kind : {"userLabel", "owner", "nativeName", "raised", "cleared"}) {
    EXPECT_GT(seen[kind], 20) << kind;
  }
  for (const ObjectKind kind : {ObjectKind::DEVICE, ObjectKind::LINK, ObjectKind::NODE,
                                ObjectKind::SUB_MAP, ObjectKind::PHYSICAL_LINK}) {
    const std::string number = std::to_string(static_cast<int>(kind));
    EXPECT_GT(seen["created " + number], 0) << number;
    EXPECT_GT(seen["removed " + number], 0) << number;
  }
}

TEST(Changer, tellsOneChangeAStepUnlessADeviceTakesItsAlarmsAlong) {
  Trial run;
  Changer changer(*run.inventory, 3);
  std::size_t told = 0;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(changer.step(), Result::DONE);
    const Lines lines = run.changes.lines();
    ASSERT_GT(lines.size(), told) << "step " << i << " told nothing";
    if (lines.size() > told + 1) {
      EXPECT_EQ(lines.back().rfind("removed 1:", 0), 0U) << lines.back();
    }
    told = lines.size();
  }
}

std::set<std::string> keysOf(const Inventory& inventory) {
  std::set<std::string> keys;
  for (const long id : inventory.deviceIds()) {
    keys.insert(zk::test::dump(ObjectKey::device(static_cast<unsigned long>(id))));
  }
  for (const ObjectKind kind : {ObjectKind::LINK, ObjectKind::NODE, ObjectKind::SUB_MAP,
                                ObjectKind::DISPLAY_LINK, ObjectKind::PHYSICAL_LINK}) {
    for (const std::string& id : inventory.ids(kind)) {
      keys.insert(zk::test::dump(ObjectKey{kind, id, {}}));
    }
  }
  return keys;
}

TEST(Changer, removesNothingThatWasThereBeforeAndStaysSmall) {
  Trial run;
  const std::set<std::string> before = keysOf(*run.inventory);
  Changer changer(*run.inventory, 5);
  for (int i = 0; i < 3000; ++i) {
    ASSERT_EQ(changer.step(), Result::DONE);
    ASSERT_LE(run.inventory->activeAlarms().size(), MOST_TRAFFIC_ALARMS);
  }
  const std::set<std::string> after = keysOf(*run.inventory);
  for (const std::string& key : before) {
    EXPECT_EQ(after.count(key), 1U) << key;
  }
  EXPECT_LE(after.size(), before.size() + MOST_TRAFFIC_OBJECTS);
}

TEST(Changer, findsItsObjectsAgainAfterARestart) {
  const zk::test::TemporaryFolder folder;
  std::size_t seeded = 0;
  for (unsigned restart = 0; restart < 5; ++restart) {
    Trial run({20, 3}, folder.file("ems.db"));
    const std::size_t found = keysOf(*run.inventory).size();
    seeded = restart == 0 ? found : seeded;
    Changer changer(*run.inventory, restart);
    EXPECT_EQ(Population(*run.inventory).own().size(), found - seeded);
    run.steps(changer, 1000);
    EXPECT_LE(keysOf(*run.inventory).size(), seeded + MOST_TRAFFIC_OBJECTS);
  }
}

TEST(Changer, leavesOthersAlarmsActive) {
  Trial run;
  AlarmRecord alarm;
  alarm.deviceId = 1;
  alarm.probableCause = "LOS";
  alarm.severity = Severity::CRITICAL;
  ASSERT_EQ(run.inventory->raiseAlarm(alarm), Result::DONE);
  Changer changer(*run.inventory, 2);
  run.steps(changer, 1000);
  EXPECT_TRUE(run.inventory->alarm(alarm.id).has_value());
}

TEST(Changer, hasWorkInAnEmptyNetwork) {
  Trial run({0, 1});
  Changer changer(*run.inventory, 4);
  run.steps(changer, 300);
  EXPECT_GE(run.changes.lines().size(), 300U);
}

// What somebody else removed is met once, and left alone from then on.
TEST(Changer, goesOnWhenSomebodyElseRemovesObjects) {
  Trial run({3, 1});
  Changer changer(*run.inventory, 6);
  for (const ObjectKind kind :
       {ObjectKind::DISPLAY_LINK, ObjectKind::PHYSICAL_LINK, ObjectKind::LINK, ObjectKind::NODE}) {
    for (const std::string& id : run.inventory->ids(kind)) {
      ASSERT_EQ(run.inventory->remove({kind, id, {}}), Result::DONE);
    }
  }
  for (const long id : run.inventory->deviceIds()) {
    ASSERT_EQ(run.inventory->remove(ObjectKey::device(static_cast<unsigned long>(id))),
              Result::DONE);
  }
  int refused = 0;
  for (int i = 0; i < 1000; ++i) {
    refused += changer.step() != Result::DONE ? 1 : 0;
  }
  EXPECT_GT(refused, 0);
  EXPECT_LE(refused, 30) << "objects that are gone are met again and again";
}

TEST(NumberedText, countsOn) {
  const std::pair<const char*, const char*> cases[] = {
      {"north", "north (2)"},
      {"north (2)", "north (3)"},
      {"north (9)", "north (10)"},
      {"north (998)", "north (999)"},
      {"north (999)", "north (2)"},
      {"", " (2)"},
      {"north (0)", "north (0) (2)"},
      {"north (1000)", "north (1000) (2)"},
      {"north(2)", "north(2) (2)"},
      {"north (2) ", "north (2)  (2)"},
      {"two\nlines (7)", "two\nlines (8)"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(nextNumbered(text), expected) << text;
  }
}

}  // namespace
