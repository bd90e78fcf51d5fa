#include "agent/channel/constraintlist.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "agent/base/log.h"
#include "agent/channel/selection.h"
#include "agent/constraint/eventtypes.h"

namespace zk::agent {

namespace {

using CosNotification::EventTypeSeq;
using CosNotification::StructuredEvent;
using CosNotifyFilter::ConstraintExp;
using CosNotifyFilter::ConstraintExpSeq;
using CosNotifyFilter::ConstraintID;
using CosNotifyFilter::ConstraintIDSeq;
using CosNotifyFilter::ConstraintInfoSeq;
using CosNotifyFilter::ConstraintInfoSeq_var;

constexpr std::size_t BYTES_AN_ENTRY = 512;  // with its places in lists
constexpr std::size_t BYTES_A_TYPE = 64;     // without its names

std::size_t bytesOf(const EventTypeSeq& types) {
  std::size_t bytes = BYTES_AN_ENTRY + types.length() * BYTES_A_TYPE;
  for (CORBA::ULong i = 0; i < types.length(); ++i) {
    bytes += std::strlen(types[i].domain_name) + std::strlen(types[i].type_name);
  }
  return bytes;
}

}  // namespace

struct ConstraintPool::Held {
  std::unique_ptr<const Constraint> constraint;
  Charge charge;
};

ConstraintPool::ConstraintPool(DynamicAny::DynAnyFactory_ptr factory,
                               std::shared_ptr<ByteBudget> kept)
    : factory_(DynamicAny::DynAnyFactory::_duplicate(factory)), kept_(std::move(kept)) {}

// Made and destroyed without the lock: the end of one takes it.
std::shared_ptr<const Constraint> ConstraintPool::get(const std::string& text) {
  if (auto same = find(text)) {
    return same;
  }
  auto made = std::make_unique<Held>();
  made->constraint = Constraint::parse(text, factory_.in());
  made->charge = Charge(kept_, made->constraint->bytes());
  const Constraint* const constraint = made->constraint.get();
  const auto forgotten = [pool = weak_from_this()](const Held* held) {
    if (const auto own = pool.lock()) {
      own->forget(*held);
    }
    delete held;
  };
  const std::shared_ptr<const Held> held(made.release(), forgotten);
  std::shared_ptr<const Constraint> result(held, constraint);
  const MutexLock guard(mutex_);
  known_.erase(text);
  known_.emplace(constraint->text(), result);
  return result;
}

std::shared_ptr<const Constraint> ConstraintPool::find(const std::string& text) {
  const MutexLock guard(mutex_);
  const auto known = known_.find(text);
  return known != known_.end() ? known->second.lock() : nullptr;
}

void ConstraintPool::forget(const Held& held) {
  const MutexLock guard(mutex_);
  const auto known = known_.find(held.constraint->text());
  if (known != known_.end() && known->first.data() == held.constraint->text().data()) {
    known_.erase(known);
  }
}

ConstraintList::ConstraintList(const ChannelSettings& settings,
                               std::shared_ptr<ConstraintPool> pool,
                               std::shared_ptr<ByteBudget> kept)
    : settings_(settings), pool_(std::move(pool)), kept_(std::move(kept)) {}

std::shared_ptr<const ConstraintList::Entry> ConstraintList::parse(
    const ConstraintExp& expression) const {
  if (expression.event_types.length() > settings_.eventTypes) {
    throw CORBA::IMP_LIMIT();
  }
  if (!haveUsableNames(expression.event_types)) {
    throw CosNotifyFilter::InvalidConstraint(expression);
  }
  try {
    auto entry = std::make_shared<Entry>();
    entry->charge = Charge(kept_, bytesOf(expression.event_types));
    entry->types = expression.event_types;
    entry->constraint = pool_->get(std::string(expression.constraint_expr));
    return entry;
  } catch (const InvalidConstraintText& wrong) {
    logCourse(std::string("a filter's constraint was refused: ") + wrong.what());
    throw CosNotifyFilter::InvalidConstraint(expression);
  }
}

void ConstraintList::append(ConstraintInfoSeq& list, ConstraintID id, const Entry& entry) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].constraint_id = id;
  list[last].constraint_expression.event_types = entry.types;
  list[last].constraint_expression.constraint_expr =
      CORBA::string_dup(entry.constraint->text().c_str());
}

