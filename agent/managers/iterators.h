// Answers that are handed out page by page: the iterators of the interface, one
// servant over every kind of list, and the first answer of a list operation: its
// entries, and an iterator for the rest.
#ifndef ZK_AGENT_MANAGERS_ITERATORS_H
#define ZK_AGENT_MANAGERS_ITERATORS_H

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "agent/orb/servanthome.h"
#include "agent/tmf/errors.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// The answer to a query: how many entries there were when it was asked, and how to
// fetch some of them now.
template <class List>
struct PagedList {
  std::size_t length = 0;
  // Appends the entries [from, from + count) that are still there. Called with a
  // range within length, by one thread at a time.
  std::function<void(std::size_t from, std::size_t count, List& out)> append;
};

// A place in such an answer. Safe on any thread; each entry is handed out once.
template <class List>
class Cursor {
 public:
  explicit Cursor(PagedList<List> list) : list_(std::move(list)) {}

  // Appends up to count further entries to out: fewer only when no more are
  // left, for entries that are gone by now are passed over. Returns whether more
  // remain. What fetching throws leaves the place as it was.
  bool take(std::size_t count, List& out) {
    const MutexLock lock(mutex_);
    const std::size_t wanted = out.length() + count;
    std::size_t next = next_;
    while (out.length() < wanted && next < list_.length) {
      const std::size_t step = std::min(wanted - out.length(), list_.length - next);
      list_.append(next, step, out);
      next += step;
    }
    next_ = next;
    return next_ < list_.length;
  }

  // Entries of the whole answer, those already handed out included.
  std::size_t length() const { return list_.length; }

 private:
  const PagedList<List> list_;
  Mutex mutex_;
  std::size_t next_ ZK_GUARDED_BY(mutex_) = 0;
};

// What bounds a client's use of lists.
struct ListLimits {
  // Open iterators of one session; a further query that needs one is refused.
  std::size_t iterators = 20;
  // An iterator that nobody has used for this long is destroyed.
  std::chrono::seconds iteratorIdle{900};
  // The most entries in one answer, whatever the client asks for. With records
  // of a few hundred bytes this stays well below the 2 MiB that ORBs accept in
  // one message by default.
  std::uint32_t page = 1000;
};

// The clock that idle times are measured by; tests put their own in its place.
using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

// The open iterators of one session: a bounded number, and those that nobody uses
// any more are destroyed. Safe on any thread.
class OpenIterators {
 public:
  using Ticket = ServantHome::Ticket;

  OpenIterators(std::shared_ptr<ServantHome> home, const ListLimits& limits, SteadyClock clock);

  // Makes an iterator reachable. Throws Refusal, too many open iterators, when
  // the session has as many as it may. The caller owns the result.
  CORBA::Object_ptr open(PortableServer::Servant iterator, Ticket& ticket);
  // Notes that the iterator was used now.
  void touch(Ticket ticket);
  void close(Ticket ticket);

  // Destroys those idle for longer than allowed; returns how many.
  std::size_t reap();

 private:
  const std::shared_ptr<ServantHome> home_;
  const std::size_t most_;
  const std::chrono::seconds idle_;
  const SteadyClock clock_;
  Mutex mutex_;
  std::map<Ticket, std::chrono::steady_clock::time_point> lastUse_ ZK_GUARDED_BY(mutex_);
};

// The skeleton and the interface of the iterator over a list.
template <class List>
struct IteratorOf;

template <class SkeletonType, class InterfaceType>
struct IteratorTypes {
  using Skeleton = SkeletonType;
  using Interface = InterfaceType;
};

template <>
struct IteratorOf<globaldefs::NamingAttributesList_T>
    : IteratorTypes<POA_globaldefs::NamingAttributesIterator_I,
                    globaldefs::NamingAttributesIterator_I> {};
template <>
struct IteratorOf<managedElement::ManagedElementList_T>
    : IteratorTypes<POA_managedElement::ManagedElementIterator_I,
                    managedElement::ManagedElementIterator_I> {};
