#include "agent/ems/inventoryfile.h"

#include <sqlite3.h>

#include <filesystem>

#include "agent/ems/alarmtable.h"
#include "agent/ems/schema.h"
#include "agent/ems/seed.h"
#include "agent/ems/tables.h"

namespace zk::agent {

namespace {

enum class Contents { Nothing, Inventory };

Contents contentsOf(Database& database) {
  const auto application = database.valueOf<long>("PRAGMA application_id");
  const auto version = database.valueOf<long>("PRAGMA user_version");
  if (application == APPLICATION_ID && version == SCHEMA_VERSION) {
    return Contents::Inventory;
  }
  if (application == APPLICATION_ID) {
    throw InventoryError("has version " + std::to_string(version) + ", and this agent reads " +
                         std::to_string(SCHEMA_VERSION));
  }
  const auto tables = database.valueOf<long>("SELECT count(*) FROM sqlite_schema");
  if (application != 0 || version != 0 || tables != 0) {
    throw InventoryError("is a database of another program");
  }
  return Contents::Nothing;
}

// quick_check leaves out comparing the indexes with their tables, and so stays
// fast enough for every start.
void checkInventory(Database& database) {
  const auto verdict = database.valueOf<std::string>("PRAGMA quick_check(1)");
  if (verdict != "ok") {
    throw InventoryError("is damaged: " + verdict);
  }
  try {
    checkTables(database);
    checkAlarmTable(database);
  } catch (const SqliteError& error) {
    throw InventoryError(std::string("is damaged: ") + error.what());
  }
}

void makeInventory(Database& database, const SeedOptions& seed) {
  database.run(SCHEMA);
  seedInventory(database, seed);
}

// The first transaction takes the file, and the exclusive locking mode keeps it
// taken; the operating system lets go of it if the process dies.
void takeInventory(Database& database, const SeedOptions& seed) {
  if (database.readOnly()) {
    throw InventoryError("cannot be written");
  }
  database.run("PRAGMA locking_mode = EXCLUSIVE");
  database.run("PRAGMA foreign_keys = ON");
  Transaction transaction(database, "BEGIN EXCLUSIVE");
  if (contentsOf(database) == Contents::Inventory) {
    checkInventory(database);
  } else {
    makeInventory(database, seed);
  }
  transaction.commit();
}

// With a write-ahead log a change costs one wait for the disk, not three. FULL,
// which waits for it on every change, because an NMS that was told "done" must
// find its change after a power cut too.
void chooseJournal(Database& database) {
  database.run("PRAGMA synchronous = FULL");
  const auto mode = database.valueOf<std::string>("PRAGMA journal_mode = WAL");
  if (mode != "wal" && mode != "memory") {
    throw InventoryError("cannot have a write-ahead log beside it");
  }
  database.checkpointOnClose(true);
}

// A file of one byte is empty to SQLite, which would write over it; no database
// is smaller than its smallest page.
void refuseScrap(const std::string& path) {
  std::error_code noFile;
  const auto size = std::filesystem::file_size(path, noFile);
  if (!noFile && size > 0 && size < 512) {
    throw InventoryError("is not an SQLite database");
  }
}

// Until all is known to be well, not even a left-over log goes into the file.
Database openChecked(const std::string& path, const SeedOptions& seed) {
  refuseScrap(path);
  Database database(path);
  database.checkpointOnClose(false);
  takeInventory(database, seed);
  chooseJournal(database);
  return database;
}

std::string reasonOf(const SqliteError& error) {
  switch (error.primaryCode()) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "is in use by another agent";
    case SQLITE_NOTADB:
      return "is not an SQLite database";
    case SQLITE_CORRUPT:
      return std::string("is damaged: ") + error.what();
    case SQLITE_READONLY:
      return "cannot be written";
    default:
      return std::string("cannot be opened: ") + error.what();
  }
}

}  // namespace

Database openInventoryFile(const std::string& path, const SeedOptions& seed) {
  const std::string subject = "inventory " + path + " ";
  if (path.empty()) {
    throw InventoryError("the inventory's file has no name");
  }
  try {
    return openChecked(path, seed);
  } catch (const SqliteError& error) {
    throw InventoryError(subject + reasonOf(error));
  } catch (const InventoryError& error) {
    throw InventoryError(subject + error.what());
  }
}

}  // namespace zk::agent
