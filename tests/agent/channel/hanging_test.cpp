// Consumers that take the connection, and then their time: over real connections,
// whose other end the test is.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/agent/channel/support/clients.h"

namespace {

using namespace zk::test;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds CALL_LIMIT{400};

zk::agent::ChannelSettings impatient() {
  zk::agent::ChannelSettings settings = quickSettings();
  settings.callLimit = CALL_LIMIT;
  settings.retryFor = std::chrono::minutes(10);
  return settings;
}

// Connections to it are made, and never read from.
class DeafListener {
 public:
  DeafListener() : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    auto* const bound = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(socket_, bound, length), 0);
    EXPECT_EQ(listen(socket_, 100), 0);
    EXPECT_EQ(getsockname(socket_, bound, &length), 0);
    port_ = ntohs(address.sin_port);
  }
  ~DeafListener() { close(socket_); }
  DeafListener(const DeafListener&) = delete;
  DeafListener& operator=(const DeafListener&) = delete;

  CosNotifyComm::StructuredPushConsumer_var consumer() const {
    int count = 0;
    const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
    const std::string where = "corbaloc:iiop:127.0.0.1:" + std::to_string(port_) + "/consumer";
    const CORBA::Object_var object = orb->string_to_object(where.c_str());
    return CosNotifyComm::StructuredPushConsumer::_unchecked_narrow(object.in());
  }

  // Whether somebody has called.
  bool isCalled() const {
    const int connection = accept4(socket_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (connection >= 0) {
      connections_.push_back(connection);
    }
    return connection >= 0;
  }

 private:
  const int socket_;
  unsigned short port_ = 0;
  mutable std::vector<int> connections_;
};

class Hanging : public testing::Test {
 protected:
  explicit Hanging(const zk::agent::ChannelSettings& settings = impatient()) : local(settings) {}

  // A consumer of the other session that hangs in a call.
  CosNotifyChannelAdmin::StructuredProxyPushSupplier_var hang() {
    const CosNotifyChannelAdmin::EventChannel_var channel = other->reference();
    const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
    auto proxy = local.push<CosNotifyChannelAdmin::StructuredProxyPushSupplier>(
        CosNotifyChannelAdmin::STRUCTURED_EVENT, admin.in());
    proxy->connect_structured_push_consumer(deaf.consumer().in());
    return proxy;
  }

  DeafListener deaf;
  LocalChannel local;
  std::shared_ptr<zk::agent::SessionChannel> other =
      local.service.open(LocalChannel::OTHER, local.home, local.losses);
};

TEST_F(Hanging, consumersDelayNeitherOthersNorTheStop) {
  StructuredPush structured(local);
  SequencePush sequence(local);
  for (int i = 0; i < 16; ++i) {
    hang();
  }
  structured.connect();
  sequence.connect();
  sendNumbers(1, 1);
  ASSERT_TRUE(becomesTrue([&] { return deaf.isCalled(); }));
  const auto start = Clock::now();
  sendNumbers(2, 100);
  EXPECT_TRUE(receives(structured, numbers(1, 100)));
  EXPECT_TRUE(receives(sequence, numbers(1, 100)));
  EXPECT_LT(Clock::now() - start, 5 * CALL_LIMIT);
  const auto stopping = Clock::now();
  local.service.stop();
  EXPECT_LT(Clock::now() - stopping, 5 * CALL_LIMIT);
}

// Answers after a while, for each event again.
TEST_F(Hanging, answersDelayNeitherOthersNorTheStop) {
  StructuredPush slow(local);
  StructuredPush quick(local);
  slow.consumer->onPush = [] { std::this_thread::sleep_for(CALL_LIMIT / 4); };
  slow.connect();
  quick.connect();
  const auto start = Clock::now();
  sendNumbers(1, 1000);
  EXPECT_TRUE(receives(quick, numbers(1, 1000)));
  EXPECT_LT(Clock::now() - start, 10 * CALL_LIMIT);
  const auto stopping = Clock::now();
  local.service.stop();
  EXPECT_LT(Clock::now() - stopping, 5 * CALL_LIMIT);
  EXPECT_LT(slow.consumer->count(), 100U) << "it was slow indeed";
}

// Made, and let go of while the call lasts, again and again.
// Few threads, and calls that hang until all of them do.
zk::agent::ChannelSettings patient() {
  zk::agent::ChannelSettings settings = impatient();
  settings.callLimit = milliseconds(3000);
  settings.threads = 8;
  return settings;
}

class HangingLong : public Hanging {
 protected:
  HangingLong() : Hanging(patient()) {}
};

TEST_F(HangingLong, consumersHaveSoManyThreadsAndNoMore) {
  const std::size_t most = other->parts().settings.threads;
  StructuredPush witness(local);
  witness.connect();
  std::size_t made = 0;
  bool refused = false;
  for (; !refused && made < 2 * most; ++made) {
    try {
      const auto proxy = hang();
      sendNumbers(1, 1);
      ASSERT_TRUE(becomesTrue([&] { return witness.consumer->count() == made + 1; }));
      proxy->disconnect_structured_push_supplier();
    } catch (const CORBA::NO_RESOURCES&) {
      refused = true;
    }
    EXPECT_LE(other->parts().threads->running(), most);
  }
  EXPECT_TRUE(refused);
  EXPECT_TRUE(becomesTrue([&] { return other->parts().threads->running() == 0; }));
  hang();
}

}  // namespace
