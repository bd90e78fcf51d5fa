#include "agent/channel/eventqueue.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "agent/channel/events.h"
#include "zk_quornex/messages/messagecach.h"

namespace zk::agent {

namespace {

// The cache's thread needs microseconds; a machine that is short of time, more.
constexpr std::chrono::seconds ARRIVAL{1};

// A sequence that grows by itself copies what it holds.
void grow(EventQueue::Batch& batch, CORBA::ULong length) {
  if (length > batch.maximum()) {
    EventQueue::Batch larger(length);
    larger.length(batch.length());
    for (CORBA::ULong i = 0; i < batch.length(); ++i) {
      NS_QUORCORBA::moveEvent(batch[i], larger[i]);
    }
    NS_QUORCORBA::moveSequence(larger, batch);
  }
  batch.length(length);
}

}  // namespace

EventQueue::EventQueue(std::shared_ptr<Gate> gate, std::shared_ptr<EventSource> source)
    : gate_(std::move(gate)), source_(std::move(source)) {}

EventQueue::Clock::time_point EventQueue::never() {
  return Clock::now() + std::chrono::hours(24 * 365 * 100);
}

CORBA::ULong EventQueue::fetch(CORBA::ULong most, Batch& batch, Clock::time_point until,
                               CORBA::ULong atLeast) {
  const auto arrived = Clock::now() + ARRIVAL;
  const MutexLock guard(mutex_);
  take(most, batch);
  while (batch.length() < atLeast && !gate_->isClosed()) {
    if (!awaitList(gate_->waiting() != 0 ? std::max(until, arrived) : until)) {
      break;
    }
    take(most, batch);
  }
  if (gate_->isClosed()) {
    batch.length(0);
  }
  return batch.length();
}

// Whether it is worth looking again.
bool EventQueue::awaitList(Clock::time_point until) {
  if (watched_) {
    return looked_.waitUntil(mutex_, until);
  }
  watched_ = true;
  mutex_.unlock();
  const EventSource::State state = source_->wait(until);
  mutex_.lock();
  watched_ = false;
  looked_.notifyAll();
  if (state == EventSource::State::OVER) {
    gate_->close();
  } else if (state == EventSource::State::MISSED) {
    gate_->lost(static_cast<CORBA::ULong>(source_->takeMissed()));
  }
  return state == EventSource::State::EVENTS || state == EventSource::State::MISSED;
}

// A list that fits becomes the batch as it is; what is left of a longer one is
// moved out later.
void EventQueue::take(CORBA::ULong most, Batch& batch) {
  while (batch.length() < most && (left() != 0 || refill())) {
    const CORBA::ULong before = batch.length();
    const CORBA::ULong count = std::min(left(), most - before);
    if (before == 0 && count == list_->length()) {
      NS_QUORCORBA::moveSequence(*list_, batch);
      list_.reset();
    } else {
      grow(batch, before + count);
      for (CORBA::ULong i = before; i < before + count; ++i) {
        NS_QUORCORBA::moveEvent((*list_)[at_++], batch[i]);
      }
    }
    gate_->fetched(count);
  }
}

bool EventQueue::refill() {
  list_.reset();
  if (watched_) {
    return false;
  }
  EventSource::State state = source_->wait(Clock::time_point());
  if (state == EventSource::State::MISSED) {
    gate_->lost(static_cast<CORBA::ULong>(source_->takeMissed()));
    state = source_->wait(Clock::time_point());
  }
  if (state != EventSource::State::EVENTS) {
    return false;
  }
  list_ = source_->takeList();
  at_ = 0;
  return left() != 0;
}

}  // namespace zk::agent
