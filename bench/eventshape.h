// The event that the benchmarks push, and the conditions they run under.
#ifndef ZK_BENCH_EVENTSHAPE_H
#define ZK_BENCH_EVENTSHAPE_H

#include <memory>
#include <vector>

#include "zk_quornex/messages/refcount.h"
#include "zk_quornex/platform/default/configuration.h"

#include "zk_quornex/idl/events.h"

namespace zk::bench {

using Event = NS_QUORCORBA::NXRefCountType<CosNotification::StructuredEvent>;

struct ReleaseEvent {
  void operator()(Event* event) const { event->release(); }
};
using HeldEvent = std::unique_ptr<Event, ReleaseEvent>;
using Lists = std::vector<std::unique_ptr<notifications::EventList_T>>;

// An attribute value change of a port, as a real agent sends it.
CosNotification::StructuredEvent makeEvent(int number);

// How the event holds its values, which decides what a copy costs. An ORB may
// keep a value just inserted as it is, and write it out for every copy; what has
// been copied once, as by an agent that keeps the notification it was given, is
// written out already.
enum class Values { COPIED, INSERTED };

HeldEvent makeHeldEvent(int number, Values values = Values::COPIED);

// Settings of the cache for all clients made from now on.
void configureCache(long cachesize, long eventlistsize);

// Cores, compiler, load and the event's shape, on standard output.
void printConditions();

}  // namespace zk::bench

#endif
