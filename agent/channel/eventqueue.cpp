#include "agent/channel/eventqueue.h"

#include <algorithm>
#include <chrono>
#include <utility>


namespace zk::agent {

namespace {

using CosNotification::StructuredEvent;
using std::chrono::milliseconds;

// The cache makes a whole list for each that is taken: while events come one by
// one, they are left to gather for a moment.
constexpr milliseconds gathering{5};
constexpr CORBA::ULong longList = 100;

// Between looks for an event that the cache's thread has not put into its list.
constexpr milliseconds firstLook{1};
constexpr milliseconds lastLook{20};
// The cache's thread needs microseconds; a machine that is short of time, more.
constexpr milliseconds arrival{1000};

}  // namespace

EventQueue::EventQueue(std::shared_ptr<Gate> gate, std::shared_ptr<ListSource> source)
    : gate_(std::move(gate)), source_(std::move(source)) {}

CORBA::ULong EventQueue::take(CORBA::ULong most, Batch& batch) {
  const std::lock_guard<std::mutex> guard(mutex_);
  const CORBA::ULong before = batch.length();
  CORBA::ULong filled = before;
  while (filled < most) {
    const Gate::Run run = gate_->next(most - filled);
    Kept& kept = kept_[indexOf(run.kind)];
    if (run.length == 0 || (kept.left() == 0 && !refill(run.kind))) {
      break;
    }
    const CORBA::ULong count = std::min(run.length, kept.left());
    if (filled == 0 && handOverWhole(kept, count, batch)) {
      return count;
    }
    if (filled == before) {
      most = std::min(most, filled + static_cast<CORBA::ULong>(gate_->waiting()));
      batch.length(most);  // at once: each growth copies
    }
    for (CORBA::ULong i = 0; i < count; ++i) {
      batch[filled++] = (*kept.list)[kept.at++];
    }
    gate_->fetched(count);
    if (kept.left() == 0) {
      kept.list.reset();
    }
  }
  batch.length(filled);
  return filled - before;
}

bool EventQueue::refill(EventKind kind) {
  Kept& kept = kept_[indexOf(kind)];
  const auto now = Clock::now();
  if (now < kept.nextAt) {
    return false;
  }
  kept.list = source_->takeList(kind);
  kept.at = 0;
  kept.nextAt = kept.left() != 0 && kept.left() < longList ? now + gathering : now;
  return kept.left() != 0;
}

// A whole list becomes the batch without a copy.
bool EventQueue::handOverWhole(Kept& kept, CORBA::ULong length, Batch& batch) {
  if (kept.at != 0 || length != kept.list->length()) {
    return false;
  }
  const CORBA::ULong maximum = kept.list->maximum();
  StructuredEvent* const buffer = kept.list->get_buffer(true);
  if (buffer == nullptr) {
    return false;
  }
  batch.replace(maximum, length, buffer, true);
  kept.list.reset();
  gate_->fetched(length);
  return true;
}

CORBA::ULong EventQueue::fetch(CORBA::ULong most, Batch& batch, Clock::time_point until,
                               CORBA::ULong atLeast) {
  batch.length(0);
  milliseconds look = firstLook;
  const auto arrived = Clock::now() + arrival;
  while (!gate_->isClosed()) {
    take(most, batch);
    const auto now = Clock::now();
    const bool coming = gate_->waiting() != 0;
    if (batch.length() >= atLeast || (now >= until && !(coming && now < arrived))) {
      return batch.length();
    }
    if (coming) {
      gate_->pause(look);
      look = std::min(look * 2, lastLook);
    } else {
      gate_->awaitEvents(until);
      look = firstLook;
    }
  }
  batch.length(0);
  return 0;
}

}  // namespace zk::agent
