// The constraints of one filter object. Safe on any thread: a change makes a new
// list, and events are held against the one that was there.
#ifndef ZK_AGENT_CHANNEL_CONSTRAINTLIST_H
#define ZK_AGENT_CHANNEL_CONSTRAINTLIST_H

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>

#include "agent/channel/settings.h"
#include "agent/constraint/constraint.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

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
  mutable std::mutex mutex_;
  std::shared_ptr<const Entries> entries_ = std::make_shared<Entries>();
  CosNotifyFilter::ConstraintID lastId_ = 0;
};

}  // namespace zk::agent

#endif
