// The constraints of one filter object, and the pool that a session's constraints
// come from. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_CONSTRAINTLIST_H
#define ZK_AGENT_CHANNEL_CONSTRAINTLIST_H

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "agent/channel/budget.h"
#include "agent/channel/settings.h"
#include "agent/constraint/constraint.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// Whether an event passes what selects it. UNJUDGED: there was no work left to
// find out.
enum class Verdict { NO_FILTER, PASS, DROP, UNJUDGED };

// Keeps each text once, for as long as somebody holds it.
class ConstraintPool : public std::enable_shared_from_this<ConstraintPool> {
 public:
  ConstraintPool(DynamicAny::DynAnyFactory_ptr factory, std::shared_ptr<ByteBudget> kept);

  // Equal texts give the same object, save those asked for at the same time. Throws
  // InvalidConstraintText, and CORBA::NO_RESOURCES when the session keeps too much.
  std::shared_ptr<const Constraint> get(const std::string& text);

 private:
  struct Held;

  std::shared_ptr<const Constraint> find(const std::string& text);
  void forget(const Held& held);

  const DynamicAny::DynAnyFactory_var factory_;
  const std::shared_ptr<ByteBudget> kept_;
  Mutex mutex_;
  // The texts are the constraints' own.
  std::map<std::string_view, std::weak_ptr<const Constraint>> known_ ZK_GUARDED_BY(mutex_);
};

// A change makes a new list, and events are held against the one that was there.
class ConstraintList {
 public:
  ConstraintList(const ChannelSettings& settings, std::shared_ptr<ConstraintPool> pool,
                 std::shared_ptr<ByteBudget> kept);

  // The changes are made in whole or not at all. They throw InvalidConstraint
  // with the first wrong one, ConstraintNotFound, CORBA::BAD_PARAM for more ids
  // than there may be constraints, CORBA::IMP_LIMIT for more constraints or event
  // types than there may be, and CORBA::NO_RESOURCES when the session keeps too
  // much. The caller owns the results.
  CosNotifyFilter::ConstraintInfoSeq* add(const CosNotifyFilter::ConstraintExpSeq& added);
  void modify(const CosNotifyFilter::ConstraintIDSeq& removed,
              const CosNotifyFilter::ConstraintInfoSeq& changed);
  void removeAll();

  CosNotifyFilter::ConstraintInfoSeq* get(const CosNotifyFilter::ConstraintIDSeq& ids) const;
  CosNotifyFilter::ConstraintInfoSeq* getAll() const;

  // Whether the event satisfies at least one: without constraints, none does.
  Verdict judge(const CosNotification::StructuredEvent& event, FilterWork& work) const;
  // The same of a client's own event, at the cost of one event to this call.
  // Throws CORBA::NO_RESOURCES when that is not enough, CORBA::BAD_PARAM for an
  // event of more properties than one may have.
  bool matches(const CosNotification::StructuredEvent& event) const;

 private:
  struct Entry {
    CosNotification::EventTypeSeq types;
    std::shared_ptr<const Constraint> constraint;
    Charge charge;
  };
  using Entries = std::map<CosNotifyFilter::ConstraintID, std::shared_ptr<const Entry>>;

  std::shared_ptr<const Entry> parse(const CosNotifyFilter::ConstraintExp& expression) const;
  std::shared_ptr<const Entries> current() const;
  void checkIds(const CosNotifyFilter::ConstraintIDSeq& ids) const;
  static void append(CosNotifyFilter::ConstraintInfoSeq& list, CosNotifyFilter::ConstraintID id,
                     const Entry& entry);

  const ChannelSettings settings_;
  const std::shared_ptr<ConstraintPool> pool_;
  const std::shared_ptr<ByteBudget> kept_;
  mutable Mutex mutex_;
  std::shared_ptr<const Entries> entries_ ZK_GUARDED_BY(mutex_) = std::make_shared<Entries>();
  CosNotifyFilter::ConstraintID lastId_ ZK_GUARDED_BY(mutex_) = 0;
};

}  // namespace zk::agent

#endif
