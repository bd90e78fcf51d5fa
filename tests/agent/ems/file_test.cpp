#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "agent/ems/inventory.h"
#include "tests/agent/ems/support.h"

using namespace zk::agent;
using testing::HasSubstr;
using zk::test::bytesOf;
using zk::test::TemporaryFolder;
using zk::test::writeBytes;

namespace {

constexpr SeedOptions SMALL{20, 2};

// What is wrong with the file, as the one who opens it is told.
std::string refusalOf(const std::string& path, const SeedOptions& seed = SMALL) {
  try {
    Inventory::open(path, seed);
  } catch (const InventoryError& error) {
    return error.what();
  }
  return "opened";
}

void runSql(const std::string& path, const char* sql) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(database);
  sqlite3_close(database);
}

TEST(InventoryFile, keepsEveryChangeOverARestart) {
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  {
    const auto inventory = Inventory::open(path, SMALL);
    EXPECT_EQ(inventory->setUserLabel(ObjectKey::device(3), "label"), Result::DONE);
    EXPECT_EQ(inventory->setOwner(ObjectKey::link("2"), "someone"), Result::DONE);
    EXPECT_EQ(inventory->setNativeName(ObjectKey::ems(), "Elsewhere"), Result::DONE);
    AlarmRecord alarm;
    alarm.deviceId = 4;
    alarm.probableCause = "LOS";
    alarm.severity = Severity::CRITICAL;
    EXPECT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
    DeviceRecord device;
    device.name = "Added";
    EXPECT_EQ(inventory->create(device), Result::DONE);
    EXPECT_EQ(inventory->remove(ObjectKey::device(21)), Result::DONE);
  }
  const auto inventory = Inventory::open(path, {5, 1});
  EXPECT_EQ(inventory->count(ObjectKind::DEVICE), 20) << "seeded again";
  EXPECT_EQ(inventory->device(3)->userLabel, "label");
  EXPECT_EQ(inventory->link("2")->owner, "someone");
  EXPECT_EQ(inventory->ems().nativeName, "Elsewhere");
  ASSERT_EQ(inventory->activeAlarms().size(), 1u);
  EXPECT_EQ(inventory->activeAlarms()[0].probableCause, "LOS");
  DeviceRecord device;
  device.name = "Next";
  EXPECT_EQ(inventory->create(device), Result::DONE);
  EXPECT_EQ(device.id, 22) << "an id was given out twice";
}

TEST(InventoryFile, seedsAnEmptyFile) {
  const TemporaryFolder folder;
  writeBytes(folder.file("ems.db"), "");
  EXPECT_EQ(Inventory::open(folder.file("ems.db"), SMALL)->count(ObjectKind::DEVICE), 20);
}

TEST(InventoryFile, leavesOneFileWhenClosed) {
  const TemporaryFolder folder;
  Inventory::open(folder.file("ems.db"), SMALL)->setOwner(ObjectKey::ems(), "x");
  EXPECT_FALSE(std::filesystem::exists(folder.file("ems.db-wal")));
  EXPECT_FALSE(std::filesystem::exists(folder.file("ems.db-journal")));
}

TEST(InventoryFile, refusesASecondOpenerInTheSameProcess) {
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  auto first = Inventory::open(path, SMALL);
  EXPECT_EQ(refusalOf(path), "inventory " + path + " is in use by another agent");
  EXPECT_EQ(first->setOwner(ObjectKey::ems(), "still works"), Result::DONE);
  first.reset();
  EXPECT_EQ(refusalOf(path), "opened");
}

TEST(InventoryFile, refusesWhatIsStillInUseAfterAReopening) {
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  Inventory::open(path, SMALL);
  const auto first = Inventory::open(path, SMALL);
  EXPECT_EQ(refusalOf(path), "inventory " + path + " is in use by another agent");
}

