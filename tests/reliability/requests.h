// Requests as clients send them, of every operation that there is, in every version
// and byte order of GIOP. For one thread.
#ifndef ZK_TESTS_RELIABILITY_REQUESTS_H
#define ZK_TESTS_RELIABILITY_REQUESTS_H

#include <string>
#include <vector>

#include "tests/agent/orb/messages.h"
#include "tests/reliability/run.h"

namespace zk::test {

// All operations' names, each once.
const std::vector<std::string>& operations();

// The id of every request made here.
inline constexpr std::uint32_t REQUEST_ID = 0x01020304;

class Requests {
 public:
  explicit Requests(Chance& chance) : chance_(chance) {}

  // A well-formed one with values by chance, in a form by chance.
  std::string make(const std::string& key, const std::string& operation);
  std::string make(const Form& form, const std::string& key, const std::string& operation);

  // set_qos with an Any that holds Anys, sequences or structs so many deep.
  std::string makeDeep(const std::string& key, std::size_t depth);

 private:
  Chance& chance_;
};

}  // namespace zk::test

#endif
