// Many clients at once, some of them badly behaved.
#include <csignal>
#include <cstdlib>
#include <fstream>

#include "tests/system/network.h"

namespace {

using zk::test::allWatching;
using zk::test::becomesTrue;
using zk::test::Changer;
using zk::test::Client;
using zk::test::counted;
using zk::test::labelsFromTo;
using zk::test::RunningAgent;

// A sanitizer keeps books of its own, which grow with all that a process did.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool memoryTells = false;
#else
constexpr bool memoryTells = true;
#endif

// A client that asks for its events by pull and never fetches one.
class NeverFetching {
 public:
  explicit NeverFetching(emsSession::EmsSession_I_ptr session) {
    CosNotifyChannelAdmin::EventChannel_var channel;
    session->getEventChannel(channel.out());
    const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
    CosNotifyChannelAdmin::ProxyID id = 0;
    const CosNotifyChannelAdmin::ProxySupplier_var proxy =
        admin->obtain_notification_pull_supplier(CosNotifyChannelAdmin::SEQUENCE_EVENT, id);
    proxy_ = CosNotifyChannelAdmin::SequenceProxyPullSupplier::_narrow(proxy.in());
    proxy_->connect_sequence_pull_consumer(CosNotifyComm::SequencePullConsumer::_nil());
  }

 private:
  CosNotifyChannelAdmin::SequenceProxyPullSupplier_var proxy_;
};

long residentKiB(const std::string& pid) {
  std::ifstream status("/proc/" + pid + "/status");
  std::string word;
  while (status >> word) {
    long kib = 0;
    if (word == "VmRSS:" && status >> kib) {
      return kib;
    }
  }
  return 0;
}

class Crowd : public testing::Test {
 protected:
  void start(int count) {
    for (int i = 0; i < count; ++i) {
      std::vector<std::string> arguments = {"events", "--timeout", "200"};
      if (i % 2 != 0) {
        arguments.emplace_back("--pull");
      }
      if (i % 4 == 0) {
        arguments.emplace_back("--structured");
      }
      clients.push_back(std::make_unique<Client>(agent, "client" + std::to_string(i), arguments));
    }
  }

  // Every client but the odd ones has seen these changes, once and in order.
  void expectSeen(int upTo, std::size_t firstHealthy) {
    for (std::size_t i = firstHealthy; i < clients.size(); ++i) {
      Client& each = *clients[i];
      EXPECT_TRUE(becomesTrue([&] { return counted(each).size() >= labelsFromTo(1, upTo).size(); }))
          << i << " saw " << counted(each).size();
      EXPECT_EQ(counted(each), labelsFromTo(1, upTo)) << i;
    }
  }

  RunningAgent agent;
  std::vector<std::unique_ptr<Client>> clients;
};

TEST_F(Crowd, everyHealthyClientSeesEveryEventOnceAndInOrder) {
  const auto process =
      agent.start({"--max-events", "500", "--consumer-timeout", "2", "--consumer-retry", "4"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  constexpr std::size_t odd = 2;
  start(32 + odd);
  Changer changer(agent);
  const NeverFetching never(changer.session());
  ASSERT_TRUE(allWatching(changer, clients));

  clients[0]->process().signal(SIGSTOP);  // hangs, and takes events no more
  clients[1]->process().signal(SIGKILL);  // gone without a word
  changer.change(1, 300);
  expectSeen(300, odd);

  // By now whatever fills up has filled up: a further round takes no more memory.
  changer.change(301, 900);
  expectSeen(900, odd);
  const long before = residentKiB(process->id());
  changer.change(901, 1500);
  expectSeen(1500, odd);
  const long grown = residentKiB(process->id()) - before;
  if (memoryTells) {
    EXPECT_LT(grown, 4096) << "KiB, from " << before;
  }
  RecordProperty("residentKiB", std::to_string(before));
  RecordProperty("grownKiB", std::to_string(grown));

  clients[0]->process().signal(SIGCONT);
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
}

}  // namespace
