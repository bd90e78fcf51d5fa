#include "agent/channel/proxy.h"

#include <utility>

#include "agent/base/log.h"
#include "agent/channel/clientids.h"
#include "agent/channel/pusher.h"

namespace zk::agent {

namespace {

using CosNotifyChannelAdmin::ProxyType;
using Guard = std::lock_guard<std::mutex>;

std::shared_ptr<Gate> makeGate(const ChannelParts& parts, const Admin& admin, long number,
                               std::shared_ptr<Selection> own, std::shared_ptr<Qos> qos) {
  auto isAdmitted = [first = admin.selection, second = std::move(own),
                     how = admin.combination](const CosNotification::StructuredEvent& event) {
    return admits(*first, *second, how, event);
  };
  auto limit = [kept = std::move(qos)] { return kept->limit(); };
  return std::make_shared<Gate>(number, std::move(isAdmitted), std::move(limit), parts.losses);
}

void tryFarewell(const std::function<void()>& farewell) {
  try {
    farewell();
  } catch (const CORBA::Exception&) {
    // It is gone already, which is as good.
  }
}

}  // namespace

Proxy::Proxy(std::shared_ptr<const ChannelParts> parts, std::shared_ptr<Admin> admin, long number,
             ProxyType type, GivenUp givenUp)
    : parts_(std::move(parts)),
      admin_(std::move(admin)),
      number_(number),
      type_(type),
      givenUp_(std::move(givenUp)),
      selection_(std::make_shared<Selection>(parts_->settings)),
      qos_(std::make_shared<Qos>(admin_->qos.values(), Admin::mostOf(parts_->settings))),
      gate_(makeGate(*parts_, *admin_, number_, selection_, qos_)) {}

bool Proxy::isPush() const {
  return type_ == CosNotifyChannelAdmin::PUSH_STRUCTURED ||
         type_ == CosNotifyChannelAdmin::PUSH_SEQUENCE;
}

void Proxy::connect(std::function<void()> farewell) {
  if (state_ == State::Connected) {
    throw CosEventChannelAdmin::AlreadyConnected();
  }
  if (state_ == State::Closed) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  client_ =
      std::make_shared<CacheClient>(parts_->cache, clientIdOf(parts_->session, number_), gate_);
  queue_ = std::make_shared<EventQueue>(gate_, client_);
  farewell_ = std::move(farewell);
  state_ = State::Connected;
}

void Proxy::connectPush(const std::shared_ptr<PushTarget>& target) {
  const Guard guard(mutex_);
  connect(nullptr);
  if (!parts_->workers->start([self = shared_from_this(), target] { self->deliver(target); })) {
    client_->end();
    state_ = State::Closed;
    throw CORBA::NO_RESOURCES();
  }
  farewell_ = [target] { target->disconnect(); };
}

void Proxy::connectPull(std::function<void()> farewell) {
  const Guard guard(mutex_);
  connect(std::move(farewell));
}

// The push thread.
void Proxy::deliver(const std::shared_ptr<PushTarget>& target) {
  std::shared_ptr<EventQueue> queue;
  {
    const Guard guard(mutex_);
    queue = queue_;
  }
  Pusher pusher(gate_, queue, qos_, target, parts_->settings);
  Pusher::Step step = Pusher::Step::Again;
  while (step == Pusher::Step::Again) {
    step = pusher.step();
  }
  if (step == Pusher::Step::Failed) {
    givenUp_(number_, pusher.failure());
  }
}

void Proxy::checkConnected() const {
  if (state_ != State::Connected) {
    throw CosNotifyChannelAdmin::NotConnected();
  }
}

void Proxy::suspend() {
  const Guard guard(mutex_);
  checkConnected();
  if (gate_->isSuspended()) {
    throw CosNotifyChannelAdmin::ConnectionAlreadyInactive();
  }
  gate_->suspend(true);
}

void Proxy::resume() {
  const Guard guard(mutex_);
  checkConnected();
  if (!gate_->isSuspended()) {
    throw CosNotifyChannelAdmin::ConnectionAlreadyActive();
  }
  gate_->suspend(false);
}

CORBA::ULong Proxy::pull(CORBA::ULong most, CosNotification::EventBatch& batch, bool wait) {
  std::shared_ptr<EventQueue> queue;
  {
    const Guard guard(mutex_);
    if (state_ != State::Connected) {
      throw CosEventComm::Disconnected();
    }
    queue = queue_;
  }
  const auto until = wait ? Gate::Clock::time_point::max() : Gate::Clock::now();
  const CORBA::ULong count = queue->fetch(most, batch, until);
  if (count == 0 && gate_->isClosed()) {
    throw CosEventComm::Disconnected();
  }
  gate_->delivered(count);
  return count;
}

void Proxy::miss(const std::string& time) {
  const Guard guard(mutex_);
  if (state_ == State::Connected) {
    gate_->miss(time, "");
  }
}

void Proxy::close(Ending ending) {
  std::function<void()> farewell;
  std::shared_ptr<CacheClient> client;
  {
    const Guard guard(mutex_);
    state_ = State::Closed;
    farewell.swap(farewell_);
    client.swap(client_);
  }
  gate_->close();
  if (client) {
    client->end();
  }
  if (farewell && ending == Ending::ByAgent) {
    parts_->workers->start([farewell] { tryFarewell(farewell); });
  }
}

}  // namespace zk::agent
