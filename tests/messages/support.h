// What the tests of the event cache share: events with a name, clients' filters
// that count, a validity service that is told what to say, and waiting.
#ifndef ZK_TESTS_MESSAGES_SUPPORT_H
#define ZK_TESTS_MESSAGES_SUPPORT_H

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/doubles.h"
#include "zk_quornex/messages/messagecach.h"

namespace zk::test {

using Event = NS_QUORCORBA::NXRefCountType<CosNotification::StructuredEvent>;
using Texts = std::vector<std::string>;

// The test's own reference to an event.
struct ReleaseEvent {
  void operator()(Event* event) const { event->release(); }
};
using HeldEvent = std::unique_ptr<Event, ReleaseEvent>;

inline HeldEvent makeEvent(const std::string& name) {
  auto event = std::make_unique<CosNotification::StructuredEvent>();
  event->header.fixed_header.event_type.domain_name = CORBA::string_dup("domain");
  event->header.fixed_header.event_type.type_name = CORBA::string_dup("type");
  event->header.fixed_header.event_name = CORBA::string_dup(name.c_str());
  event->filterable_data.length(1);
  event->filterable_data[0].name = CORBA::string_dup("text");
  event->filterable_data[0].value <<= name.c_str();
  return HeldEvent(new Event(event.release()));
}

inline std::vector<HeldEvent> makeEvents(const Texts& names) {
  std::vector<HeldEvent> events;
  for (const std::string& name : names) {
    events.push_back(makeEvent(name));
  }
  return events;
}

inline Texts namesOf(const notifications::EventList_T& list) {
  Texts names;
  for (CORBA::ULong position = 0; position < list.length(); ++position) {
    names.emplace_back(list[position].header.fixed_header.event_name.in());
  }
  return names;
}

// Waits for the condition; false when the deadline, far beyond what a loaded
// machine needs, has passed first.
template <class Condition>
bool eventually(Condition condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// Nobody but the test holds the event any more.
inline bool eventuallyFree(const HeldEvent& event) {
  return eventually([&] { return event->isLast(); });
}

// What one fetch gives; {"(none)"} when the list is left untouched.
inline Texts fetch(NS_QUORCORBA::NXMessageHandle& handle, long clientID) {
  notifications::EventList_T* list = nullptr;
  handle.getMsgList(clientID, list);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  return owned ? namesOf(*owned) : Texts{"(none)"};
}

inline Texts fetch(NS_QUORCORBA::NXMessageCache& cache) {
  notifications::EventList_T* list = nullptr;
  cache.getMsgList(list);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  return namesOf(*owned);
}

// Fetches until an event of this name has come; all that came, in order. Since
// a client gets its events in order, what was pushed before and is not there
// does not come.
template <class Fetch>
Texts fetchUntil(const std::string& last, Fetch fetchOnce) {
  Texts names;
  eventually([&] {
    for (std::string& name : fetchOnce()) {
      names.push_back(std::move(name));
    }
    return !names.empty() && names.back() == last;
  });
  return names;
}

inline Texts fetchUntil(const std::string& last, NS_QUORCORBA::NXMessageHandle& handle,
                        long clientID) {
  return fetchUntil(last, [&] { return fetch(handle, clientID); });
}

inline int push(NS_QUORCORBA::NXMessageHandle& handle, const std::string& name,
                const void* context = nullptr) {
  return handle.pushMessage(makeEvent(name).get(), context);
}

inline long countOf(const Texts& texts, const std::string& text) {
  long count = 0;
  for (const std::string& other : texts) {
    count += other == text ? 1 : 0;
  }
  return count;
}

// A handler that counts its own deletion.
class CountedHandler : public NS_QUORCORBA::NXMsgExceptionHanle {
 public:
  explicit CountedHandler(int& deletions) : deletions_(deletions) {}
  ~CountedHandler() override { ++deletions_; }

 private:
  int& deletions_;
};

// Everything a filter was asked, and what it shall answer. Outlives the filter.
struct FilterScript {
  // The criteria that GetFilter reports.
  std::vector<long> first;
  std::vector<std::string> second;
  std::vector<long> third;
  std::vector<long> fourth;
  std::vector<std::string> fifth;
  NS_QUORCORBA::stDateTimeType start;
  NS_QUORCORBA::stDateTimeType end;

  bool drops = false;
  int result = 0;

  std::vector<const void*> contexts;  // of each isFiltered
  Texts calls;                        // each other operation, with its criteria
  int deletions = 0;
};

inline NS_QUORCORBA::stDateTimeType validTime() { return {2012, 11, 20, 9, 42, 0}; }

// A filter that does as its script says.
class ScriptedFilter : public NS_QUORCORBA::NXMessageFilter {
 public:
  explicit ScriptedFilter(FilterScript& script) : script_(script) {}
  ~ScriptedFilter() override { ++script_.deletions; }

  bool isFiltered(const void* context) override {
    script_.contexts.push_back(context);
    return script_.drops;
  }

  int GetFilter(std::vector<long>& first, std::vector<std::string>& second,
                std::vector<long>& third, std::vector<long>& fourth,
                NS_QUORCORBA::stDateTimeType& start, NS_QUORCORBA::stDateTimeType& end,
                std::vector<std::string>& fifth) override {
    note("GetFilter", first.size(), second.size(), third, fourth, start, end, fifth);
    first = script_.first;
    second = script_.second;
    third = script_.third;
    fourth = script_.fourth;
    start = script_.start;
    end = script_.end;
    fifth = script_.fifth;
    return script_.result;
  }

  int suspendFilter(std::vector<long>& first, std::vector<long>& second, std::vector<long>& third,
                    std::vector<long>& fourth, NS_QUORCORBA::stDateTimeType& start,
                    NS_QUORCORBA::stDateTimeType& end, std::vector<std::string>& fifth) override {
    note("suspendFilter", first.size(), second.size(), third, fourth, start, end, fifth);
    return script_.result;
  }

  int resumeFilter(std::vector<long>& first, std::vector<long>& second, std::vector<long>& third,
                   std::vector<long>& fourth, NS_QUORCORBA::stDateTimeType& start,
                   NS_QUORCORBA::stDateTimeType& end, std::vector<std::string>& fifth) override {
    note("resumeFilter", first.size(), second.size(), third, fourth, start, end, fifth);
    return script_.result;
  }

  int cancelFilter(std::vector<long>& first, std::vector<long>& second, std::vector<long>& third,
                   std::vector<long>& fourth, NS_QUORCORBA::stDateTimeType& start,
                   NS_QUORCORBA::stDateTimeType& end, std::vector<std::string>& fifth) override {
    note("cancelFilter", first.size(), second.size(), third, fourth, start, end, fifth);
    return script_.result;
  }

 private:
  // "GetFilter 0 0 0 0 0 0 0": the vectors' sizes and the dates' years, in the
  // order of the arguments.
  void note(const std::string& call, std::size_t first, std::size_t second,
            const std::vector<long>& third, const std::vector<long>& fourth,
            const NS_QUORCORBA::stDateTimeType& start, const NS_QUORCORBA::stDateTimeType& end,
            const std::vector<std::string>& fifth) {
    script_.calls.push_back(call + " " + std::to_string(first) + " " + std::to_string(second) +
                            " " + std::to_string(third.size()) + " " +
                            std::to_string(fourth.size()) + " " + std::to_string(start.year) + " " +
                            std::to_string(end.year) + " " + std::to_string(fifth.size()));
  }

  FilterScript& script_;
};

// A script whose filter is not empty, so that it is asked for each event.
inline FilterScript askingScript() {
  FilterScript script;
  script.first = {1};
  return script;
}

}  // namespace zk::test

#endif
