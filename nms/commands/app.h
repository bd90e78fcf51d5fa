// The whole program but for the process around it.
#ifndef ZK_NMS_COMMANDS_APP_H
#define ZK_NMS_COMMANDS_APP_H

#include <iosfwd>

#include "nms/wire/interrupts.h"

namespace zk::nms {

struct Surroundings {
  std::ostream& out;  // data only
  std::ostream& err;  // everything else
  Interrupts& interrupts;
};

// Returns the exit code; never throws.
int run(int argc, const char* const* argv, Surroundings surroundings);

}  // namespace zk::nms

#endif
