// Doubles of the event pusher, the clock and the EMS that write each call they
// get into one journal, in order, so that a test can compare who was called and
// when. For one thread.
#ifndef ZK_TESTS_SUPPORT_JOURNAL_H
#define ZK_TESTS_SUPPORT_JOURNAL_H

#include <functional>
#include <string>
#include <vector>

#include "tests/support/doubles.h"

namespace zk::test {

using Journal = std::vector<std::string>;

// Writes "header <type>" and "push", and keeps a copy of the event as it was at
// either call. The header it writes is "domain", "type", "event".
class JournalPusher : public Installed<zk::platform::EventPusher> {
 public:
  explicit JournalPusher(Journal& journal) : journal_(journal) {}

  void fillFixedHeader(const std::string& type, CosNotification::StructuredEvent& event) override {
    journal_.push_back("header " + type);
    atHeader.push_back(event);
    onHeader();
    event.header.fixed_header.event_type.domain_name = CORBA::string_dup("domain");
    event.header.fixed_header.event_type.type_name = CORBA::string_dup("type");
    event.header.fixed_header.event_name = CORBA::string_dup("event");
  }

  void push(CosNotification::StructuredEvent& event) override {
    journal_.push_back("push");
    pushed.push_back(event);
    onPush();
  }

  // Throws std::out_of_range, failing the test, when nothing was pushed.
  CosNotification::StructuredEvent& last() { return pushed.at(pushed.size() - 1); }

  std::vector<CosNotification::StructuredEvent> atHeader;
  std::vector<CosNotification::StructuredEvent> pushed;
  std::function<void()> onHeader = [] {};
  std::function<void()> onPush = [] {};

 private:
  Journal& journal_;
};

// Writes "time"; one second passes with each call, from 2012-11-20 09:42:00 UTC.
class JournalClock : public Installed<zk::platform::Clock> {
 public:
  explicit JournalClock(Journal& journal) : journal_(journal) {}

  std::chrono::system_clock::time_point now() override {
    journal_.push_back("time");
    return std::chrono::system_clock::time_point(std::chrono::seconds(seconds_++));
  }

 private:
  Journal& journal_;
  long seconds_ = 1353404520;
};

// Writes the operation and its argument; answers what the test sets. The texts
// are written even with a refusal: nobody may use them then.
class JournalEms : public Installed<zk::platform::EmsBackend> {
 public:
  explicit JournalEms(Journal& journal) : journal_(journal) {}

  unsigned long setOwner() override {
    journal_.emplace_back("setOwner");
    return ownerResult;
  }

  unsigned long setUserLabel() override {
    journal_.emplace_back("setUserLabel");
    return userLabelResult;
  }

  unsigned long getVersionOfDev(int deviceId, std::string& text) override {
    journal_.push_back("getVersionOfDev " + std::to_string(deviceId));
    text = version;
    return versionResult;
  }

  unsigned long getLocationOfDev(long deviceId, std::string& text) override {
    journal_.push_back("getLocationOfDev " + std::to_string(deviceId));
    text = location;
    return locationResult;
  }

  unsigned long ownerResult = 0;
  unsigned long userLabelResult = 0;
  unsigned long versionResult = 0;
  unsigned long locationResult = 0;
  std::string version = "V100R002";
  std::string location = "Hall 3, row 12";

 private:
  Journal& journal_;
};

}  // namespace zk::test

#endif
