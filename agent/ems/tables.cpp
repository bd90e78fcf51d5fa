#include "agent/ems/tables.h"

#include <sqlite3.h>

#include <filesystem>

#include "agent/ems/seed.h"

namespace zk::agent {

namespace {

// What the file's header says of it: that it is an inventory ("ZKEM"), and of
// which version. Any change to the tables raises the version.
constexpr long APPLICATION_ID = 0x5a4b454d;
constexpr long SCHEMA_VERSION = 1;

// References are checked by SQLite, on every change. Each referring column has
// an index, or removing what it refers to would read the whole table; each user
// label has one for the check that it is not in use. Text ids are looked up, the
// number keeps the order of creation.
constexpr char SCHEMA[] = R"sql(
PRAGMA application_id = 1514882381;
PRAGMA user_version = 1;

CREATE TABLE counter (
  kind INTEGER PRIMARY KEY,
  next INTEGER NOT NULL
);

CREATE TABLE ems (
  id TEXT PRIMARY KEY,
  user_label TEXT NOT NULL,
  owner TEXT NOT NULL,
  native_name TEXT NOT NULL
);

CREATE TABLE subnetwork (
  id TEXT PRIMARY KEY,
  user_label TEXT NOT NULL,
  owner TEXT NOT NULL,
  native_name TEXT NOT NULL,
  topology INTEGER NOT NULL
);

CREATE TABLE device (
  id INTEGER PRIMARY KEY,
  native_name TEXT NOT NULL,
  product_name TEXT NOT NULL,
  user_label TEXT NOT NULL,
  owner TEXT NOT NULL,
  version TEXT NOT NULL,
  location TEXT NOT NULL,
  site_id TEXT REFERENCES map_object (id)
);
CREATE INDEX device_site ON device (site_id);
CREATE INDEX device_label ON device (user_label);

CREATE TABLE link (
  number INTEGER PRIMARY KEY,
  id TEXT NOT NULL UNIQUE,
  user_label TEXT NOT NULL,
  owner TEXT NOT NULL,
  native_name TEXT NOT NULL,
  direction INTEGER NOT NULL,
  rate INTEGER NOT NULL,
  a_device INTEGER NOT NULL REFERENCES device (id),
  a_port TEXT NOT NULL,
  z_device INTEGER NOT NULL REFERENCES device (id),
  z_port TEXT NOT NULL
);
CREATE INDEX link_a ON link (a_device);
CREATE INDEX link_z ON link (z_device);
CREATE INDEX link_label ON link (user_label);

-- kind: 4 a node, 5 a submap
CREATE TABLE map_object (
  number INTEGER PRIMARY KEY,
  id TEXT NOT NULL UNIQUE,
  kind INTEGER NOT NULL,
  user_label TEXT NOT NULL,
  owner TEXT NOT NULL,
  native_name TEXT NOT NULL,
  parent_id TEXT REFERENCES map_object (id),
  device_id INTEGER REFERENCES device (id)
);
CREATE INDEX map_object_parent ON map_object (parent_id);
CREATE INDEX map_object_device ON map_object (device_id);
CREATE INDEX map_object_label ON map_object (user_label);

CREATE TABLE display_link (
  number INTEGER PRIMARY KEY,
  id TEXT NOT NULL UNIQUE,
  user_label TEXT NOT NULL,
  owner TEXT NOT NULL,
  native_name TEXT NOT NULL,
  parent_id TEXT NOT NULL REFERENCES map_object (id),
  a_end TEXT NOT NULL REFERENCES map_object (id),
  z_end TEXT NOT NULL REFERENCES map_object (id)
);
CREATE INDEX display_link_parent ON display_link (parent_id);
CREATE INDEX display_link_a ON display_link (a_end);
CREATE INDEX display_link_z ON display_link (z_end);
CREATE INDEX display_link_label ON display_link (user_label);

CREATE TABLE physical_link (
  number INTEGER PRIMARY KEY,
  id TEXT NOT NULL UNIQUE,
  link_id TEXT NOT NULL REFERENCES link (id)
);
CREATE INDEX physical_link_link ON physical_link (link_id);

-- device_id: null for the EMS itself; raised_at: milliseconds since 1970, UTC
CREATE TABLE alarm (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  device_id INTEGER REFERENCES device (id),
  probable_cause TEXT NOT NULL,
  qualifier TEXT NOT NULL,
  native_probable_cause TEXT NOT NULL,
  severity INTEGER NOT NULL,
  raised_at INTEGER NOT NULL,
  additional_text TEXT NOT NULL
);
CREATE UNIQUE INDEX alarm_identity ON alarm (IFNULL(device_id, 0), probable_cause, qualifier);
CREATE INDEX alarm_device ON alarm (device_id);
)sql";

static_assert(APPLICATION_ID == 1514882381 && SCHEMA_VERSION == 1, "as the tables' text says");

enum class Contents { NOTHING, INVENTORY };

Contents contentsOf(Tables& tables) {
  const auto application = tables.valueOf<long>("PRAGMA application_id");
  const auto version = tables.valueOf<long>("PRAGMA user_version");
  if (application == APPLICATION_ID && version == SCHEMA_VERSION) {
    return Contents::INVENTORY;
  }
  if (application == APPLICATION_ID) {
    throw InventoryError("has version " + std::to_string(version) + ", and this agent reads " +
                         std::to_string(SCHEMA_VERSION));
  }
  const auto found = tables.valueOf<long>("SELECT count(*) FROM sqlite_schema");
  if (application != 0 || version != 0 || found != 0) {
    throw InventoryError("is a database of another program");
  }
  return Contents::NOTHING;
}

// Throws when a table is missing or has other columns.
template <class... Records>
void prepareAll(Tables& tables) {
  (tables.prepare(selectOf<Records>("1")), ...);
}

// quick_check leaves out comparing the indexes with their tables, and so stays
// fast enough for every start.
void checkInventory(Tables& tables) {
  const auto verdict = tables.valueOf<std::string>("PRAGMA quick_check(1)");
  if (verdict != "ok") {
    throw InventoryError("is damaged: " + verdict);
  }
  try {
    prepareAll<EmsRecord, DeviceRecord, SubnetworkRecord, LinkRecord, NodeRecord, SubMapRecord,
               DisplayLinkRecord, PhysicalLinkRecord, AlarmRecord>(tables);
  } catch (const SQLite::Exception& error) {
    throw InventoryError(std::string("is damaged: ") + error.what());
  }
}

void makeInventory(Tables& tables, const SeedOptions& seed) {
  tables.database().exec(SCHEMA);
  seedInventory(tables, seed);
}

// The first transaction takes the file, and the exclusive locking mode keeps it
// taken; the operating system lets go of it if the process dies.
void takeInventory(Tables& tables, const SeedOptions& seed) {
  SQLite::Database& database = tables.database();
  if (sqlite3_db_readonly(database.getHandle(), "main") == 1) {
    throw InventoryError("cannot be written");
  }
  database.exec("PRAGMA locking_mode = EXCLUSIVE");
  database.exec("PRAGMA foreign_keys = ON");
  SQLite::Transaction transaction(database, SQLite::TransactionBehavior::EXCLUSIVE);
  if (contentsOf(tables) == Contents::INVENTORY) {
    checkInventory(tables);
  } else {
    makeInventory(tables, seed);
  }
  transaction.commit();
}

// Whether closing may move what the write-ahead log holds into the file.
void checkpointOnClose(Tables& tables, bool allowed) {
  const SQLite::Database& database = tables.database();
  database.check(sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE,
                                   allowed ? 0 : 1, nullptr));
}

