#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "agent/ems/inventory.h"
#include "tests/agent/ems/support.h"

using namespace zk::agent;
using zk::test::TemporaryFolder;

namespace {

constexpr int READERS = 8;
constexpr int CHANGES = 200;

// Label and owner are always set to the same number, label first.
void readUntil(const Inventory& inventory, const std::atomic<bool>& stop,
               std::atomic<long>& reads) {
  const std::vector<long> ids = inventory.deviceIds();
  int last = 0;
  while (!stop) {
    const int label = std::stoi(inventory.device(1)->userLabel);
    EXPECT_GE(label, last);
    last = label;
    EXPECT_EQ(inventory.devices(ids).size(), ids.size());
    EXPECT_EQ(inventory.links(inventory.ids(ObjectKind::LINK)).size(),
              static_cast<std::size_t>(inventory.count(ObjectKind::LINK)));
    ++reads;
  }
}

TEST(InventoryThreads, readWhileOneWrites) {
  const TemporaryFolder folder;
  const auto inventory = Inventory::open(folder.file("ems.db"), {20, 2});
  inventory->setUserLabel(ObjectKey::device(1), "0");
  std::atomic<bool> stop{false};
  std::atomic<long> reads{0};
  std::vector<std::thread> readers;
  readers.reserve(READERS);
  for (int i = 0; i < READERS; ++i) {
    readers.emplace_back([&] { readUntil(*inventory, stop, reads); });
  }
  for (int i = 1; i <= CHANGES || reads < READERS; ++i) {
    EXPECT_EQ(inventory->setUserLabel(ObjectKey::device(1), std::to_string(i)), Result::DONE);
  }
  stop = true;
  for (std::thread& reader : readers) {
    reader.join();
  }
  EXPECT_GE(reads, READERS);
}

// Fails when a change is told out of the order in which they were stored.
class OrderedChanges : public ChangeListener {
 public:
  void attributeChanged(const AttributeChange& change) override {
    EXPECT_FALSE(inside_.exchange(true)) << "two calls at once";
    EXPECT_EQ(change.before, last_);
    last_ = change.after;
    ++count;
    inside_ = false;
  }
  int count = 0;

 private:
  std::atomic<bool> inside_{false};
  std::string last_ = "Veltra";
};

TEST(InventoryThreads, areToldInTheOrderOfStoring) {
  const auto inventory = Inventory::open(":memory:", {20, 2});
  OrderedChanges changes;
  inventory->setListener(&changes);
  std::vector<std::thread> writers;
  writers.reserve(READERS);
  for (int writer = 0; writer < READERS; ++writer) {
    writers.emplace_back([&inventory, writer] {
      for (int i = 0; i < CHANGES; ++i) {
        const std::string owner = std::to_string(writer) + "/" + std::to_string(i);
        EXPECT_EQ(inventory->setOwner(ObjectKey::device(1), owner), Result::DONE);
      }
    });
  }
  for (std::thread& writer : writers) {
    writer.join();
  }
  EXPECT_EQ(changes.count, READERS * CHANGES);
}

// What a thread changed has been told when its call returns, whoever told it.
TEST(InventoryThreads, findTheirChangesToldOnReturn) {
  const auto inventory = Inventory::open(":memory:", {20, 2});
  zk::test::RecordedChanges heard;
  inventory->setListener(&heard);
  std::vector<std::thread> writers;
  writers.reserve(READERS);
  for (int writer = 1; writer <= READERS; ++writer) {
    writers.emplace_back([&, writer] {
      const auto device = ObjectKey::device(static_cast<unsigned long>(writer));
      for (int i = 0; i < 20; ++i) {
        const std::string owner = std::to_string(i);
        inventory->setOwner(device, owner);
        const std::string told = "1:" + std::to_string(writer) + " ";
        const auto lines = heard.lines();
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                                [&](const std::string& line) {
                                  return line.find(told) != std::string::npos &&
                                         line.find("'" + owner + "'", line.find("' '")) !=
                                             std::string::npos;
                                }))
            << writer << " " << owner;
      }
    });
  }
  for (std::thread& writer : writers) {
    writer.join();
  }
  EXPECT_EQ(heard.lines().size(), static_cast<std::size_t>(READERS * 20));
}

}  // namespace
