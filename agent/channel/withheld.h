// Events that are withheld from a client by the criteria calls of the event
// cache's manager (suspendFilter and its relatives). Not safe for use by two
// threads at once: the cache calls it under its lock.
#ifndef ZK_AGENT_CHANNEL_WITHHELD_H
#define ZK_AGENT_CHANNEL_WITHHELD_H

#include <string>
#include <vector>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

// What an event must have to be withheld: in every list that is not empty the
// event's value, and its emsTime not before start nor after end where they are
// valid. An event without a value, or with a local time, does not match.
struct Criteria {
  std::vector<long> severities;   // perceivedSeverity
  std::vector<long> layers;       // layerRate
  std::vector<long> objectTypes;  // objectType
  NS_QUORCORBA::stDateTimeType start;
  NS_QUORCORBA::stDateTimeType end;
  std::vector<std::string> types;  // type_name, such as NT_ALARM

  bool isEmpty() const;
  bool matches(const CosNotification::StructuredEvent& event) const;
};

bool operator==(const Criteria& left, const Criteria& right);

class Withheld {
 public:
  // 0, or -1: criteria that say nothing, or more of them than are kept.
  int suspend(const Criteria& criteria);
  // Lets the events of these criteria pass again and remembers the criteria; -1
  // when they were never given.
  int resume(const Criteria& criteria);
  // Forgets them; empty criteria forget all. -1 when they were never given.
  int cancel(const Criteria& criteria);

  bool isWithheld(const CosNotification::StructuredEvent& event) const;

  bool isEmpty() const { return entries_.empty(); }
  // All that is withheld now, in one: what the lists hold together.
  Criteria inForce() const;

 private:
  struct Entry {
    Criteria criteria;
    bool active;
  };

  std::vector<Entry>::iterator find(const Criteria& criteria);

  std::vector<Entry> entries_;
};

}  // namespace zk::agent

#endif
