// The program itself, as a process of its own, and an agent for it to talk to.
#ifndef ZK_TESTS_NMS_SUPPORT_PROGRAM_H
#define ZK_TESTS_NMS_SUPPORT_PROGRAM_H

#include <gtest/gtest.h>
#include <json/reader.h>

#include <sstream>

#include "tests/nms/support/fakeagent.h"
#include "tests/nms/support/process.h"
#include "tests/platform/waiting.h"

namespace zk::test {

using Arguments = std::vector<std::string>;

class Program : public testing::Test {
 protected:
  // So that the agent, which waits for its calls to end, can end.
  void TearDown() override { gate_.open(); }

  Arguments argv(const Arguments& arguments) const {
    network_.handOver();
    Arguments result = {ZK_NMS_PROGRAM, "--agent", reference_.path()};
    result.insert(result.end(), arguments.begin(), arguments.end());
    return result;
  }

  Process::Environment login() const {
    return {{"ZK_NMS_USER", "admin"}, {"ZK_NMS_PASSWORD", "secret"}};
  }

  Ended run(const Arguments& arguments) const { return Process(argv(arguments), login()).wait(); }

  // The logout is a message that nobody answers, so it may arrive late.
  bool everybodyLoggedOut() {
    return eventually([this] { return network_.sessionsEnded == network_.logins; });
  }

  Gate gate_;  // outlives the servants that wait in it
  FakeNetwork network_;
  FakeAgent agent_{network_};
  TemporaryFile reference_{agent_.reference() + "\n"};
};

inline Json::Value json(const std::string& text) {
  Json::Value value;
  std::istringstream(text) >> value;
  return value;
}

}  // namespace zk::test

#endif
