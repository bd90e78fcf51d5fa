#include "agent/channel/pusher.h"

#include <algorithm>
#include <utility>

namespace zk::agent {

Pusher::Pusher(std::shared_ptr<Gate> gate, std::shared_ptr<EventQueue> queue,
               std::shared_ptr<Qos> qos, std::shared_ptr<PushTarget> target,
               const ChannelSettings& settings)
    : gate_(std::move(gate)),
      queue_(std::move(queue)),
      qos_(std::move(qos)),
      target_(std::move(target)),
      settings_(settings),
      batch_(new EventQueue::Batch) {}

Pusher::Step Pusher::step() {
  if (!gate_->awaitResumed()) {
    return Step::Closed;
  }
  return at_ < batch_->length() ? push() : collect();
}

Pusher::Step Pusher::collect() {
  at_ = 0;
  batch_ = new EventQueue::Batch;  // an idle client keeps no events
  if (!gate_->awaitEvents(Gate::Clock::time_point::max())) {
    return Step::Closed;
  }
  CORBA::ULong most = settings_.eventsPerCall;
  CORBA::ULong atLeast = 1;
  if (target_->takesBatches()) {
    most = static_cast<CORBA::ULong>(qos_->values().batch);
    if (qos_->pacing().count() != 0) {
      gate_->awaitEvents(Gate::Clock::now() + qos_->pacing(), most);
      atLeast = std::min(most, static_cast<CORBA::ULong>(gate_->waiting()));
    }
  }
  if (!gate_->isSuspended()) {
    queue_->fetch(most, batch_.inout(), Gate::Clock::now(), atLeast);
  }
  return Step::Again;
}

Pusher::Step Pusher::push() {
  try {
    const CORBA::ULong pushed = target_->push(batch_.in(), at_);
    at_ += pushed;
    gate_->delivered(pushed);
    retry_ = std::chrono::milliseconds(0);
    return Step::Again;
  } catch (const CORBA::OBJECT_NOT_EXIST& gone) {
    return giveUp(gone._name());
  } catch (const CORBA::INV_OBJREF& wrong) {
    return giveUp(wrong._name());
  } catch (const CORBA::BAD_OPERATION& wrong) {
    return giveUp(wrong._name());
  } catch (const CORBA::NO_IMPLEMENT& wrong) {
    return giveUp(wrong._name());
  } catch (const CORBA::SystemException& failure) {
    return retryLater(failure._name());
  } catch (const CORBA::Exception& refused) {
    return giveUp(refused._name());  // Disconnected
  }
}

Pusher::Step Pusher::giveUp(const std::string& why) {
  failure_ = why;
  return Step::Failed;
}

Pusher::Step Pusher::retryLater(const std::string& why) {
  const auto now = Gate::Clock::now();
  if (retry_.count() == 0) {
    retry_ = settings_.firstRetry;
    failingSince_ = now;
  } else if (now - failingSince_ >= settings_.retryFor) {
    return giveUp(why + ", again and again for too long");
  } else {
    retry_ = std::min(retry_ * 2, settings_.longestRetry);
  }
  gate_->pause(retry_);
  return Step::Again;
}

}  // namespace zk::agent
