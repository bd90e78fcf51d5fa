// The inventory's tables.
#ifndef ZK_AGENT_EMS_SCHEMA_H
#define ZK_AGENT_EMS_SCHEMA_H

namespace zk::agent {

// What the file's header says of it: that it is an inventory ("ZKEM"), and of
// which version. Any change to the tables raises the version.
inline constexpr long APPLICATION_ID = 0x5a4b454d;
inline constexpr long SCHEMA_VERSION = 1;

// Creates all of it, in the caller's transaction.
extern const char SCHEMA[];

}  // namespace zk::agent

#endif
