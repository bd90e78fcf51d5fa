// The agent's time helper and its date-time record. Safe on any thread.
#ifndef ZK_PLATFORM_TIMECHANGE_H
#define ZK_PLATFORM_TIMECHANGE_H

#include <string>

namespace NS_QUORCORBA {

// A calendar date and time in UTC. All zero means not set.
struct stDateTimeType {
  int year = 0;
  int month = 0;   // 1 to 12
  int day = 0;     // 1 to 31
  int hour = 0;    // 0 to 23
  int minute = 0;  // 0 to 59
  int second = 0;  // 0 to 59
};

class TimeChange {
 public:
  // The current time as TMF 814 writes it: yyyyMMddhhmmss.sZ.
  static std::string getUTCTime();

  // Whether the record holds a time that the calendar has; not set is invalid.
  static bool checkDateTimeValid(const stDateTimeType& time);
};

}  // namespace NS_QUORCORBA

#endif
