// The names of TMF 814's exception types.
#ifndef ZK_TESTS_SUPPORT_EXCEPTIONTYPES_H
#define ZK_TESTS_SUPPORT_EXCEPTIONTYPES_H

#include <array>

namespace zk::test {

// In the order of their numbers, without "EXCPT_".
inline constexpr std::array<const char*, 16> EXCEPTION_TYPES{"NOT_IMPLEMENTED",
                                                             "INTERNAL_ERROR",
                                                             "INVALID_INPUT",
                                                             "OBJECT_IN_USE",
                                                             "TP_INVALID_ENDPOINT",
                                                             "ENTITY_NOT_FOUND",
                                                             "TIMESLOT_IN_USE",
                                                             "PROTECTION_EFFORT_NOT_MET",
                                                             "NOT_IN_VALID_STATE",
                                                             "UNABLE_TO_COMPLY",
                                                             "NE_COMM_LOSS",
                                                             "CAPACITY_EXCEEDED",
                                                             "ACCESS_DENIED",
                                                             "TOO_MANY_OPEN_ITERATORS",
                                                             "UNSUPPORTED_ROUTING_CONSTRAINTS",
                                                             "USERLABEL_IN_USE"};

}  // namespace zk::test

#endif