ConstraintInfoSeq* ConstraintList::add(const ConstraintExpSeq& added) {
  const MutexLock guard(mutex_);
  if (added.length() > settings_.constraints - entries_->size()) {
    throw CORBA::IMP_LIMIT();
  }
  ConstraintInfoSeq_var result = new ConstraintInfoSeq(added.length());
  auto changed = std::make_shared<Entries>(*entries_);
  ConstraintID id = lastId_;
  for (CORBA::ULong i = 0; i < added.length(); ++i) {
    auto entry = parse(added[i]);
    append(result.inout(), ++id, *entry);
    changed->emplace(id, std::move(entry));
  }
  lastId_ = id;
  entries_ = std::move(changed);
  return result._retn();
}

void ConstraintList::checkIds(const ConstraintIDSeq& ids) const {
  if (ids.length() > settings_.constraints) {
    throw CORBA::BAD_PARAM();
  }
}

void ConstraintList::modify(const ConstraintIDSeq& removed, const ConstraintInfoSeq& infos) {
  checkIds(removed);
  if (infos.length() > settings_.constraints) {
    throw CORBA::BAD_PARAM();
  }
  const MutexLock guard(mutex_);
  auto changed = std::make_shared<Entries>(*entries_);
  for (CORBA::ULong i = 0; i < removed.length(); ++i) {
    if (changed->erase(removed[i]) == 0) {
      throw CosNotifyFilter::ConstraintNotFound(removed[i]);
    }
  }
  for (CORBA::ULong i = 0; i < infos.length(); ++i) {
    const auto found = changed->find(infos[i].constraint_id);
    if (found == changed->end()) {
      throw CosNotifyFilter::ConstraintNotFound(infos[i].constraint_id);
    }
    found->second = parse(infos[i].constraint_expression);
  }
  entries_ = std::move(changed);
}

void ConstraintList::removeAll() {
  auto none = std::make_shared<Entries>();
  const MutexLock guard(mutex_);
  entries_ = std::move(none);
}

std::shared_ptr<const ConstraintList::Entries> ConstraintList::current() const {
  const MutexLock guard(mutex_);
  return entries_;
}

ConstraintInfoSeq* ConstraintList::get(const ConstraintIDSeq& ids) const {
  checkIds(ids);
  const auto entries = current();
  ConstraintInfoSeq_var result = new ConstraintInfoSeq(ids.length());
  for (CORBA::ULong i = 0; i < ids.length(); ++i) {
    const auto found = entries->find(ids[i]);
    if (found == entries->end()) {
      throw CosNotifyFilter::ConstraintNotFound(ids[i]);
    }
    append(result.inout(), found->first, *found->second);
  }
  return result._retn();
}

ConstraintInfoSeq* ConstraintList::getAll() const {
  const auto entries = current();
  ConstraintInfoSeq_var result = new ConstraintInfoSeq(static_cast<CORBA::ULong>(entries->size()));
  for (const auto& [id, entry] : *entries) {
    append(result.inout(), id, *entry);
  }
  return result._retn();
}

Verdict ConstraintList::judge(const StructuredEvent& event, FilterWork& work) const {
  const auto entries = current();
  for (const auto& [id, entry] : *entries) {
    if (work.spend(1 + costOfMatching(entry->types)) &&
        matchesEventTypes(entry->types, event.header.fixed_header.event_type) &&
        work.holds(entry->constraint, event)) {
      return Verdict::PASS;
    }
    if (work.isSpent()) {
      return Verdict::UNJUDGED;
    }
  }
  return Verdict::DROP;
}

bool ConstraintList::matches(const StructuredEvent& event) const {
  if (event.header.variable_header.length() > settings_.properties ||
      event.filterable_data.length() > settings_.properties) {
    throw CORBA::BAD_PARAM();
  }
  const auto entries = current();
  etcl::Work work(settings_.filterWork / FilterWork::EVENTS_IN_MOST);
  const bool holds = std::any_of(entries->begin(), entries->end(), [&](const auto& item) {
    const Entry& entry = *item.second;
    return !work.isSpent() &&
           matchesEventTypes(entry.types, event.header.fixed_header.event_type) &&
           entry.constraint->matches(event, work, Constraint::Sender::CLIENT);
  });
  if (work.isSpent()) {
    throw CORBA::NO_RESOURCES();
  }
  return holds;
}

}  // namespace zk::agent
