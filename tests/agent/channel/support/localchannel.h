// One session's channel in this process, called through references as an NMS
// would call it, over the library's own event cache.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_LOCALCHANNEL_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_LOCALCHANNEL_H

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <utility>

#include "agent/channel/eventservice.h"
#include "tests/agent/channel/support/consumers.h"
#include "tests/platform/waiting.h"
#include "tests/support/doubles.h"

namespace zk::test {

// Keeps "occurred time id" and "cleared".
class LossJournal : public zk::agent::LossListener {
 public:
  void lossOccurred(const std::string& time, const std::string& id) override {
    add("occurred " + time + " " + id);
  }
  void lossCleared(const std::string& time) override {
    EXPECT_FALSE(time.empty());
    add("cleared");
  }

  Ids lines() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return lines_;
  }
  bool becomes(const Ids& expected) const {
    return becomesTrue([&] { return lines() == expected; });
  }

  std::function<void()> onCall = [] {};

 private:
  void add(const std::string& line) {
    onCall();
    const std::lock_guard<std::mutex> guard(mutex_);
    lines_.push_back(line);
  }

  mutable std::mutex mutex_;
  Ids lines_;
};

// Patience for tests: failures are repeated at once and given up soon.
inline zk::agent::ChannelSettings quickSettings() {
  zk::agent::ChannelSettings settings;
  settings.firstRetry = std::chrono::milliseconds(1);
  settings.longestRetry = std::chrono::milliseconds(4);
  settings.retryFor = std::chrono::milliseconds(50);
  return settings;
}

inline PortableServer::POA_ptr rootAdapter() {
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  const CORBA::Object_var object = orb->resolve_initial_references("RootPOA");
  PortableServer::POA_var root = PortableServer::POA::_narrow(object.in());
  const PortableServer::POAManager_var manager = root->the_POAManager();
  manager->activate();
  return root._retn();
}

// One for all channels that are there at a time.
inline std::shared_ptr<zk::agent::SessionAdapter> sessionAdapter(PortableServer::POA_ptr root) {
  static std::weak_ptr<zk::agent::SessionAdapter> made;
  std::shared_ptr<zk::agent::SessionAdapter> adapter = made.lock();
  if (!adapter) {
    adapter = std::make_shared<zk::agent::SessionAdapter>(root);
    made = adapter;
  }
  return adapter;
}

class LocalChannel {
 public:
  static constexpr long SESSION = 7;
  static constexpr long OTHER = 8;  // alive, but not open

  explicit LocalChannel(const zk::agent::ChannelSettings& settings = quickSettings())
      : root_(rootAdapter()),
        service(settings,
                [this](long id) {
                  onValidity();
                  return (id == SESSION || id == OTHER) && alive;
                }),
        home(std::make_shared<zk::agent::ServantHome>(*adapter_, "")),
        losses(std::make_shared<LossJournal>()),
        session(service.open(SESSION, home, losses)),
        channel(session->reference()),
        admin(channel->default_consumer_admin()) {}

  ~LocalChannel() {
    service.stop();
    home->closeAll();
    consumers_->closeAll();
  }
  LocalChannel(const LocalChannel&) = delete;
  LocalChannel& operator=(const LocalChannel&) = delete;

  // A consumer that lives as long as this object.
  template <class Interface, class Servant>
  typename Interface::_var_type activate(Servant* servant) {
    const PortableServer::ServantBase_var owner = servant;
    zk::agent::ServantHome::Ticket ticket = 0;
    const CORBA::Object_var object = consumers_->open(servant, ticket);
    return Interface::_narrow(object.in());
  }

  // A new proxy of an admin, not connected.
  template <class Interface>
  typename Interface::_var_type push(CosNotifyChannelAdmin::ClientType type,
                                     CosNotifyChannelAdmin::ConsumerAdmin_ptr of) {
    CosNotifyChannelAdmin::ProxyID id = 0;
    const CosNotifyChannelAdmin::ProxySupplier_var proxy =
        of->obtain_notification_push_supplier(type, id);
    return Interface::_narrow(proxy.in());
  }
  template <class Interface>
  typename Interface::_var_type pull(CosNotifyChannelAdmin::ClientType type,
                                     CosNotifyChannelAdmin::ConsumerAdmin_ptr of) {
    CosNotifyChannelAdmin::ProxyID id = 0;
    const CosNotifyChannelAdmin::ProxySupplier_var proxy =
        of->obtain_notification_pull_supplier(type, id);
    return Interface::_narrow(proxy.in());
  }

  PortableServer::POA_var root_;
  std::shared_ptr<zk::agent::SessionAdapter> adapter_ = sessionAdapter(root_.in());
  std::shared_ptr<zk::agent::ServantHome> consumers_ =
      std::make_shared<zk::agent::ServantHome>(*adapter_, "");
  std::atomic<bool> alive{true};
  // Called by the cache for every client on every event.
  std::function<void()> onValidity = [] {};
  zk::agent::EventService service;
  std::shared_ptr<zk::agent::ServantHome> home;
  std::shared_ptr<LossJournal> losses;
  std::shared_ptr<zk::agent::SessionChannel> session;
  CosNotifyChannelAdmin::EventChannel_var channel;
  CosNotifyChannelAdmin::ConsumerAdmin_var admin;
};

}  // namespace zk::test

#endif
