// What a start needs of the system, asked for beforehand: what is missing later is
// hard to tell from other failures, which the libraries beneath report by their
// own lights.
#ifndef ZK_AGENT_NEEDS_H
#define ZK_AGENT_NEEDS_H

#include <stdexcept>
#include <string>

#include "agent/cli/options.h"

namespace zk::agent {

// Why the agent ends before it has begun: the status to exit with, and a line.
class CannotStart : public std::runtime_error {
 public:
  CannotStart(ExitStatus exitStatus, const std::string& text)
      : std::runtime_error(text), status(exitStatus) {}

  const ExitStatus status;
};

// More than a start takes, and what the first clients do; more clients need more.
class Needs {
 public:
  static constexpr int DESCRIPTORS = 32;
  static constexpr int THREADS = 8;
  static constexpr int MEBIBYTES = 64;
};

// Takes all that for a moment. Throws CannotStart, saying what there is too little
// of.
void demandNeeds();

}  // namespace zk::agent

#endif
