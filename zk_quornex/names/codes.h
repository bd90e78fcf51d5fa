// What all object names share: kinds of names, results, and the marks of what the
// shared library exports of its interface's classes.
#ifndef ZK_NAMES_CODES_H
#define ZK_NAMES_CODES_H

#define ZK_EXPORT __attribute__((visibility("default")))
#define ZK_HIDDEN __attribute__((visibility("hidden")))

namespace NS_QUORCORBA {

// Kinds of object names, one code space for the whole agent. Kinds without a
// class in this library keep their place.
enum NameType : int {
  NAME_EMS = 0,
  NAME_MANAGED_ELEMENT = 1,
  NAME_SUBNETWORK = 2,
  NAME_TOPOLOGICAL_LINK = 3,
  NAME_SUBNETWORK_CONNECTION = 4,
  NAME_PTP = 5,
  NAME_CTP = 6,
  NAME_PGP = 10,
  NAME_AID = 12,
  NAME_NODE = 16,
  NAME_SUBMAP = 17,
  NAME_DISPLAY_LINK = 18,
  NAME_PHYSICAL_LINK = 19,
  NAME_DN = 20
};

// Results of every operation that returns an unsigned long.
enum ResultCode : unsigned long {
  RESULT_OK = 0,
  RESULT_NO_INTERFACE = 0x41180004,       // a requested service is not registered
  RESULT_NOT_SUPPORTED = 0x41180032,      // operation or kind of object
  RESULT_NO_OBJECT_TYPE = 0x41180053,     // the name's kind has no TMF 814 object type
  RESULT_NULL_ARGUMENT = 0x4118005F,      // no name, or no text
  RESULT_BAD_NAME = 0x41180060,           // malformed or empty NMS name
  RESULT_TEXT_TOO_LONG = 0x4118006A,      // longer than 252 characters
  RESULT_EMPTY_NAME = 0x411800BD,         // missing or empty name object
  RESULT_OTHER_EMS = 0x411800CB,          // not this EMS, or refused by validation
  RESULT_NO_ELEMENT_ID = 0x411800CC,      // managed-element id 0, or refused
  RESULT_LINK_REFUSED = 0x411800D4,       // topological link refused by validation
  RESULT_SUBNETWORK_REFUSED = 0x411800D5  // subnetwork refused by validation
};

}  // namespace NS_QUORCORBA

#endif
