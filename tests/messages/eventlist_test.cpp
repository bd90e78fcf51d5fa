// One client's list: how events get into it, how it grows, how it is fetched.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/messages/support.h"
#include "tests/support/dump.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::NXMessageCache;
using NS_QUORCORBA::NXMessageHandle;
using testing::ElementsAre;
using testing::IsEmpty;

HeldEvent makeFullEvent() {
  HeldEvent event = makeEvent("full");
  CosNotification::StructuredEvent& content = *event->get();
  content.header.variable_header.length(2);
  content.header.variable_header[0].name = CORBA::string_dup("Priority");
  content.header.variable_header[0].value <<= static_cast<CORBA::Long>(7);
  content.header.variable_header[1].name = CORBA::string_dup("Timeout");
  content.header.variable_header[1].value <<= "never";
  content.filterable_data.length(3);
  content.filterable_data[1].name = CORBA::string_dup("objectName");
  content.filterable_data[1].value <<= makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}});
  content.filterable_data[2].name = CORBA::string_dup("edgePointRelated");
  content.filterable_data[2].value <<= CORBA::Any::from_boolean(true);
  content.remainder_of_body <<= "body";
  return event;
}

class EventListTest : public testing::Test {
 protected:
  // Hands the cache a reference of its own, as its agent's thread does.
  int assemble(NXMessageCache& cache, const HeldEvent& event) {
    event->addRef();
    return cache.assembleMsg(event.get());
  }

  int assemble(NXMessageCache& cache, const std::string& name) {
    return cache.assembleMsg(makeEvent(name).release());
  }

  FixedAgentConfig config;
  CapturedTrace trace;
};

TEST_F(EventListTest, fetchWithNothingNewGivesAnEmptyList) {
  NXMessageCache cache;
  notifications::EventList_T* list = nullptr;
  EXPECT_EQ(cache.getMsgList(list), 0);
  ASSERT_NE(list, nullptr);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  EXPECT_EQ(list->length(), 0U);
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageCache::getMsgList]index=0."));
}

TEST_F(EventListTest, everyFetchGivesAListOfItsOwn) {
  NXMessageCache cache;
  notifications::EventList_T* first = nullptr;
  notifications::EventList_T* second = nullptr;
  cache.getMsgList(first);
  cache.getMsgList(second);
  EXPECT_NE(first, second);
  delete first;
  delete second;
}

TEST_F(EventListTest, refusesNullEventSilently) {
  NXMessageCache cache;
  EXPECT_EQ(cache.assembleMsg(nullptr), -1);
  EXPECT_THAT(trace.texts(), IsEmpty());
  EXPECT_THAT(fetch(cache), IsEmpty());
}

TEST_F(EventListTest, copiesTheWholeEventAndGivesItsReferenceBack) {
  NXMessageCache cache;
  const HeldEvent event = makeFullEvent();
  const std::string before = dumpEvent(*event->get());
  EXPECT_EQ(assemble(cache, event), 0);
  EXPECT_TRUE(event->isLast());
  EXPECT_EQ(dumpEvent(*event->get()), before);

  notifications::EventList_T* list = nullptr;
  cache.getMsgList(list);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  ASSERT_EQ(list->length(), 1U);
  EXPECT_EQ(dumpEvent((*list)[0]), before);
}

TEST_F(EventListTest, copyIsIndependentOfTheSharedEvent) {
  NXMessageCache cache;
  const HeldEvent event = makeFullEvent();
  const std::string before = dumpEvent(*event->get());
  assemble(cache, event);
  event->get()->filterable_data[1].name = CORBA::string_dup("changed");
  event->get()->header.variable_header.length(0);
  event->get()->header.fixed_header.event_name = CORBA::string_dup("changed");

  notifications::EventList_T* list = nullptr;
  cache.getMsgList(list);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  EXPECT_EQ(dumpEvent((*list)[0]), before);
}

TEST_F(EventListTest, lastHoldersEventArrivesWhole) {
  NXMessageCache cache;
  HeldEvent event = makeFullEvent();
  const std::string before = dumpEvent(*event->get());
  EXPECT_EQ(cache.assembleMsg(event.release()), 0);

  notifications::EventList_T* list = nullptr;
  cache.getMsgList(list);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  ASSERT_EQ(list->length(), 1U);
  EXPECT_EQ(dumpEvent((*list)[0]), before);
}

