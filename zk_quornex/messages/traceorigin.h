// Names this module as the origin of the trace line that follows.
#ifndef ZK_MESSAGES_TRACEORIGIN_H
#define ZK_MESSAGES_TRACEORIGIN_H

#include "zk_quornex/platform/trace.h"

namespace NS_QUORCORBA {

inline void traceOrigin(int line = __builtin_LINE()) {
  NS_CORBA::SetTraceOrigin("messagecach.cpp", line);
}

// Trace texts show their numbers as ints.
inline int shown(long number) { return static_cast<int>(number); }

}  // namespace NS_QUORCORBA

#endif