template <>
struct IteratorOf<multiLayerSubnetwork::SubnetworkList_T>
    : IteratorTypes<POA_multiLayerSubnetwork::SubnetworkIterator_I,
                    multiLayerSubnetwork::SubnetworkIterator_I> {};
template <>
struct IteratorOf<topologicalLink::TopologicalLinkList_T>
    : IteratorTypes<POA_topologicalLink::TopologicalLinkIterator_I,
                    topologicalLink::TopologicalLinkIterator_I> {};
template <>
struct IteratorOf<topologyMap::MapObjectList_T>
    : IteratorTypes<POA_topologyMap::MapObjectIterator_I, topologyMap::MapObjectIterator_I> {};
template <>
struct IteratorOf<notifications::EventList_T>
    : IteratorTypes<POA_notifications::EventIterator_I, notifications::EventIterator_I> {};

// How next_n gives a list: the type of its parameter.
template <class Iterator, class List>
List secondParameter(CORBA::Boolean (Iterator::*)(CORBA::ULong, List));

// What the lists of one session share.
struct Paging {
  std::shared_ptr<OpenIterators> iterators;
  CORBA::ULong page = 0;  // the most entries in one answer
};

// Lives until the client destroys it, it is idle for too long, or its session
// ends; having handed out its last entry does not end it.
template <class List>
class IteratorServant : public virtual IteratorOf<List>::Skeleton,
                        public virtual PortableServer::RefCountServantBase {
 public:
  using Source = std::shared_ptr<Cursor<List>>;
  using List_out = decltype(secondParameter(&IteratorOf<List>::Skeleton::next_n));

  IteratorServant(Source source, Paging paging)
      : source_(std::move(source)), paging_(std::move(paging)) {}

  // Called once, before any client knows the iterator.
  void setTicket(OpenIterators::Ticket ticket) { ticket_ = ticket; }

  CORBA::Boolean next_n(CORBA::ULong howMany, List_out out) override {
    if (howMany == 0) {
      throw refusal(globaldefs::EXCPT_INVALID_INPUT, "how_many must be at least 1");
    }
    return refusingFailures("next_n", [&] {
      const InUse use(*this);
      const CORBA::ULong most = std::min(howMany, paging_.page);
      auto list = std::make_unique<List>(most);
      const bool more = source_->take(most, *list);
      out = list.release();
      return static_cast<CORBA::Boolean>(more);
    });
  }

  CORBA::ULong getLength() override {
    const InUse use(*this);
    return static_cast<CORBA::ULong>(source_->length());
  }

  void destroy() override { paging_.iterators->close(ticket_); }

 private:
  // A call counts as use from its start to its end, so that a slow one is not
  // taken for idleness.
  struct InUse {
    explicit InUse(IteratorServant& servant) : servant_(servant) { touch(); }
    ~InUse() { touch(); }
    void touch() { servant_.paging_.iterators->touch(servant_.ticket_); }
    IteratorServant& servant_;
  };

  const Source source_;
  const Paging paging_;
  OpenIterators::Ticket ticket_ = 0;
};

// Answers a list operation: up to howMany entries, and a nil iterator when that
// was all. Throws Refusal when the rest needs an iterator that the session may
// not have.
template <class List, class ListOut, class IteratorOut>
void answerList(PagedList<List> list, CORBA::ULong howMany, const Paging& paging, ListOut out,
                IteratorOut iterator) {
  using Interface = typename IteratorOf<List>::Interface;
  auto cursor = std::make_shared<Cursor<List>>(std::move(list));
  const CORBA::ULong most =
      std::min({howMany, paging.page, static_cast<CORBA::ULong>(cursor->length())});
  auto first = std::make_unique<List>(most);
  if (!cursor->take(most, *first)) {
    out = first.release();
    iterator = Interface::_nil();
    return;
  }
  auto* const servant = new IteratorServant<List>(cursor, paging);
  const PortableServer::ServantBase_var owner = servant;
  OpenIterators::Ticket ticket = 0;
  const CORBA::Object_var reference = paging.iterators->open(servant, ticket);
  servant->setTicket(ticket);
  iterator = Interface::_narrow(reference.in());
  out = first.release();
}

}  // namespace zk::agent

#endif
