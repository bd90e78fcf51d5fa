// What may happen to a message on its way, or be done to it. For one thread.
#ifndef ZK_TESTS_RELIABILITY_MUTATOR_H
#define ZK_TESTS_RELIABILITY_MUTATOR_H

#include <string>

#include "tests/reliability/run.h"

namespace zk::test {

class Mutator {
 public:
  explicit Mutator(Chance& chance) : chance_(chance) {}

  // The message, of at least a header, changed in one to three ways; other is a
  // second one to take parts from. The result may be several messages in a row.
  std::string mutated(std::string message, const std::string& other);

  // The same message in fragments, some of them damaged, late, missing, or with
  // others between them.
  std::string fragmented(const std::string& message, const std::string& other);

  // A CancelRequest for it before, after, or in the midst of it.
  std::string cancelled(const std::string& message);

 private:
  void flipBits(std::string& message);
  void cut(std::string& message);
  void splice(std::string& message, const std::string& other);
  void setLength(std::string& message);
  void setKind(std::string& message);
  void setHeader(std::string& message);
  void insertOrErase(std::string& message);
  void repeat(std::string& message);
  void putNumber(std::string& message, std::uint32_t value);
  std::string cancelOf(const std::string& message);

  Chance& chance_;
};

}  // namespace zk::test

#endif