// With a write-ahead log a change costs one wait for the disk, not three. FULL,
// which waits for it on every change, because an NMS that was told "done" must
// find its change after a power cut too.
void chooseJournal(Tables& tables) {
  tables.database().exec("PRAGMA synchronous = FULL");
  const auto mode = tables.valueOf<std::string>("PRAGMA journal_mode = WAL");
  if (mode != "wal" && mode != "memory") {
    throw InventoryError("cannot have a write-ahead log beside it");
  }
  // The log is opened by the first who reads: a write that could not open it any
  // more, for want of descriptors, would be lost.
  tables.valueOf<long>("SELECT count(*) FROM sqlite_schema");
  checkpointOnClose(tables, true);
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

std::string reasonOf(const SQLite::Exception& error) {
  switch (error.getErrorCode()) {
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

Tables::Tables(const std::string& path)
    : database_(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_NOMUTEX) {}

SQLite::Statement* Tables::borrow(const std::string& sql) {
  return &statements_.try_emplace(sql, database_, sql).first->second;
}

Tables Tables::open(const std::string& path, const SeedOptions& seed) {
  if (path.empty()) {
    throw InventoryError("the inventory's file has no name");
  }
  const std::string subject = "inventory " + path + " ";
  try {
    refuseScrap(path);
    Tables tables(path);
    // Until all is known to be well, not even a left-over log goes into the file.
    checkpointOnClose(tables, false);
    takeInventory(tables, seed);
    chooseJournal(tables);
    return tables;
  } catch (const SQLite::Exception& error) {
    throw InventoryError(subject + reasonOf(error));
  } catch (const InventoryError& error) {
    throw InventoryError(subject + error.what());
  }
}

}  // namespace zk::agent
