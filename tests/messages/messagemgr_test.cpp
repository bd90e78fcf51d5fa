// The cache's entry: the singleton, message classes, and what is passed on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <json/value.h>
#include <unistd.h>

#include <functional>
#include <future>
#include <list>

#include "tests/messages/support.h"

struct AsnForwardFaultRptStrc {};

namespace zk::test {
namespace {

using NS_QUORCORBA::NXMessageMgr;
using NS_QUORCORBA::stDateTimeType;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr long CLASS = 801;
constexpr long OTHER_CLASS = 802;
constexpr long UNKNOWN = 9;
constexpr long CLIENT = 4;

NXMessageMgr& manager() { return *NXMessageMgr::Instance(); }

Texts fetch(long msgClass, long client) {
  notifications::EventList_T* list = nullptr;
  EXPECT_EQ(manager().getMsgList(msgClass, client, list), 0);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  return owned ? namesOf(*owned) : Texts{"(none)"};
}

Texts fetchUntil(const std::string& last, long msgClass, long client) {
  return zk::test::fetchUntil(last, [=] { return fetch(msgClass, client); });
}

class MessageMgrTest : public testing::Test {
 protected:
  MessageMgrTest() {
    for (const long msgClass : {CLASS, OTHER_CLASS}) {
      manager().addMsgClassCache(msgClass);
    }
    trace.clear();
  }

  // The classes outlive the test; its clients must not.
  ~MessageMgrTest() override {
    for (const long msgClass : {8L, 10L, CLASS, OTHER_CLASS}) {
      manager().unSubscribeMsg(msgClass, CLIENT);
    }
  }

  void subscribe(long msgClass, NS_QUORCORBA::NXMessageFilter* filter = nullptr) {
    manager().subscribeMsg(msgClass, CLIENT, filter, nullptr);
    manager().setReportStatus(msgClass, CLIENT, true);
    trace.clear();
  }

  int push(long msgClass, const std::string& name, const void* context = nullptr) {
    return manager().pushMessage(msgClass, makeEvent(name).get(), context);
  }

  FixedAgentConfig config;
  CapturedTrace trace;
  FilterScript script = askingScript();
  int handlers = 0;
};

TEST_F(MessageMgrTest, instanceIsOne) {
  EXPECT_NE(NXMessageMgr::Instance(), nullptr);
  EXPECT_EQ(NXMessageMgr::Instance(), NXMessageMgr::Instance());
  EXPECT_EQ(NXMessageMgr::getInstance(), NXMessageMgr::Instance());
}

TEST_F(MessageMgrTest, instanceIsOneForManyThreads) {
  NXMessageMgr::Destroy();
  std::vector<std::future<NXMessageMgr*>> found;
  found.reserve(8);
  for (int thread = 0; thread < 8; ++thread) {
    found.push_back(std::async(std::launch::async, [] { return NXMessageMgr::Instance(); }));
  }
  for (auto& one : found) {
    EXPECT_EQ(one.get(), NXMessageMgr::Instance());
  }
}

TEST_F(MessageMgrTest, destroyMayBeRepeated) {
  NXMessageMgr::Destroy();
  NXMessageMgr::Destroy();
  EXPECT_NE(NXMessageMgr::Instance(), nullptr);
}

TEST_F(MessageMgrTest, clientsOfBuiltInClassesSurviveDestroy) {
  for (const long msgClass : {8L, 10L}) {
    subscribe(msgClass);
    push(msgClass, "before");
  }
  trace.clear();
  NXMessageMgr::Destroy();
  NXMessageMgr::Instance();
  for (const std::string& text : trace.texts()) {
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("addMsgClassCache")));
  }
  for (const long msgClass : {8L, 10L}) {
    push(msgClass, "after");
    EXPECT_THAT(fetchUntil("after", msgClass, CLIENT), ElementsAre("before", "after"));
  }
}

