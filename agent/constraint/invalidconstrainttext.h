// Why a constraint was refused.
#ifndef ZK_AGENT_CONSTRAINT_INVALIDCONSTRAINTTEXT_H
#define ZK_AGENT_CONSTRAINT_INVALIDCONSTRAINTTEXT_H

#include <cstddef>
#include <stdexcept>
#include <string>

namespace zk::agent {

// what() is one line of printable ASCII, whatever the constraint held.
class InvalidConstraintText : public std::runtime_error {
 public:
  // at: the offset, in bytes from 0, of what is wrong.
  InvalidConstraintText(const std::string& reason, std::size_t at)
      : std::runtime_error(reason + " at character " + std::to_string(at + 1)) {}
};

}  // namespace zk::agent

#endif
