// The library's debug log, which failed assertions are written to. Safe on any
// thread.
#ifndef ZK_NAMES_DEBUGLOG_H
#define ZK_NAMES_DEBUGLOG_H

#include "zk_quornex/platform/bundle.h"

namespace NS_QUORCORBA {

// Set up on first use and kept for the life of the process: the log service's
// logger, else the bundle manager's log, else the log that drops everything.
// Throws InterfaceNotExistException when no log service is registered; the
// next call then tries again. Defined beside that exception, in notify/, since
// names/ knows nothing of it.
NS_BUNDLEMGR1::LogProxy& debugLog();

// Writes "ASSERT: file %s, line %d assertion failed for '%s'.\n" to the debug
// log. Returns, so that the caller goes on with its error result.
void assertionFailed(const char* file, int line, const char* expression);

}  // namespace NS_QUORCORBA

#endif
