#include "messages/eventcopy.h"

#include <atomic>
#include <mutex>

namespace NS_QUORCORBA {

namespace {

using CosNotification::PropertySeq;
using CosNotification::StructuredEvent;

// Lets one thread at a time copy the values of an event. An ORB may count the
// users of every type under one mutex of the process, and then threads that
// copy at the same time put each other to sleep at every single value. A turn
// takes less than a microsecond, so the next thread waits for it awake, and
// sleeps only when the thread whose turn it is has lost its core.
class Turn {
 public:
  Turn() {
    for (int tries = 0; tries < MOST_TRIES; ++tries) {
      if (!taken_.load(std::memory_order_relaxed) && mutex_.try_lock()) {
        taken_.store(true, std::memory_order_relaxed);
        return;
      }
    }
    mutex_.lock();
    taken_.store(true, std::memory_order_relaxed);
  }
  ~Turn() {
    taken_.store(false, std::memory_order_relaxed);
    mutex_.unlock();
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  static constexpr int MOST_TRIES = 4000;

  static inline std::mutex mutex_;
  static inline std::atomic<bool> taken_{false};  // a hint: spares failing locks
};

void copyNames(const PropertySeq& from, PropertySeq& to) {
  const CORBA::ULong length = from.length();
  to.length(length);
  for (CORBA::ULong position = 0; position < length; ++position) {
    to[position].name = from[position].name;
  }
}

void copyValues(const PropertySeq& from, PropertySeq& to) {
  for (CORBA::ULong position = 0; position < from.length(); ++position) {
    to[position].value = from[position].value;
  }
}

template <class Sequence>
void moveSequence(Sequence& from, Sequence& to) {
  const CORBA::ULong maximum = from.maximum();
  const CORBA::ULong length = from.length();
  if (auto* buffer = from.get_buffer(true)) {
    to.replace(maximum, length, buffer, true);
  } else {
    to = from;
  }
}

}  // namespace

void copyEvent(const StructuredEvent& from, StructuredEvent& to) {
  to.header.fixed_header = from.header.fixed_header;
  copyNames(from.header.variable_header, to.header.variable_header);
  copyNames(from.filterable_data, to.filterable_data);
  const Turn turn;
  copyValues(from.header.variable_header, to.header.variable_header);
  copyValues(from.filterable_data, to.filterable_data);
  to.remainder_of_body = from.remainder_of_body;
}

void moveEvent(StructuredEvent& from, StructuredEvent& to) {
  CosNotification::FixedEventHeader& source = from.header.fixed_header;
  CosNotification::FixedEventHeader& target = to.header.fixed_header;
  target.event_type.domain_name = source.event_type.domain_name._retn();
  target.event_type.type_name = source.event_type.type_name._retn();
  target.event_name = source.event_name._retn();
  moveSequence(from.header.variable_header, to.header.variable_header);
  moveSequence(from.filterable_data, to.filterable_data);
  to.remainder_of_body = from.remainder_of_body;
}

}  // namespace NS_QUORCORBA
