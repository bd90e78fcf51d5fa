// What the embedded EMS answers to a change: its own range of result codes,
// beside those of the name conversion.
#ifndef ZK_AGENT_EMS_RESULT_H
#define ZK_AGENT_EMS_RESULT_H

namespace zk::agent {

enum class Result : unsigned long {
  Done = 0,
  NoSuchObject = 0x41190001,    // the object, or one it would refer to
  LabelInUse = 0x41190002,      // another object of the kind has the user label
  StorageFailure = 0x41190003,  // nothing was changed; told by InventoryBackend only
  NoRequest = 0x41190004,       // the thread serves no request that says what to change
  BadValue = 0x41190005,        // a text or number that this object cannot have
  ObjectInUse = 0x41190006,     // other objects refer to it
  ObjectExists = 0x41190007,    // the id is taken
};

constexpr unsigned long codeOf(Result result) { return static_cast<unsigned long>(result); }

}  // namespace zk::agent

#endif
