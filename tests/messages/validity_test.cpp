// Which clients are still valid: asked for each on every push, before anything
// is delivered; and what happens when there is nobody to ask.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <future>
#include <set>

#include "tests/messages/support.h"
#include "zk_quornex/notify/exceptions.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::NXMessageHandle;
using NS_QUORCORBA::NXMessageMgr;
using testing::ElementsAre;
using testing::IsEmpty;

// Writes each question into a journal. The journal is shared with filters, so
// that a test sees the order of both.
class JournalSecurity : public NS_SECURITY_SERVICE1::SecurityIF {
 public:
  explicit JournalSecurity(Texts& journal) : journal_(journal) {}

  bool IsClientValid(long clientId, long sessionId, const char* user, const char* operation,
                     const char* object) override {
    journal_.push_back("valid " + std::to_string(clientId) + " " + std::to_string(sessionId) +
                       " '" + user + "' '" + operation + "' '" + object + "'");
    const bool isValid = invalid.count(clientId) == 0;
    if (vanishesAfter == clientId) {
      zk::platform::registerService("SecurityIF", nullptr);
    }
    return isValid;
  }

  std::set<long> invalid;
  long vanishesAfter = -1;  // the service unregisters itself when asked for this client

 private:
  Texts& journal_;
};

// Writes "ask <client>" and lets everything pass.
class JournalFilter : public ScriptedFilter {
 public:
  JournalFilter(FilterScript& script, Texts& journal, long client)
      : ScriptedFilter(script), journal_(journal), client_(client) {}
  bool isFiltered(const void*) override {
    journal_.push_back("ask " + std::to_string(client_));
    return false;
  }

 private:
  Texts& journal_;
  long client_;
};

class ValidityTest : public testing::Test {
 protected:
  void subscribe(long client) {
    handle.subscribeMsg(client, new JournalFilter(script, journal, client),
                        new CountedHandler(handlers));
    handle.setReportStatus(client, true);
  }

  FixedAgentConfig config;
  CapturedTrace trace;
  Texts journal;
  FilterScript script = askingScript();
  int handlers = 0;
  std::shared_ptr<JournalSecurity> security = std::make_shared<JournalSecurity>(journal);
  ScopedService service{"SecurityIF", security};
  NXMessageHandle handle;
};

TEST_F(ValidityTest, allAreAskedOnEveryPushBeforeAnyDelivery) {
  subscribe(3);
  subscribe(1);
  handle.setReportStatus(2, false);
  push(handle, "a");
  EXPECT_THAT(journal, ElementsAre("valid 1 1 '' '' ''", "valid 2 2 '' '' ''", "valid 3 3 '' '' ''",
                                   "ask 1", "ask 3"));
  journal.clear();
  push(handle, "b");
  EXPECT_EQ(journal.size(), 5U);
}

TEST_F(ValidityTest, invalidClientIsRemovedSilently) {
  subscribe(1);
  subscribe(2);
  push(handle, "a");
  trace.clear();
  journal.clear();
  security->invalid = {1};
  push(handle, "b");
  EXPECT_THAT(journal, ElementsAre("valid 1 1 '' '' ''", "valid 2 2 '' '' ''", "ask 2"));
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(handlers, 1);
  for (const std::string& text : trace.texts()) {
    EXPECT_THAT(text,
                testing::AnyOf(testing::HasSubstr("pushmsg"), testing::HasSubstr("assembleMsg")));
  }
  EXPECT_THAT(fetch(handle, 1), ElementsAre("(none)"));
  EXPECT_THAT(fetchUntil("b", handle, 2), ElementsAre("a", "b"));
  journal.clear();
  push(handle, "c");
  EXPECT_THAT(journal, ElementsAre("valid 2 2 '' '' ''", "ask 2"));
}

TEST_F(ValidityTest, removedClientIsUnknownAfterwards) {
  subscribe(1);
  security->invalid = {1};
  push(handle, "a");
  trace.clear();
  EXPECT_EQ(handle.unSubscribeMsg(1), 0);
  handle.setReportStatus(1, true);
  EXPECT_EQ(countOf(trace.texts(), "3 [NXMessageHandle::setReportStatus]. clientID=1"), 1);
}

TEST_F(ValidityTest, everyClientMayBecomeInvalidAtOnce) {
  for (const long client : {1L, 2L, 3L}) {
    subscribe(client);
  }
  security->invalid = {1, 2, 3};
  EXPECT_EQ(push(handle, "a"), 0);
  EXPECT_EQ(script.deletions, 3);
  journal.clear();
  EXPECT_EQ(push(handle, "b"), 0);
  EXPECT_THAT(journal, IsEmpty());
}

TEST_F(ValidityTest, removalFreesTheClientsEvents) {
  config.eventlistsize = 1;
  subscribe(1);
  const auto events = makeEvents({"a", "b", "c", "d"});
  for (const HeldEvent& event : events) {
    handle.pushMessage(event.get(), nullptr);
  }
  security->invalid = {1};
  push(handle, "e");
  for (const HeldEvent& event : events) {
    EXPECT_TRUE(event->isLast());
  }
}

TEST_F(ValidityTest, nobodyIsNeededToAskWithoutClients) {
  const ScopedService none("SecurityIF", nullptr);
  EXPECT_EQ(push(handle, "a"), 0);
}

