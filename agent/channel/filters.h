// The filter objects of one session: the constraints of each, and the objects that
// clients call. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_FILTERS_H
#define ZK_AGENT_CHANNEL_FILTERS_H

#include <cstddef>
#include <map>
#include <memory>

#include "agent/channel/settings.h"
#include "agent/constraint/constraint.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class SessionChannel;

// The constraints of one filter object. A change makes a new list, and events are
// held against the one that was there.
class ConstraintList {
 public:
  ConstraintList(const ChannelSettings& settings, DynamicAny::DynAnyFactory_ptr factory);

  // The changes are made in whole or not at all. They throw InvalidConstraint
  // with the first wrong one, ConstraintNotFound, and CORBA::IMP_LIMIT for more
  // constraints or event types than there may be. The caller owns the results.
  CosNotifyFilter::ConstraintInfoSeq* add(const CosNotifyFilter::ConstraintExpSeq& added);
  void modify(const CosNotifyFilter::ConstraintIDSeq& removed,
              const CosNotifyFilter::ConstraintInfoSeq& changed);
  void removeAll();

  CosNotifyFilter::ConstraintInfoSeq* get(const CosNotifyFilter::ConstraintIDSeq& ids) const;
  CosNotifyFilter::ConstraintInfoSeq* getAll() const;

  // Whether the event satisfies at least one: without constraints, none does.
  bool matches(const CosNotification::StructuredEvent& event) const;

 private:
  struct Entry {
    CosNotifyFilter::ConstraintExp expression;
    std::shared_ptr<const Constraint> constraint;
  };
  using Entries = std::map<CosNotifyFilter::ConstraintID, Entry>;

  Entry parse(const CosNotifyFilter::ConstraintExp& expression) const;
  std::shared_ptr<const Entries> current() const;

  const std::size_t mostConstraints_;
  const std::size_t mostEventTypes_;
  const DynamicAny::DynAnyFactory_var factory_;
  mutable Mutex mutex_;
  std::shared_ptr<const Entries> entries_ ZK_GUARDED_BY(mutex_) = std::make_shared<Entries>();
  CosNotifyFilter::ConstraintID lastId_ ZK_GUARDED_BY(mutex_) = 0;
};

// A filter object: what clients call, and what events are held against. It goes
// on filtering where it was added when the object itself is destroyed.
struct FilterObject {
  CosNotifyFilter::Filter_var reference;
  std::shared_ptr<ConstraintList> constraints;
};

class Filters {
 public:
  explicit Filters(std::shared_ptr<const ChannelParts> parts) : parts_(std::move(parts)) {}

  // Makes a filter object without constraints. Throws CORBA::IMP_LIMIT when the
  // session has as many as it may. The caller owns the result.
  CosNotifyFilter::Filter_ptr make(const std::shared_ptr<SessionChannel>& channel);

  // Throws BAD_PARAM for anything but a living filter of this session: what runs
  // in another process cannot be asked for every event.
  FilterObject find(CosNotifyFilter::Filter_ptr reference) const;

  // The object's end; an unknown ticket is fine.
  void close(ServantHome::Ticket ticket);
  void closeAll();

 private:
  const std::shared_ptr<const ChannelParts> parts_;
  mutable Mutex mutex_;
  std::map<ServantHome::Ticket, FilterObject> filters_ ZK_GUARDED_BY(mutex_);
};

// What clients make filter objects with. The caller owns a reference to the result.
PortableServer::Servant makeFilterFactory(std::shared_ptr<SessionChannel> channel);

}  // namespace zk::agent

#endif