// A process that opens the inventory, does its work, says so, and then waits to
// be killed.
class OtherAgent {
 public:
  OtherAgent(const std::string& path, const std::function<void(Inventory&)>& work) {
    EXPECT_EQ(pipe(ready_), 0);
    child_ = fork();
    if (child_ == 0) {
      const auto inventory = Inventory::open(path, SMALL);
      work(*inventory);
      if (write(ready_[1], "x", 1) != 1) {
        _exit(1);
      }
      for (;;) {
        pause();
      }
    }
    close(ready_[1]);
  }
  ~OtherAgent() {
    kill();
    close(ready_[0]);
  }
  OtherAgent(const OtherAgent&) = delete;
  OtherAgent& operator=(const OtherAgent&) = delete;

  bool waitUntilDone() const {
    char byte = 0;
    return read(ready_[0], &byte, 1) == 1;
  }

  void kill() {
    if (child_ > 0) {
      ::kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
      child_ = 0;
    }
  }

 private:
  int ready_[2] = {-1, -1};
  pid_t child_ = 0;
};

TEST(InventoryFile, refusesWhatAnotherProcessHasOpenUntilItDies) {
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  OtherAgent other(path, [](Inventory& inventory) {
    inventory.setUserLabel(ObjectKey::device(1), "written before the kill");
  });
  ASSERT_TRUE(other.waitUntilDone());
  EXPECT_EQ(refusalOf(path), "inventory " + path + " is in use by another agent");
  other.kill();
  EXPECT_EQ(Inventory::open(path)->device(1)->userLabel, "written before the kill");
}

TEST(InventoryFile, startsAgainWhenKilledBeforeItWasSeeded) {
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  // A journal mode and no tables: all that a first start may leave behind.
  runSql(path, "PRAGMA journal_mode = WAL");
  EXPECT_GT(bytesOf(path).size(), 0u);
  EXPECT_EQ(Inventory::open(path, SMALL)->count(ObjectKind::DEVICE), 20);
}

struct BadFile {
  const char* name;
  std::function<void(const std::string& path)> make;
  const char* reason;
};

void overwrite(const std::string& path, std::size_t from, std::size_t size) {
  std::string bytes = bytesOf(path);
  ASSERT_GT(bytes.size(), from + size);
  bytes.replace(from, size, std::string(size, '\x55'));
  writeBytes(path, bytes);
}

std::vector<BadFile> badFiles() {
  const auto inventory = [](const std::string& path) { Inventory::open(path, SMALL); };
  return {
      {"text", [](const auto& path) { writeBytes(path, "not a database, a longish text\n"); },
       " is not an SQLite database"},
      {"one byte", [](const auto& path) { writeBytes(path, "x"); }, " is not an SQLite database"},
      {"zeros", [](const auto& path) { writeBytes(path, std::string(8192, '\0')); },
       " is not an SQLite database"},
      {"header only",
       [=](const auto& path) {
         inventory(path);
         writeBytes(path, bytesOf(path).substr(0, 100));
       },
       " is not an SQLite database"},
      {"half",
       [=](const auto& path) {
         inventory(path);
         writeBytes(path, bytesOf(path).substr(0, bytesOf(path).size() / 2));
       },
       " is damaged: "},
      {"page overwritten",
       [=](const auto& path) {
         inventory(path);
         overwrite(path, 8192, 4096);
       },
       " is damaged: "},
      {"table list overwritten",
       [=](const auto& path) {
         inventory(path);
         overwrite(path, 100, 400);
       },
       " is damaged: "},
      {"another version",
       [=](const auto& path) {
         inventory(path);
         runSql(path, "PRAGMA user_version = 7");
       },
       " has version 7, and this agent reads 1"},
      {"another program's",
       [](const auto& path) { runSql(path, "CREATE TABLE recipe (id INTEGER)"); },
       " is a database of another program"},
      {"another program's number",
       [](const auto& path) { runSql(path, "PRAGMA application_id = 42"); },
       " is a database of another program"},
      {"table missing",
       [=](const auto& path) {
         inventory(path);
         runSql(path, "DROP TABLE physical_link");
       },
       " is damaged: no such table: physical_link"},
      {"alarms missing",
       [=](const auto& path) {
         inventory(path);
         runSql(path, "DROP TABLE alarm");
       },
       " is damaged: no such table: alarm"},
      {"column missing",
       [=](const auto& path) {
         inventory(path);
         runSql(path, "ALTER TABLE link DROP COLUMN rate");
       },
       " is damaged: no such column: rate"},
  };
}

