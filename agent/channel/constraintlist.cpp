#include "agent/channel/constraintlist.h"

#include <algorithm>
#include <string>
#include <utility>

#include "agent/base/log.h"
#include "agent/constraint/eventtypes.h"

namespace zk::agent {

namespace {

using CosNotifyFilter::ConstraintExp;
using CosNotifyFilter::ConstraintExpSeq;
using CosNotifyFilter::ConstraintID;
using CosNotifyFilter::ConstraintIDSeq;
using CosNotifyFilter::ConstraintInfoSeq;
using CosNotifyFilter::ConstraintInfoSeq_var;

void append(ConstraintInfoSeq& list, ConstraintID id, const ConstraintExp& expression) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].constraint_id = id;
  list[last].constraint_expression = expression;
}

}  // namespace

ConstraintList::ConstraintList(const ChannelSettings& settings,
                               DynamicAny::DynAnyFactory_ptr factory)
    : mostConstraints_(settings.constraints),
      mostEventTypes_(settings.eventTypes),
      factory_(DynamicAny::DynAnyFactory::_duplicate(factory)) {}

ConstraintList::Entry ConstraintList::parse(const ConstraintExp& expression) const {
  if (expression.event_types.length() > mostEventTypes_) {
    throw CORBA::IMP_LIMIT();
  }
  try {
    const std::string text(expression.constraint_expr);
    return {expression, Constraint::parse(text, factory_.in())};
  } catch (const InvalidConstraintText& wrong) {
    logCourse(std::string("a filter's constraint was refused: ") + wrong.what());
    throw CosNotifyFilter::InvalidConstraint(expression);
  }
}

ConstraintInfoSeq* ConstraintList::add(const ConstraintExpSeq& added) {
  ConstraintInfoSeq_var result = new ConstraintInfoSeq(added.length());
  const std::lock_guard<std::mutex> guard(mutex_);
  auto changed = std::make_shared<Entries>(*entries_);
  ConstraintID id = lastId_;
  for (CORBA::ULong i = 0; i < added.length(); ++i) {
    if (changed->size() >= mostConstraints_) {
      throw CORBA::IMP_LIMIT();
    }
    changed->emplace(++id, parse(added[i]));
    append(result.inout(), id, added[i]);
  }
  lastId_ = id;
  entries_ = std::move(changed);
  return result._retn();
}

void ConstraintList::modify(const ConstraintIDSeq& removed, const ConstraintInfoSeq& infos) {
  const std::lock_guard<std::mutex> guard(mutex_);
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
  const std::lock_guard<std::mutex> guard(mutex_);
  entries_ = std::make_shared<Entries>();
}

std::shared_ptr<const ConstraintList::Entries> ConstraintList::current() const {
  const std::lock_guard<std::mutex> guard(mutex_);
  return entries_;
}

ConstraintInfoSeq* ConstraintList::get(const ConstraintIDSeq& ids) const {
  const auto entries = current();
  ConstraintInfoSeq_var result = new ConstraintInfoSeq;
  for (CORBA::ULong i = 0; i < ids.length(); ++i) {
    const auto found = entries->find(ids[i]);
    if (found == entries->end()) {
      throw CosNotifyFilter::ConstraintNotFound(ids[i]);
    }
    append(result.inout(), found->first, found->second.expression);
  }
  return result._retn();
}

ConstraintInfoSeq* ConstraintList::getAll() const {
  const auto entries = current();
  ConstraintInfoSeq_var result = new ConstraintInfoSeq;
  for (const auto& [id, entry] : *entries) {
    append(result.inout(), id, entry.expression);
  }
  return result._retn();
}

bool ConstraintList::matches(const CosNotification::StructuredEvent& event) const {
  const auto entries = current();
  return std::any_of(entries->begin(), entries->end(), [&](const auto& item) {
    const Entry& entry = item.second;
    return matchesEventTypes(entry.expression.event_types, event.header.fixed_header.event_type) &&
           entry.constraint->matches(event);
  });
}

}  // namespace zk::agent