TEST_F(ValidityTest, newServiceIsAskedFromTheNextPushOn) {
  subscribe(1);
  push(handle, "a");
  Texts others;
  const auto other = std::make_shared<JournalSecurity>(others);
  const ScopedService replaced("SecurityIF", other);
  push(handle, "b");
  EXPECT_THAT(others, ElementsAre("valid 1 1 '' '' ''"));
}

// What follows leaves a class locked for good, so each runs in a process of its
// own that ends without cleaning up: 0 says that all was as expected.
#define CHECK_OR_EXIT(condition)                                           \
  do {                                                                     \
    if (!(condition)) {                                                    \
      std::fprintf(stderr, "line %d: not so: %s\n", __LINE__, #condition); \
      _exit(1);                                                            \
    }                                                                      \
  } while (false)

// The code of the exception that the push throws; 0 when it throws none.
template <class Push>
int codeOf(Push throwing) {
  try {
    throwing();
  } catch (const InterfaceNotExistException& missing) {
    return missing.code_;
  }
  return 0;
}

class MissingServiceTest : public ValidityTest {
 protected:
  MissingServiceTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

class Plain : public NS_BUNDLEMGR1::ServiceInterface {};

TEST_F(MissingServiceTest, throwsWithItsCode) {
  EXPECT_EXIT(
      {
        subscribe(1);
        const ScopedService none("SecurityIF", nullptr);
        const HeldEvent event = makeEvent("a");
        CHECK_OR_EXIT(codeOf([&] { handle.pushMessage(event.get(), nullptr); }) == 0x41180004);
        CHECK_OR_EXIT(event->isLast());
        CHECK_OR_EXIT(journal.empty());
        _exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(MissingServiceTest, serviceOfAnotherInterfaceCountsAsMissing) {
  EXPECT_EXIT(
      {
        subscribe(1);
        const ScopedService other("SecurityIF", std::make_shared<Plain>());
        CHECK_OR_EXIT(codeOf([&] { push(handle, "a"); }) == 0x41180004);
        _exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(MissingServiceTest, clientsAskedBeforeMayBeGoneButNothingIsDelivered) {
  EXPECT_EXIT(
      {
        subscribe(1);
        subscribe(2);
        subscribe(3);
        security->invalid = {1};
        security->vanishesAfter = 2;
        const HeldEvent event = makeEvent("a");
        CHECK_OR_EXIT(codeOf([&] { handle.pushMessage(event.get(), nullptr); }) == 0x41180004);
        CHECK_OR_EXIT((journal == Texts{"valid 1 1 '' '' ''", "valid 2 2 '' '' ''"}));
        CHECK_OR_EXIT(script.deletions == 1);
        CHECK_OR_EXIT(event->isLast());
        _exit(0);
      },
      testing::ExitedWithCode(0), "");
}

constexpr long BLOCKED = 901;
constexpr long FREE = 902;
constexpr long NEW = 903;

// Pushes on a thread of its own, which ends with the class lock held.
int codeOfPushWithoutService(long msgClass) {
  const ScopedService none("SecurityIF", nullptr);
  int code = 0;
  std::thread([&] {
    const HeldEvent event = makeEvent("a");
    code = codeOf([&] { NXMessageMgr::Instance()->pushMessage(msgClass, event.get(), nullptr); });
  }).join();
  return code;
}

bool isServed(long msgClass) {
  const HeldEvent event = makeEvent("a");
  NXMessageMgr::Instance()->pushMessage(msgClass, event.get(), nullptr);
  return eventually([&] {
    notifications::EventList_T* list = nullptr;
    NXMessageMgr::Instance()->getMsgList(msgClass, 1, list);
    const std::unique_ptr<notifications::EventList_T> owned(list);
    return list->length() == 1;
  });
}

// Ends the process with 0 if one class is locked for good while the other works
// on and the registry is free again.
[[noreturn]] void exitByWhoBlocks(const CapturedTrace& trace) {
  // Registering takes the registry for itself alone: a lookup left behind would
  // block it.
  {
    auto registered = std::async(std::launch::async,
                                 [] { return NXMessageMgr::Instance()->addMsgClassCache(NEW); });
    CHECK_OR_EXIT(registered.wait_for(std::chrono::seconds(60)) == std::future_status::ready);
  }
  auto blocked = std::async(std::launch::async, [] {
    return NXMessageMgr::Instance()->setReportStatus(BLOCKED, 1, true);
  });
  CHECK_OR_EXIT(eventually(
      [&] { return countOf(trace.texts(), "4 NXMessageMgr::setReportStatus in") == 3; }));
  for (int round = 0; round < 50; ++round) {
    CHECK_OR_EXIT(isServed(FREE));
  }
  CHECK_OR_EXIT(blocked.wait_for(std::chrono::milliseconds(300)) == std::future_status::timeout);
  _exit(0);
}

TEST_F(MissingServiceTest, classStaysLockedAndOthersGoOn) {
  EXPECT_EXIT(
      {
        for (const long msgClass : {BLOCKED, FREE}) {
          NXMessageMgr::Instance()->addMsgClassCache(msgClass);
          NXMessageMgr::Instance()->setReportStatus(msgClass, 1, true);
        }
        CHECK_OR_EXIT(codeOfPushWithoutService(BLOCKED) == 0x41180004);
        exitByWhoBlocks(trace);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace zk::test
