#include "agent/ems/schema.h"

namespace zk::agent {

// References are checked by SQLite, on every change. Each referring column has
// an index, or removing what it refers to would read the whole table; each user
// label has one for the check that it is not in use. Text ids are looked up, the
// number keeps the order of creation.
const char SCHEMA[] = R"sql(
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

}  // namespace zk::agent
