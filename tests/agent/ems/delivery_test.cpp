#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

#include "agent/ems/inventory.h"
#include "tests/agent/ems/support.h"
#include "tests/support/doubles.h"

using namespace zk::agent;
using testing::ElementsAre;
using testing::IsEmpty;
using zk::test::RecordedChanges;

namespace {

class Delivery : public testing::Test {
 protected:
  Result own(long device, const std::string& owner) {
    return inventory->setOwner(ObjectKey::device(static_cast<unsigned long>(device)), owner);
  }

  std::unique_ptr<Inventory> inventory = Inventory::open(":memory:", {20, 2});
};

TEST_F(Delivery, tellsAfterTheChangeCanBeRead) {
  struct Reader : RecordedChanges {
    void attributeChanged(const AttributeChange& change) override {
      seen = inventory->device(1)->owner + " " + std::get<DeviceRecord>(change.record).owner;
    }
    Inventory* inventory = nullptr;
    std::string seen;
  } reader;
  reader.inventory = inventory.get();
  inventory->setListener(&reader);
  own(1, "new");
  EXPECT_EQ(reader.seen, "new new");
}

TEST_F(Delivery, tellsOfAChangeMadeByTheListenerAfterItReturns) {
  struct Changer : RecordedChanges {
    void attributeChanged(const AttributeChange& change) override {
      if (change.after == "first") {
        EXPECT_EQ(inventory->setOwner(ObjectKey::device(1), "second"), Result::DONE);
        EXPECT_THAT(lines(), IsEmpty());
      }
      RecordedChanges::attributeChanged(change);
    }
    Inventory* inventory = nullptr;
  } changer;
  changer.inventory = inventory.get();
  inventory->setListener(&changer);
  own(1, "first");
  EXPECT_THAT(changer.lines(),
              ElementsAre("ems owner 1:1 'Veltra' 'first'", "ems owner 1:1 'first' 'second'"));
}

TEST_F(Delivery, stopsWhenTheListenerIsTakenAway) {
  RecordedChanges first;
  RecordedChanges second;
  own(1, "untold");
  inventory->setListener(&first);
  own(1, "a");
  inventory->setListener(&second);
  own(1, "b");
  inventory->setListener(nullptr);
  own(1, "c");
  EXPECT_THAT(first.lines(), ElementsAre("ems owner 1:1 'untold' 'a'"));
  EXPECT_THAT(second.lines(), ElementsAre("ems owner 1:1 'a' 'b'"));
}

TEST_F(Delivery, letsAListenerTakeItselfAway) {
  struct Leaver : RecordedChanges {
    void attributeChanged(const AttributeChange& change) override {
      RecordedChanges::attributeChanged(change);
      inventory->setListener(nullptr);
    }
    Inventory* inventory = nullptr;
  } leaver;
  leaver.inventory = inventory.get();
  inventory->setListener(&leaver);
  own(1, "a");
  own(1, "b");
  EXPECT_EQ(leaver.lines().size(), 1u);
}

TEST_F(Delivery, survivesAListenerThatThrows) {
  struct Thrower : RecordedChanges {
    void attributeChanged(const AttributeChange& change) override {
      RecordedChanges::attributeChanged(change);
      if (change.after == "a") {
        throw std::runtime_error("no room");
      }
      throw 1;
    }
  } thrower;
  zk::test::CapturedTrace trace;
  inventory->setListener(&thrower);
  EXPECT_EQ(own(1, "a"), Result::DONE);
  EXPECT_EQ(own(1, "b"), Result::DONE);
  EXPECT_EQ(thrower.lines().size(), 2u);
  EXPECT_THAT(trace.texts(),
              ElementsAre("1 ChangeListener failed.no room", "1 ChangeListener failed."));
}

// A listener that does not return holds up neither readers nor the storing.
TEST_F(Delivery, letsOthersReadWhileTheListenerWorks) {
  struct Slow : RecordedChanges {
    void attributeChanged(const AttributeChange& change) override {
      entered.set_value();
      released.wait();
      RecordedChanges::attributeChanged(change);
    }
    std::promise<void> entered;
    std::shared_future<void> released;
  } slow;
  std::promise<void> release;
  slow.released = release.get_future().share();
  inventory->setListener(&slow);
  auto changed = std::async(std::launch::async, [&] { return own(1, "a"); });
  slow.entered.get_future().wait();
  EXPECT_EQ(inventory->device(1)->owner, "a");
  EXPECT_EQ(inventory->deviceIds().size(), 20u);
  release.set_value();
  EXPECT_EQ(changed.get(), Result::DONE);
  EXPECT_EQ(slow.lines().size(), 1u);
}

}  // namespace
