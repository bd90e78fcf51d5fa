// What a proxy or an admin selects of the events: its subscription to event
// types, and its filter objects. Safe on any thread: a change makes a new state,
// and events are held against the one that was there.
#ifndef ZK_AGENT_CHANNEL_SELECTION_H
#define ZK_AGENT_CHANNEL_SELECTION_H

#include <map>
#include <memory>

#include "agent/channel/filters.h"
#include "agent/channel/settings.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class Selection {
 public:
  explicit Selection(const ChannelSettings& settings);

  // Until it is changed the subscription is to everything, and the first types
  // that are added replace that. A subscription to nothing gets nothing. Throws
  // InvalidEventType for names that nobody can mean, CORBA::IMP_LIMIT for more
  // types than there may be, CORBA::BAD_PARAM for more to be removed than that;
  // nothing is changed then.
  void change(const CosNotification::EventTypeSeq& added,
              const CosNotification::EventTypeSeq& removed);

  // The ids are the selection's own. These throw FilterNotFound.
  CosNotifyFilter::FilterID addFilter(const FilterObject& filter);
  void removeFilter(CosNotifyFilter::FilterID id);
  CosNotifyFilter::Filter_ptr filter(CosNotifyFilter::FilterID id) const;
  CosNotifyFilter::FilterIDSeq* filterIds() const;
  void removeFilters();

  // These cost the session work. Without any left, an event counts as subscribed
  // to, and is UNJUDGED.
  bool isSubscribed(const CosNotification::EventType& type, FilterWork& work) const;
  // One filter that matches is enough.
  Verdict judge(const CosNotification::StructuredEvent& event, FilterWork& work) const;

 private:
  struct State {
    bool everything = true;
    CosNotification::EventTypeSeq types;
    std::map<CosNotifyFilter::FilterID, FilterObject> filters;
  };

  std::shared_ptr<const State> current() const;

  const std::size_t mostTypes_;
  const std::size_t mostFilters_;
  mutable Mutex mutex_;
  std::shared_ptr<const State> state_ ZK_GUARDED_BY(mutex_) = std::make_shared<State>();
  CosNotifyFilter::FilterID lastId_ ZK_GUARDED_BY(mutex_) = 0;
};

// Whether a proxy gets an event that both subscriptions hold: the filters of admin
// and proxy let it pass, combined as the admin was made. The side without filters
// leaves the decision to the other; without any, the event passes. Never NO_FILTER.
Verdict judge(const Selection& admin, const Selection& proxy,
              CosNotifyChannelAdmin::InterFilterGroupOperator combination,
              const CosNotification::StructuredEvent& event, FilterWork& work);

// Whether somebody can mean these types: their names are of a length that names
// have.
bool haveUsableNames(const CosNotification::EventTypeSeq& types);

// In units of work.
std::size_t costOfMatching(const CosNotification::EventTypeSeq& types);

}  // namespace zk::agent

#endif