TEST_F(EventListTest, lastHoldersEmptyEventArrivesEmpty) {
  NXMessageCache cache;
  cache.assembleMsg(new Event(new CosNotification::StructuredEvent));
  notifications::EventList_T* list = nullptr;
  cache.getMsgList(list);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  ASSERT_EQ(list->length(), 1U);
  EXPECT_EQ(dumpEvent((*list)[0]), dumpEvent(CosNotification::StructuredEvent()));
}

TEST_F(EventListTest, tracesLengthAndIndexOfEachEvent) {
  config.eventlistsize = 2;
  NXMessageCache cache;
  for (const char* name : {"a", "b", "c", "d"}) {
    EXPECT_EQ(assemble(cache, name), 0);
  }
  EXPECT_THAT(trace.texts(),
              ElementsAre("3 [NXMessageCache::assembleMsg]pEvents length =2, index_=1.",
                          "3 [NXMessageCache::assembleMsg]pEvents length =2, index_=2.",
                          "3 [NXMessageCache::assembleMsg]pEvents length =3, index_=3.",
                          "3 [NXMessageCache::assembleMsg]pEvents length =4, index_=4."));
  for (const TraceLine& line : trace.lines()) {
    EXPECT_EQ(line.file, "messagecach.cpp");
    EXPECT_EQ(line.function, "unknown");
    EXPECT_GT(line.line, 0);
  }
  trace.clear();
  EXPECT_THAT(fetch(cache), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageCache::getMsgList]index=4."));
}

TEST_F(EventListTest, startsAnewAfterEachFetch) {
  config.eventlistsize = 2;
  NXMessageCache cache;
  for (const char* name : {"a", "b", "c"}) {
    assemble(cache, name);
  }
  EXPECT_THAT(fetch(cache), ElementsAre("a", "b", "c"));
  EXPECT_EQ(cache.index_, 0);
  trace.clear();
  assemble(cache, "d");
  EXPECT_THAT(trace.texts(),
              ElementsAre("3 [NXMessageCache::assembleMsg]pEvents length =2, index_=1."));
  EXPECT_THAT(fetch(cache), ElementsAre("d"));
}

TEST_F(EventListTest, sizeZeroMeans500Entries) {
  config.eventlistsize = 0;
  NXMessageCache cache;
  assemble(cache, "a");
  EXPECT_THAT(trace.texts(),
              ElementsAre("3 [NXMessageCache::assembleMsg]pEvents length =500, index_=1."));
}

TEST_F(EventListTest, takesTheSizeConfiguredWhenTheClientIsMade) {
  config.eventlistsize = 7;
  NXMessageCache cache;
  config.eventlistsize = 9;
  assemble(cache, "a");
  fetch(cache);
  assemble(cache, "b");
  EXPECT_EQ(countOf(trace.texts(), "3 [NXMessageCache::assembleMsg]pEvents length =7, index_=1."),
            2);
}

TEST_F(EventListTest, fetchedListIsTheCallersAlone) {
  NXMessageHandle handle;
  handle.setReportStatus(1, true);
  push(handle, "a");
  notifications::EventList_T* list = nullptr;
  ASSERT_TRUE(eventually([&] {
    delete list;
    list = nullptr;
    handle.getMsgList(1, list);
    return list->length() > 0;
  }));
  const std::unique_ptr<notifications::EventList_T> owned(list);
  push(handle, "b");
  EXPECT_THAT(fetchUntil("b", handle, 1), ElementsAre("b"));
  handle.unSubscribeMsg(1);
  EXPECT_THAT(namesOf(*list), ElementsAre("a"));
}

TEST_F(EventListTest, unknownClientsListIsUntouched) {
  NXMessageHandle handle;
  notifications::EventList_T kept;
  notifications::EventList_T* list = &kept;
  EXPECT_EQ(handle.getMsgList(5, list), 0);
  EXPECT_EQ(list, &kept);
  EXPECT_THAT(trace.texts(), IsEmpty());
}

}  // namespace
}  // namespace zk::test
