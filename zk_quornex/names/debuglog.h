// The library's debug log, which failed assertions are written to. Safe on any
// thread.
#ifndef ZK_NAMES_DEBUGLOG_H
#define ZK_NAMES_DEBUGLOG_H

#include "zk_quornex/platform/bundle.h"

namespace NS_QUORCORBA {

// Set up on first use and kept for the life of the process: the log service's
// logger, else the bundle manager's log, else the log that drops everything.
// Throws InterfaceNotExistException when no log service is registered; the
// next call then tries again.
NS_BUNDLEMGR1::LogProxy& debugLog();

// Writes "ASSERT: file %s, line %d assertion failed for '%s'.\n" to the debug
// log. Returns, so that the caller goes on with its error result.
void assertionFailed(const char* file, int line, const char* expression);

// Writes that, with the caller's line, unless the condition holds. Returns whether
// it does.
inline bool assertHolds(bool condition, const char* file, const char* expression,
                        int line = __builtin_LINE()) {
  if (!condition) {
    assertionFailed(file, line, expression);
  }
  return condition;
}

}  // namespace NS_QUORCORBA

#endif