TEST(InventoryFile, refusesAndLeavesAloneWhatIsNoInventory) {
  for (const BadFile& bad : badFiles()) {
    SCOPED_TRACE(bad.name);
    const TemporaryFolder folder;
    const std::string path = folder.file("ems.db");
    bad.make(path);
    const std::string before = bytesOf(path);
    const std::string refusal = refusalOf(path);
    EXPECT_THAT(refusal, testing::StartsWith("inventory " + path + bad.reason));
    EXPECT_EQ(bytesOf(path) == before, true) << "the file was changed";
  }
}

TEST(InventoryFile, leavesALeftOverLogOfAnotherVersionAlone) {
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  {
    OtherAgent other(path, [](Inventory& inventory) {
      inventory.setUserLabel(ObjectKey::device(1), "in the log");
    });
    ASSERT_TRUE(other.waitUntilDone());
  }
  std::string bytes = bytesOf(path);
  ASSERT_GT(bytesOf(path + "-wal").size(), 0u);
  // Page 1 is not in the log, so its header's user_version (offset 60) counts.
  bytes[63] = 9;
  writeBytes(path, bytes);
  EXPECT_THAT(refusalOf(path), HasSubstr("has version 9"));
  EXPECT_EQ(bytesOf(path) == bytes, true) << "the file was changed";
}

TEST(InventoryFile, refusesAPathItCannotUse) {
  const TemporaryFolder folder;
  EXPECT_EQ(refusalOf(""), "the inventory's file has no name");
  const std::string inFolder = folder.file("missing/ems.db");
  EXPECT_THAT(refusalOf(inFolder), HasSubstr("inventory " + inFolder + " cannot be opened: "));
  const std::string isFolder = folder.file("");
  EXPECT_THAT(refusalOf(isFolder), HasSubstr("inventory " + isFolder + " cannot be opened: "));
  EXPECT_THAT(refusalOf("/proc/zk-ems.db"), HasSubstr("cannot be opened: "));
}

TEST(InventoryFile, refusesAFileItMayNotWrite) {
  if (geteuid() == 0) {
    GTEST_SKIP() << "root may write every file";
  }
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  Inventory::open(path, SMALL);
  chmod(path.c_str(), 0444);
  EXPECT_EQ(refusalOf(path), "inventory " + path + " cannot be written");
  chmod(path.c_str(), 0000);
  EXPECT_THAT(refusalOf(path), HasSubstr("inventory " + path + " cannot be opened: "));
}

TEST(InventoryFile, refusesAFileInAFolderItMayNotWrite) {
  if (geteuid() == 0) {
    GTEST_SKIP() << "root may write every folder";
  }
  const TemporaryFolder folder;
  const std::string path = folder.file("ems.db");
  Inventory::open(path, SMALL);
  chmod(folder.file("").c_str(), 0555);
  const std::string refusal = refusalOf(path);
  chmod(folder.file("").c_str(), 0755);
  EXPECT_THAT(refusal, HasSubstr("inventory " + path + " "));
  EXPECT_NE(refusal, "opened");
}

TEST(InventoryFile, tellsWhenTheDiskTakesNoMore) {
  const TemporaryFolder folder;
  const auto inventory = Inventory::open(folder.file("ems.db"), SMALL);
  signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit none{0, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
  EXPECT_THROW(inventory->setUserLabel(ObjectKey::device(1), "too much"), InventoryError);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  EXPECT_EQ(inventory->device(1)->userLabel, inventory->device(1)->name);
  EXPECT_EQ(inventory->setUserLabel(ObjectKey::device(1), "fits again"), Result::DONE);
  EXPECT_EQ(inventory->device(1)->userLabel, "fits again");
}

}  // namespace
