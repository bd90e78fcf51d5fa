// Texts that change and stay recognisable: "north", "north (2)", "north (3)".
#ifndef ZK_AGENT_EMS_TRAFFIC_NUMBEREDTEXT_H
#define ZK_AGENT_EMS_TRAFFIC_NUMBEREDTEXT_H

#include <string>

namespace zk::agent {

// Never the text itself; after 999 comes 2 again, so it does not grow on.
std::string nextNumbered(const std::string& text);

}  // namespace zk::agent

#endif
