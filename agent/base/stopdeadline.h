// The end of a stop that does not end by itself. For the process as a whole.
#ifndef ZK_AGENT_BASE_STOPDEADLINE_H
#define ZK_AGENT_BASE_STOPDEADLINE_H

namespace zk::agent {

// Ends the process after so many seconds, with status 0, and says on standard
// error what it was doing then. Needs neither a thread nor memory.
void beginStopDeadline(unsigned seconds);

// What the stop does from now on: a text that stays.
void enterStop(const char* what);

}  // namespace zk::agent

#endif