Texts firstUseLines() {
  return {"1 NXMessageMgr::addMsgClassCache failed.msgClass=8",
          "1 NXMessageMgr::addMsgClassCache failed.msgClass=10"};
}

TEST(MessageMgrFirstUseTest, registers8Then10) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(
      {
        const CapturedTrace trace;
        NXMessageMgr::Instance();
        _exit(trace.texts() == firstUseLines() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(MessageMgrTest, newClassIsTracedOnceAndThenServed) {
  EXPECT_EQ(manager().addMsgClassCache(803), 0);
  EXPECT_THAT(trace.texts(), ElementsAre("1 NXMessageMgr::addMsgClassCache failed.msgClass=803"));
  EXPECT_EQ(trace.lines()[0].file, "messagecach.cpp");
  EXPECT_EQ(trace.lines()[0].function, "unknown");
  EXPECT_GT(trace.lines()[0].line, 0);
  trace.clear();
  EXPECT_EQ(manager().addMsgClassCache(803), 0);
  EXPECT_THAT(trace.texts(), IsEmpty());
  EXPECT_EQ(push(803, "a"), 0);
}

TEST_F(MessageMgrTest, registeringAgainKeepsTheClients) {
  subscribe(CLASS);
  push(CLASS, "a");
  EXPECT_EQ(manager().addMsgClassCache(CLASS), 0);
  push(CLASS, "b");
  EXPECT_THAT(fetchUntil("b", CLASS, CLIENT), ElementsAre("a", "b"));
}

TEST_F(MessageMgrTest, classesKeepTheirClientsApart) {
  subscribe(CLASS);
  subscribe(OTHER_CLASS);
  push(CLASS, "a");
  push(OTHER_CLASS, "b");
  EXPECT_THAT(fetchUntil("a", CLASS, CLIENT), ElementsAre("a"));
  EXPECT_THAT(fetchUntil("b", OTHER_CLASS, CLIENT), ElementsAre("b"));
}

// An operation on a class that is not registered.
struct UnknownCase {
  const char* name;
  std::function<int()> call;
  Texts lines;
};

std::vector<long> numbers;
std::vector<std::string> texts;
stDateTimeType start;
stDateTimeType end;

class UnknownClassTest : public MessageMgrTest, public testing::WithParamInterface<UnknownCase> {};

TEST_P(UnknownClassTest, isTracedAndRefused) {
  EXPECT_EQ(GetParam().call(), -1);
  EXPECT_EQ(trace.texts(), GetParam().lines);
  for (const TraceLine& line : trace.lines()) {
    EXPECT_EQ(line.file, "messagecach.cpp");
    EXPECT_EQ(line.function, "unknown");
    EXPECT_GT(line.line, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    MessageMgr, UnknownClassTest,
    testing::Values(
        UnknownCase{"subscribeMsg",
                    [] { return manager().subscribeMsg(UNKNOWN, CLIENT, nullptr, nullptr); },
                    {"1 NXMessageMgr::subscribeMsg failed.msgClass=9,clientID=4"}},
        UnknownCase{"unSubscribeMsg",
                    [] { return manager().unSubscribeMsg(UNKNOWN, CLIENT); },
                    {"1 NXMessageMgr::unSubscribeMsg failed.msgClass=9,clientID=4"}},
        UnknownCase{"setFilter",
                    [] { return manager().setFilter(UNKNOWN, CLIENT, nullptr); },
                    {"1 NXMessageMgr::setFilter failed.msgClass=9,clientID=4"}},
        UnknownCase{"setLayerFilter",
                    [] { return manager().setLayerFilter(UNKNOWN, CLIENT, {}); },
                    {"1 NXMessageMgr::setLayerFilter failed.msgClass=9,clientID=4"}},
        UnknownCase{"GetFilter",
                    [] {
                      return manager().GetFilter(UNKNOWN, CLIENT, numbers, texts, numbers, numbers,
                                                 start, end, texts);
                    },
                    {"1 NXMessageMgr::GetFilter failed.msgClass=9,clientID=4"}},
        UnknownCase{"suspendFilter",
                    [] {
                      return manager().suspendFilter(UNKNOWN, CLIENT, numbers, numbers, numbers,
                                                     numbers, start, end, texts);
                    },
                    {"1 NXMessageMgr::suspendFilter failed.msgClass=9,clientID=4"}},
        UnknownCase{"resumeFilter",
                    [] {
                      return manager().resumeFilter(UNKNOWN, CLIENT, numbers, numbers, numbers,
                                                    numbers, start, end, texts);
                    },
                    {"1 NXMessageMgr::resumeFilter failed.msgClass=9,clientID=4"}},
        UnknownCase{"cancelFilter",
                    [] {
                      return manager().cancelFilter(UNKNOWN, CLIENT, numbers, numbers, numbers,
                                                    numbers, start, end, texts);
                    },
                    {"1 NXMessageMgr::cancelFilter failed.msgClass=9,clientID=4"}},
        UnknownCase{"setReportStatus",
                    [] { return manager().setReportStatus(UNKNOWN, CLIENT, true); },
                    {"4 NXMessageMgr::setReportStatus in",
                     "1 NXMessageMgr::setReportStatus failed.msgClass=9,clientID=4"}},
        UnknownCase{"pushMessage",
                    [] { return manager().pushMessage(UNKNOWN, makeEvent("a").get(), nullptr); },
                    {"1 NXMessageMgr::pushMessage failed.msgClass=9"}},
        UnknownCase{"pushBulkMessage",
                    [] { return manager().pushBulkMessage(UNKNOWN, {}); },
                    {"1 NXMessageMgr::pushMessage failed.msgClass=9"}},
        UnknownCase{"PushBulkMessage",
                    [] { return manager().PushBulkMessage(UNKNOWN, {}); },
                    {"1 NXMessageMgr::pushMessage failed.msgClass=9"}},
        UnknownCase{"getMsgList",
                    [] {
                      notifications::EventList_T* list = nullptr;
                      const int result = manager().getMsgList(UNKNOWN, CLIENT, list);
                      EXPECT_EQ(list, nullptr);
                      return result;
                    },
                    {"1 NXMessageMgr::getMsgList failed.msgClass=9,clientID=4"}}),
    [](const auto& tested) {
      return tested.param.name + std::string(tested.param.name[0] == 'P' ? "OfReference" : "");
    });

TEST_F(MessageMgrTest, unknownClassAdoptsNothing) {
  {
    ScriptedFilter filter(script);
    CountedHandler handler(handlers);
    manager().subscribeMsg(UNKNOWN, CLIENT, &filter, &handler);
    manager().setFilter(UNKNOWN, CLIENT, &filter);
    EXPECT_EQ(script.deletions, 0);
    EXPECT_EQ(handlers, 0);
  }
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(handlers, 1);
}

TEST_F(MessageMgrTest, nullEventIsRefusedBeforeAnythingElse) {
  for (const int model : {1, 2}) {
    config.notifyModel = model;
    EXPECT_EQ(manager().pushMessage(CLASS, nullptr, nullptr), -1);
    EXPECT_EQ(manager().pushMessage(UNKNOWN, nullptr, nullptr), -1);
  }
  EXPECT_THAT(trace.texts(), IsEmpty());
}

class NotifyModelTest : public MessageMgrTest, public testing::WithParamInterface<int> {};

TEST_P(NotifyModelTest, only2And3UseTheCache) {
  const bool isUsed = GetParam() == 2 || GetParam() == 3;
  subscribe(CLASS);
  config.notifyModel = GetParam();
  EXPECT_EQ(push(CLASS, "a"), 0);
  EXPECT_EQ(push(UNKNOWN, "a"), isUsed ? -1 : 0);
  if (!isUsed) {
    EXPECT_THAT(trace.texts(), IsEmpty());
  }
  config.notifyModel = 2;
  push(CLASS, "last");
  EXPECT_EQ(fetchUntil("last", CLASS, CLIENT), isUsed ? (Texts{"a", "last"}) : Texts{"last"});
}

INSTANTIATE_TEST_SUITE_P(MessageMgr, NotifyModelTest, testing::Range(-1, 6),
                         [](const auto& tested) {
                           return tested.param < 0 ? std::string("negative")
                                                   : std::to_string(tested.param);
                         });

TEST_F(MessageMgrTest, callerKeepsItsReference) {
  subscribe(CLASS);
  const HeldEvent event = makeEvent("a");
  manager().pushMessage(CLASS, event.get(), nullptr);
  EXPECT_THAT(fetchUntil("a", CLASS, CLIENT), ElementsAre("a"));
  EXPECT_TRUE(eventuallyFree(event));
  EXPECT_STREQ(event->get()->header.fixed_header.event_name.in(), "a");
}

TEST_F(MessageMgrTest, contextReachesTheFilterUntouched) {
  subscribe(CLASS, new ScriptedFilter(script));
  const int context = 0;
  push(CLASS, "a", &context);
  AsnForwardFaultRptStrc report;
  Json::Value json;
  const auto events = makeEvents({"b", "c"});
  EXPECT_EQ(
      manager().pushBulkMessage(CLASS, {{events[0].get(), &report}, {events[1].get(), nullptr}}),
      0);
  EXPECT_EQ(
      manager().PushBulkMessage(CLASS, {{events[0].get(), nullptr}, {events[1].get(), &json}}), 0);
  EXPECT_THAT(script.contexts,
              ElementsAre(static_cast<const void*>(&context), static_cast<const void*>(&report),
                          nullptr, nullptr, static_cast<const void*>(&json)));
}

TEST_F(MessageMgrTest, bulkKeepsOrderAndIgnoresTheNotifyModel) {
  subscribe(CLASS);
  config.notifyModel = 1;
  const auto events = makeEvents({"a", "b", "c", "d"});
  EXPECT_EQ(
      manager().pushBulkMessage(CLASS, {{events[0].get(), nullptr}, {events[1].get(), nullptr}}),
      0);
  EXPECT_EQ(
      manager().PushBulkMessage(CLASS, {{events[2].get(), nullptr}, {events[3].get(), nullptr}}),
      0);
  EXPECT_THAT(fetchUntil("d", CLASS, CLIENT), ElementsAre("a", "b", "c", "d"));
}

TEST_F(MessageMgrTest, nullInABulkIsOfferedAndRefusedByTheClientAlone) {
  subscribe(CLASS, new ScriptedFilter(script));
  const auto events = makeEvents({"a", "b"});
  EXPECT_EQ(
      manager().pushBulkMessage(
          CLASS, {{events[0].get(), nullptr}, {nullptr, nullptr}, {events[1].get(), nullptr}}),
      0);
  EXPECT_EQ(manager().PushBulkMessage(CLASS, {{nullptr, nullptr}, {events[0].get(), nullptr}}), 0);
  EXPECT_EQ(script.contexts.size(), 5U);
  EXPECT_THAT(fetchUntil("a", CLASS, CLIENT).size(), testing::Le(3U));
  push(CLASS, "last");
  fetchUntil("last", CLASS, CLIENT);
  EXPECT_EQ(countOf(trace.texts(),
                    "3 [Nex_MsgAgent::pushmsg]Received alarm in Pull Alarm Message agent."),
            4);
}

TEST_F(MessageMgrTest, emptyBulkGivesZero) {
  EXPECT_EQ(manager().pushBulkMessage(CLASS, {}), 0);
  EXPECT_EQ(manager().PushBulkMessage(CLASS, {}), 0);
  EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(MessageMgrTest, setReportStatusTracesItsEntryFirst) {
  manager().setReportStatus(CLASS, CLIENT, true);
  EXPECT_THAT(trace.texts(), ElementsAre("4 NXMessageMgr::setReportStatus in",
                                         "3 [NXMessageHandle::setReportStatus]enter.",
                                         "3 [NXMessageHandle::setReportStatus]. clientID=4",
                                         "3 [NXMessageHandle::setReportStatus]exit."));
  EXPECT_EQ(trace.lines()[0].file, "messagecach.cpp");
  EXPECT_EQ(trace.lines()[0].function, "unknown");
}

TEST_F(MessageMgrTest, criteriaAndResultsPassThrough) {
  script.result = 17;
  script.second = {"north"};
  subscribe(CLASS, new ScriptedFilter(script));
  std::vector<long> first{1};
  std::vector<std::string> second;
  std::vector<long> also{1, 2};
  std::vector<long> third{1, 2, 3};
  std::vector<long> fourth{1, 2, 3, 4};
  stDateTimeType from{2001, 0, 0, 0, 0, 0};
  stDateTimeType to{2002, 0, 0, 0, 0, 0};
  std::vector<std::string> fifth{"a"};
  NXMessageMgr& mgr = manager();
  EXPECT_EQ(mgr.suspendFilter(CLASS, CLIENT, first, also, third, fourth, from, to, fifth), 17);
  EXPECT_EQ(mgr.resumeFilter(CLASS, CLIENT, first, also, third, fourth, from, to, fifth), 17);
  EXPECT_EQ(mgr.cancelFilter(CLASS, CLIENT, first, also, third, fourth, from, to, fifth), 17);
  EXPECT_EQ(mgr.GetFilter(CLASS, CLIENT, first, second, third, fourth, from, to, fifth), 17);
  EXPECT_THAT(script.calls,
              ElementsAre("suspendFilter 1 2 3 4 2001 2002 1", "resumeFilter 1 2 3 4 2001 2002 1",
                          "cancelFilter 1 2 3 4 2001 2002 1", "GetFilter 1 0 3 4 2001 2002 1"));
  EXPECT_THAT(second, ElementsAre("north"));
}

TEST_F(MessageMgrTest, layerFilterAndFilterReachTheClass) {
  EXPECT_EQ(manager().setLayerFilter(CLASS, CLIENT, {{{1, 2}, true}}), 0);
  EXPECT_EQ(manager().setFilter(CLASS, CLIENT, new ScriptedFilter(script)), 0);
  EXPECT_THAT(fetch(CLASS, CLIENT), IsEmpty());
  EXPECT_EQ(manager().unSubscribeMsg(CLASS, CLIENT), 0);
  EXPECT_EQ(script.deletions, 1);
  EXPECT_THAT(fetch(CLASS, CLIENT), ElementsAre("(none)"));
}

// Holds its class in the middle of a distribution until it is let go.
class HoldingFilter : public ScriptedFilter {
 public:
  HoldingFilter(FilterScript& script, std::promise<void>& entered, std::shared_future<void> leave)
      : ScriptedFilter(script), entered_(entered), leave_(std::move(leave)) {}
  bool isFiltered(const void*) override {
    entered_.set_value();
    leave_.wait();
    return false;
  }

 private:
  std::promise<void>& entered_;
  std::shared_future<void> leave_;
};

TEST_F(MessageMgrTest, classesDoNotWaitForEachOther) {
  std::promise<void> entered;
  std::promise<void> leave;
  subscribe(CLASS, new HoldingFilter(script, entered, leave.get_future().share()));
  subscribe(OTHER_CLASS);
  auto held = std::async(std::launch::async, [&] { return push(CLASS, "a"); });
  entered.get_future().wait();
  push(OTHER_CLASS, "b");
  EXPECT_THAT(fetchUntil("b", OTHER_CLASS, CLIENT), ElementsAre("b"));
  leave.set_value();
  EXPECT_EQ(held.get(), 0);
  EXPECT_THAT(fetchUntil("a", CLASS, CLIENT), ElementsAre("a"));
}

}  // namespace
}  // namespace zk::test
