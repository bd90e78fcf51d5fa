#include "agent/channel/selection.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "agent/constraint/eventtypes.h"

namespace zk::agent {

namespace {

using CosNotification::EventType;
using CosNotification::EventTypeSeq;
using CosNotification::StructuredEvent;
using CosNotifyFilter::FilterID;

constexpr std::size_t LONGEST_NAME = 255;
constexpr std::size_t COST_OF_A_TYPE = 4;

bool isAll(const char* text) {
  return *text == '\0' || std::strcmp(text, "*") == 0 || std::strcmp(text, "%ALL") == 0;
}

bool same(const char* left, const char* right) {
  return std::strcmp(left, right) == 0 || (isAll(left) && isAll(right));
}

bool same(const EventType& left, const EventType& right) {
  return same(left.domain_name, right.domain_name) && same(left.type_name, right.type_name);
}

bool contains(const EventTypeSeq& list, const EventType& type) {
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    if (same(list[i], type)) {
      return true;
    }
  }
  return false;
}

bool containsAll(const EventTypeSeq& list) {
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    if (isAll(list[i].domain_name) && isAll(list[i].type_name)) {
      return true;
    }
  }
  return false;
}

bool isUsable(const EventType& type) {
  return std::strlen(type.domain_name) <= LONGEST_NAME &&
         std::strlen(type.type_name) <= LONGEST_NAME;
}

void check(const EventTypeSeq& list) {
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    if (!isUsable(list[i])) {
      throw CosNotifyComm::InvalidEventType(list[i]);
    }
  }
}

void append(EventTypeSeq& list, const EventType& type) {
  if (!contains(list, type)) {
    const CORBA::ULong last = list.length();
    list.length(last + 1);
    list[last] = type;
  }
}

}  // namespace

Selection::Selection(const ChannelSettings& settings)
    : mostTypes_(settings.eventTypes), mostFilters_(settings.filters) {}

void Selection::change(const EventTypeSeq& added, const EventTypeSeq& removed) {
  if (added.length() > mostTypes_) {
    throw CORBA::IMP_LIMIT();
  }
  if (removed.length() > mostTypes_) {
    throw CORBA::BAD_PARAM();
  }
  check(added);
  check(removed);
  const MutexLock guard(mutex_);
  auto changed = std::make_shared<State>();
  changed->filters = state_->filters;
  for (CORBA::ULong i = 0; i < state_->types.length(); ++i) {
    if (!contains(removed, state_->types[i])) {
      append(changed->types, state_->types[i]);
    }
  }
  for (CORBA::ULong i = 0; i < added.length(); ++i) {
    append(changed->types, added[i]);
  }
  if (changed->types.length() > mostTypes_) {
    throw CORBA::IMP_LIMIT();
  }
  changed->everything = state_->everything && added.length() == 0 && !containsAll(removed);
  state_ = std::move(changed);
}

std::shared_ptr<const Selection::State> Selection::current() const {
  const MutexLock guard(mutex_);
  return state_;
}

FilterID Selection::addFilter(const FilterObject& filter) {
  const MutexLock guard(mutex_);
  if (state_->filters.size() >= mostFilters_) {
    throw CORBA::IMP_LIMIT();
  }
  auto changed = std::make_shared<State>(*state_);
  changed->filters.emplace(++lastId_, filter);
  state_ = std::move(changed);
  return lastId_;
}

void Selection::removeFilter(FilterID id) {
  const MutexLock guard(mutex_);
  auto changed = std::make_shared<State>(*state_);
  if (changed->filters.erase(id) == 0) {
    throw CosNotifyFilter::FilterNotFound();
  }
  state_ = std::move(changed);
}

void Selection::removeFilters() {
  const MutexLock guard(mutex_);
  auto changed = std::make_shared<State>(*state_);
  changed->filters.clear();
  state_ = std::move(changed);
}

CosNotifyFilter::Filter_ptr Selection::filter(FilterID id) const {
  const auto state = current();
  const auto found = state->filters.find(id);
  if (found == state->filters.end()) {
    throw CosNotifyFilter::FilterNotFound();
  }
  return CosNotifyFilter::Filter::_duplicate(found->second.reference.in());
}

CosNotifyFilter::FilterIDSeq* Selection::filterIds() const {
  const auto state = current();
  CosNotifyFilter::FilterIDSeq_var ids = new CosNotifyFilter::FilterIDSeq;
  ids->length(static_cast<CORBA::ULong>(state->filters.size()));
  CORBA::ULong next = 0;
  for (const auto& [id, filter] : state->filters) {
    ids[next++] = id;
  }
  return ids._retn();
}

bool Selection::isSubscribed(const EventType& type, FilterWork& work) const {
  const auto state = current();
  return state->everything || !work.spend(costOfMatching(state->types)) ||
         (state->types.length() != 0 && matchesEventTypes(state->types, type));
}

Verdict Selection::judge(const StructuredEvent& event, FilterWork& work) const {
  const auto state = current();
  if (!state->everything && work.isSpent()) {
    return Verdict::UNJUDGED;  // it may not even be subscribed to
  }
  if (state->filters.empty()) {
    return Verdict::NO_FILTER;
  }
  Verdict verdict = Verdict::DROP;
  for (auto next = state->filters.begin(); next != state->filters.end() && verdict == Verdict::DROP;
       ++next) {
    verdict = next->second.constraints->judge(event, work);
  }
  return verdict;
}

Verdict judge(const Selection& admin, const Selection& proxy,
              CosNotifyChannelAdmin::InterFilterGroupOperator combination,
              const StructuredEvent& event, FilterWork& work) {
  const Verdict first = admin.judge(event, work);
  const Verdict second = proxy.judge(event, work);
  if (first == Verdict::NO_FILTER || second == Verdict::NO_FILTER) {
    const Verdict other = first == Verdict::NO_FILTER ? second : first;
    return other == Verdict::NO_FILTER ? Verdict::PASS : other;
  }
  const Verdict deciding =
      combination == CosNotifyChannelAdmin::AND_OP ? Verdict::DROP : Verdict::PASS;
  if (first == deciding || second == deciding) {
    return deciding;
  }
  return first == Verdict::UNJUDGED ? first : second;
}

bool haveUsableNames(const EventTypeSeq& types) {
  for (CORBA::ULong i = 0; i < types.length(); ++i) {
    if (!isUsable(types[i])) {
      return false;
    }
  }
  return true;
}

std::size_t costOfMatching(const EventTypeSeq& types) { return types.length() * COST_OF_A_TYPE; }

}  // namespace zk::agent
