// One thing at a time, watched by real clients.
#include <csignal>
#include <cstdlib>

#include "tests/system/network.h"

namespace {

using zk::test::allWatching;
using zk::test::becomesTrue;
using zk::test::Changer;
using zk::test::Client;
using zk::test::counted;
using zk::test::RunningAgent;

const int OWN_ENDPOINT = setenv("ORBendPoint", "giop:tcp:127.0.0.1:", 1);

class Watching : public testing::Test {
 protected:
  std::unique_ptr<Client> client(const std::vector<std::string>& arguments) {
    clients.push_back(
        std::make_unique<Client>(agent, "client" + std::to_string(clients.size()), arguments));
    return std::move(clients.back());
  }

  RunningAgent agent;
  std::vector<std::unique_ptr<Client>> clients;
};

TEST_F(Watching, filtersAreAppliedByTheAgent) {
  const auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  std::vector<std::unique_ptr<Client>> watching;
  watching.push_back(client({"events", "--timeout", "60", "--filter",
                             "'n-' ~ $.filterable_data(attributeList)('userLabel')"}));
  watching.push_back(client({"events", "--pull", "--timeout", "60", "--filter",
                             "$type_name == 'NT_ATTRIBUTE_VALUE_CHANGE'"}));
  auto refused = client({"events", "--filter", "$type_name =="});
  EXPECT_EQ(refused->process().waitForEnd().value_or(-1), 1) << refused->output();
  Changer changer(agent);
  EXPECT_TRUE(allWatching(changer, watching));
}

TEST_F(Watching, clientsComeBackToAnAgentThatStartsAgain) {
  auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  std::vector<std::unique_ptr<Client>> watching;
  watching.push_back(client({"events", "--timeout", "120"}));
  watching.push_back(client({"events", "--pull", "--timeout", "120"}));
  {
    Changer changer(agent);
    ASSERT_TRUE(allWatching(changer, watching));
    changer.change(1, 3);
    for (const auto& each : watching) {
      EXPECT_TRUE(becomesTrue([&] { return counted(*each).size() == 3; })) << each->output();
    }
  }
  process->signal(SIGTERM);
  ASSERT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
  process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  Changer changer(agent);
  int number = 4;
  for (const auto& each : watching) {
    EXPECT_TRUE(becomesTrue([&] {
      changer.change(number, number);
      ++number;
      return counted(*each).size() > 3;
    })) << each->output();
    EXPECT_NE(each->output().find("may be missing"), std::string::npos) << each->output();
  }
}

}  // namespace
