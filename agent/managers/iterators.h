// The iterators of the interface, one servant over every kind of list, and the
// first answer of a list operation: its entries, and an iterator for the rest.
#ifndef ZK_AGENT_MANAGERS_ITERATORS_H
#define ZK_AGENT_MANAGERS_ITERATORS_H

#include <algorithm>
#include <memory>
#include <mutex>

#include "agent/managers/openiterators.h"
#include "agent/managers/pagedlist.h"
#include "agent/tmf/errors.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

struct NameIteration {
  using Skeleton = POA_globaldefs::NamingAttributesIterator_I;
  using Interface = globaldefs::NamingAttributesIterator_I;
  using Iterator_out = globaldefs::NamingAttributesIterator_I_out;
  using List = globaldefs::NamingAttributesList_T;
  using List_var = globaldefs::NamingAttributesList_T_var;
  using List_out = globaldefs::NamingAttributesList_T_out;
};

struct ElementIteration {
  using Skeleton = POA_managedElement::ManagedElementIterator_I;
  using Interface = managedElement::ManagedElementIterator_I;
  using Iterator_out = managedElement::ManagedElementIterator_I_out;
  using List = managedElement::ManagedElementList_T;
  using List_var = managedElement::ManagedElementList_T_var;
  using List_out = managedElement::ManagedElementList_T_out;
};

struct SubnetworkIteration {
  using Skeleton = POA_multiLayerSubnetwork::SubnetworkIterator_I;
  using Interface = multiLayerSubnetwork::SubnetworkIterator_I;
  using Iterator_out = multiLayerSubnetwork::SubnetworkIterator_I_out;
  using List = multiLayerSubnetwork::SubnetworkList_T;
  using List_var = multiLayerSubnetwork::SubnetworkList_T_var;
  using List_out = multiLayerSubnetwork::SubnetworkList_T_out;
};

struct LinkIteration {
  using Skeleton = POA_topologicalLink::TopologicalLinkIterator_I;
  using Interface = topologicalLink::TopologicalLinkIterator_I;
  using Iterator_out = topologicalLink::TopologicalLinkIterator_I_out;
  using List = topologicalLink::TopologicalLinkList_T;
  using List_var = topologicalLink::TopologicalLinkList_T_var;
  using List_out = topologicalLink::TopologicalLinkList_T_out;
};

struct MapObjectIteration {
  using Skeleton = POA_topologyMap::MapObjectIterator_I;
  using Interface = topologyMap::MapObjectIterator_I;
  using Iterator_out = topologyMap::MapObjectIterator_I_out;
  using List = topologyMap::MapObjectList_T;
  using List_var = topologyMap::MapObjectList_T_var;
  using List_out = topologyMap::MapObjectList_T_out;
};

struct EventIteration {
  using Skeleton = POA_notifications::EventIterator_I;
  using Interface = notifications::EventIterator_I;
  using Iterator_out = notifications::EventIterator_I_out;
  using List = notifications::EventList_T;
  using List_var = notifications::EventList_T_var;
  using List_out = notifications::EventList_T_out;
};

// What the lists of one session share.
struct Paging {
  std::shared_ptr<OpenIterators> iterators;
  CORBA::ULong page = 0;  // the most entries in one answer
};

// Lives until the client destroys it, it is idle for too long, or its session
// ends; having handed out its last entry does not end it.
template <class Kind>
class IteratorServant : public virtual Kind::Skeleton,
                        public virtual PortableServer::RefCountServantBase {
 public:
  using Source = std::shared_ptr<Cursor<typename Kind::List>>;

  IteratorServant(Source source, Paging paging)
      : source_(std::move(source)), paging_(std::move(paging)) {}

  // Called once, before any client knows the iterator.
  void setTicket(OpenIterators::Ticket ticket) { ticket_ = ticket; }

  CORBA::Boolean next_n(CORBA::ULong howMany, typename Kind::List_out out) override {
    if (howMany == 0) {
      throw refusal(globaldefs::EXCPT_INVALID_INPUT, "how_many must be at least 1");
    }
    return guarded("next_n", [&] {
      const InUse use(*this);
      const CORBA::ULong most = std::min(howMany, paging_.page);
      typename Kind::List_var list = new typename Kind::List(most);
      const bool more = source_->take(most, list.inout());
      out = list._retn();
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
template <class Kind>
void answerList(PagedList<typename Kind::List> list, CORBA::ULong howMany, const Paging& paging,
                typename Kind::List_out out, typename Kind::Iterator_out iterator) {
  auto cursor = std::make_shared<Cursor<typename Kind::List>>(std::move(list));
  const CORBA::ULong most =
      std::min({howMany, paging.page, static_cast<CORBA::ULong>(cursor->length())});
  typename Kind::List_var first = new typename Kind::List(most);
  if (!cursor->take(most, first.inout())) {
    out = first._retn();
    iterator = Kind::Interface::_nil();
    return;
  }
  auto* const servant = new IteratorServant<Kind>(cursor, paging);
  const PortableServer::ServantBase_var owner = servant;
  OpenIterators::Ticket ticket = 0;
  const CORBA::Object_var reference = paging.iterators->open(servant, ticket);
  servant->setTicket(ticket);
  iterator = Kind::Interface::_narrow(reference.in());
  out = first._retn();
}

}  // namespace zk::agent

#endif
