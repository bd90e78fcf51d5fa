// Many clients at once, some of them badly behaved.
#include <algorithm>
#include <climits>
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
constexpr bool MEMORY_TELLS = false;
#else
constexpr bool MEMORY_TELLS = true;
#endif

constexpr std::size_t ODD = 2;  // clients that behave badly come first
constexpr int HEALTHY = MEMORY_TELLS ? 32 : 8;
constexpr const char* BOUND = "500";  // events that may wait for a client
constexpr int STEP = 100;             // well below it

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
      std::vector<std::string> arguments = {"events", "--timeout", "500"};
      if (i % 2 != 0) {
        arguments.emplace_back("--pull");
      }
      if (i % 4 == 0) {
        arguments.emplace_back("--structured");
      }
      clients.push_back(std::make_unique<Client>(agent, "client" + std::to_string(i), arguments));
    }
  }

  // The slowest client sets the pace, so that none falls behind by more than a
  // step, however fast the machine is. Returns whether all healthy ones have seen
  // the changes; stops at the first that has not.
  bool changeAtTheirPace(Changer& changer, int from, int to) {
    for (int first = from; first <= to; first += STEP) {
      const int last = std::min(first + STEP - 1, to);
      changer.change(first, last);
      for (std::size_t i = ODD; i < clients.size(); ++i) {
        const auto isThere = [&] { return counted(*clients[i]).size() >= std::size_t(last); };
        if (!becomesTrue(isThere)) {
          ADD_FAILURE() << i << " saw " << counted(*clients[i]).size() << " of " << last;
          return false;
        }
      }
    }
    return true;
  }

  RunningAgent agent;
  std::vector<std::unique_ptr<Client>> clients;
};

TEST_F(Crowd, everyHealthyClientSeesEveryEventOnceAndInOrder) {
  const auto process =
      agent.start({"--max-events", BOUND, "--consumer-timeout", "2", "--consumer-retry", "4"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  start(HEALTHY + ODD);
  Changer changer(agent);
  const NeverFetching never(changer.session());
  ASSERT_TRUE(allWatching(changer, clients));

  clients[0]->process().signal(SIGSTOP);  // hangs, and takes events no more
  clients[1]->process().signal(SIGKILL);  // gone without a word

  // Fills whatever fills up: more changes than may wait for a client.
  int seen = 700;
  ASSERT_TRUE(changeAtTheirPace(changer, 1, seen));

  // What leaks grows in every stretch; an allocator that finds its size does not.
  constexpr int STRETCH = 200;
  long leastGrown = LONG_MAX;
  for (int stretch = 0; MEMORY_TELLS && stretch < 4; ++stretch) {
    const long before = residentKiB(process->id());
    ASSERT_TRUE(changeAtTheirPace(changer, seen + 1, seen + STRETCH));
    seen += STRETCH;
    leastGrown = std::min(leastGrown, residentKiB(process->id()) - before);
  }
  for (std::size_t i = ODD; i < clients.size(); ++i) {
    EXPECT_EQ(counted(*clients[i]), labelsFromTo(1, seen)) << i;
  }
  if (MEMORY_TELLS) {
    EXPECT_LT(leastGrown, STRETCH) << "KiB: an event that stays takes more than one";
  }
  RecordProperty("residentKiB", std::to_string(residentKiB(process->id())));
  RecordProperty("leastGrownKiB", std::to_string(leastGrown));

  clients[0]->process().signal(SIGCONT);
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
}

}  // namespace
