// How the cache keeps a client's filter, passes operations on to it, and asks it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tests/messages/support.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::NXLayerFilter;
using NS_QUORCORBA::NXMessageCache;
using NS_QUORCORBA::NXMessageHandle;
using NS_QUORCORBA::stDateTimeType;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr long CLIENT = 7;
constexpr long STRANGER = 8;

// The arguments of one criteria operation, not empty so that a change shows.
struct Arguments {
  std::vector<long> first{1};
  std::vector<std::string> names{"a", "b"};
  std::vector<long> second{1, 2};
  std::vector<long> third{1, 2, 3};
  std::vector<long> fourth{1, 2, 3, 4};
  std::vector<std::string> fifth{"a", "b", "c", "d", "e"};
  stDateTimeType start{2001, 1, 1, 0, 0, 0};
  stDateTimeType end{2002, 1, 1, 0, 0, 0};

  int get(NXMessageHandle& handle, long client) {
    return handle.GetFilter(client, first, names, third, fourth, start, end, fifth);
  }
  int suspend(NXMessageHandle& handle, long client) {
    return handle.suspendFilter(client, first, second, third, fourth, start, end, fifth);
  }
  int resume(NXMessageHandle& handle, long client) {
    return handle.resumeFilter(client, first, second, third, fourth, start, end, fifth);
  }
  int cancel(NXMessageHandle& handle, long client) {
    return handle.cancelFilter(client, first, second, third, fourth, start, end, fifth);
  }

  bool areUntouched() const {
    const Arguments fresh;
    return first == fresh.first && names == fresh.names && second == fresh.second &&
           third == fresh.third && fourth == fresh.fourth && fifth == fresh.fifth &&
           start.year == fresh.start.year && end.year == fresh.end.year;
  }
};

class FiltersTest : public testing::Test {
 protected:
  NS_QUORCORBA::NXMessageFilter* makeFilter() { return new ScriptedFilter(script); }

  // A client with reporting on and the scripted filter.
  void makeClient() {
    handle.setReportStatus(CLIENT, true);
    handle.setFilter(CLIENT, makeFilter());
    trace.clear();
  }

  void expectOrigins() {
    for (const TraceLine& line : trace.lines()) {
      EXPECT_EQ(line.file, "messagecach.cpp");
      EXPECT_EQ(line.function, "unknown");
      EXPECT_GT(line.line, 0);
    }
  }

  FixedAgentConfig config;
  CapturedTrace trace;
  FilterScript script;
  NXMessageHandle handle;
};

TEST_F(FiltersTest, setFilterTracesKnownClient) {
  makeClient();
  EXPECT_EQ(handle.setFilter(CLIENT, nullptr), 0);
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageHandle::setFilter]enter.",
                                         "3 [NXMessageHandle::setFilter]exit."));
  expectOrigins();
}

TEST_F(FiltersTest, setFilterCreatesUnknownClient) {
  EXPECT_EQ(handle.setFilter(CLIENT, makeFilter()), 0);
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageHandle::setFilter]enter.",
                                         "3 [NXMessageHandle::setFilter]not found. clientID=7",
                                         "3 [NXMessageHandle::setFilter]exit."));
  expectOrigins();
  EXPECT_THAT(fetch(handle, CLIENT), IsEmpty());
  script.result = 11;
  EXPECT_EQ(Arguments().get(handle, CLIENT), 11);
}

TEST_F(FiltersTest, clientMadeBySetFilterReportsNothingYet) {
  handle.setFilter(CLIENT, nullptr);
  push(handle, "before");
  handle.setReportStatus(CLIENT, true);
  push(handle, "after");
  EXPECT_THAT(fetchUntil("after", handle, CLIENT), ElementsAre("after"));
}

TEST_F(FiltersTest, setLayerFilterTracesKnownClient) {
  makeClient();
  EXPECT_EQ(handle.setLayerFilter(CLIENT, {{{1, 2}, true}}), 0);
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageHandle::setLayerFilter]enter.",
                                         "3 [NXMessageHandle::setLayerFilter]exit."));
  expectOrigins();
}

TEST_F(FiltersTest, setLayerFilterCreatesUnknownClient) {
  EXPECT_EQ(handle.setLayerFilter(CLIENT, {}), 0);
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageHandle::setLayerFilter]enter.",
                                         "3 [NXMessageHandle::setLayerFilter]. clientID=7",
                                         "3 [NXMessageHandle::setLayerFilter]exit."));
  expectOrigins();
  EXPECT_THAT(fetch(handle, CLIENT), IsEmpty());
}

// One operation on criteria and the lines it writes.
struct CriteriaCase {
  const char* name;
  int (Arguments::*call)(NXMessageHandle&, long);
  Texts unknown;
  Texts known;
  const char* passedOn;
};

class CriteriaTest : public FiltersTest, public testing::WithParamInterface<CriteriaCase> {};

TEST_P(CriteriaTest, unknownClientIsTracedAndNothingElse) {
  Arguments arguments;
  EXPECT_EQ((arguments.*GetParam().call)(handle, STRANGER), 0);
  EXPECT_TRUE(arguments.areUntouched());
  EXPECT_EQ(trace.texts(), GetParam().unknown);
  expectOrigins();
  EXPECT_THAT(fetch(handle, STRANGER), ElementsAre("(none)"));
}

TEST_P(CriteriaTest, clientWithoutFilterGivesZero) {
  handle.setReportStatus(CLIENT, true);
  trace.clear();
  Arguments arguments;
  EXPECT_EQ((arguments.*GetParam().call)(handle, CLIENT), 0);
  EXPECT_TRUE(arguments.areUntouched());
  EXPECT_EQ(trace.texts(), GetParam().known);
  expectOrigins();
}

TEST_P(CriteriaTest, filterIsCalledOnceAndItsResultReturned) {
  makeClient();
  script.result = -42;
  Arguments arguments;
  EXPECT_EQ((arguments.*GetParam().call)(handle, CLIENT), -42);
  EXPECT_THAT(script.calls, ElementsAre(GetParam().passedOn));
  EXPECT_EQ(trace.texts(), GetParam().known);
}

INSTANTIATE_TEST_SUITE_P(
    Filters, CriteriaTest,
    testing::Values(
        CriteriaCase{
            "GetFilter",
            &Arguments::get,
            {"3 [NXMessageHandle::GetFilter]enter.", "3 [NXMessageHandle::GetFilter]. clientID=8",
             "3 [NXMessageHandle::setFilter]exit."},
            {"3 [NXMessageHandle::GetFilter]enter.", "3 [NXMessageCache::GetFilter]Enter.",
             "3 [NXMessageCache::GetFilter]Exit.", "3 [NXMessageHandle::setFilter]exit."},
            "GetFilter 1 2 3 4 2001 2002 5"},
        CriteriaCase{
            "suspendFilter",
            &Arguments::suspend,
            {"3 [NXMessageHandle::suspendFilter]enter.",
             "3 [NXMessageHandle::suspendFilter]. clientID=8",
             "3 [NXMessageHandle::suspendFilter]exit."},
            {"3 [NXMessageHandle::suspendFilter]enter.", "3 [NXMessageCache::suspendFilter]Enter.",
             "3 [NXMessageCache::suspendFilter]Exit.", "3 [NXMessageHandle::suspendFilter]exit."},
            "suspendFilter 1 2 3 4 2001 2002 5"},
        CriteriaCase{
            "resumeFilter",
            &Arguments::resume,
            {"3 [NXMessageHandle::resumeFilter]enter.",
             "3 [NXMessageHandle::resumeFilter]. clientID=8",
             "3 [NXMessageHandle::resumeFilter]exit."},
            {"3 [NXMessageHandle::resumeFilter]enter.", "3 [NXMessageCache::suspendFilter]Enter.",
             "3 [NXMessageHandle::resumeFilter]exit."},
            "resumeFilter 1 2 3 4 2001 2002 5"},
        CriteriaCase{
            "cancelFilter",
            &Arguments::cancel,
            {"3 [NXMessageHandle::cancelFilter]enter.",
             "3 [NXMessageHandle::cancelFilter]. clientID=8",
             "3 [NXMessageHandle::cancelFilter]exit."},
            {"3 [NXMessageHandle::cancelFilter]enter.", "3 [NXMessageHandle::cancelFilter]exit."},
            "cancelFilter 1 2 3 4 2001 2002 5"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(FiltersTest, getFilterReportsWhatTheFilterReports) {
  makeClient();
  script.first = {4, 5};
  script.second = {"north"};
  script.third = {};
  script.fourth = {6};
  script.fifth = {"x", "y"};
  script.start = validTime();
  Arguments arguments;
  arguments.get(handle, CLIENT);
  EXPECT_EQ(arguments.first, script.first);
  EXPECT_EQ(arguments.names, script.second);
  EXPECT_EQ(arguments.third, script.third);
  EXPECT_EQ(arguments.fourth, script.fourth);
  EXPECT_EQ(arguments.fifth, script.fifth);
  EXPECT_EQ(arguments.start.year, 2012);
  EXPECT_EQ(arguments.end.year, 0);
}

TEST_F(FiltersTest, sameFilterAgainIsNotDeleted) {
  auto* filter = makeFilter();
  handle.setFilter(CLIENT, filter);
  handle.setFilter(CLIENT, filter);
  EXPECT_EQ(script.deletions, 0);
  script.result = 3;
  EXPECT_EQ(Arguments().get(handle, CLIENT), 3);
  handle.unSubscribeMsg(CLIENT);
  EXPECT_EQ(script.deletions, 1);
}

TEST_F(FiltersTest, replacedFilterIsDeletedOnce) {
  FilterScript second;
  handle.setFilter(CLIENT, makeFilter());
  handle.setFilter(CLIENT, new ScriptedFilter(second));
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(second.deletions, 0);
  handle.unSubscribeMsg(CLIENT);
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(second.deletions, 1);
}

TEST_F(FiltersTest, nullRemovesTheFilterAndEverythingPasses) {
  script = askingScript();
  script.drops = true;
  makeClient();
  push(handle, "dropped");
  handle.setFilter(CLIENT, nullptr);
  EXPECT_EQ(script.deletions, 1);
  push(handle, "passed");
  EXPECT_THAT(fetchUntil("passed", handle, CLIENT), ElementsAre("passed"));
}

TEST_F(FiltersTest, filterDecidesWhatPasses) {
  script = askingScript();
  makeClient();
  push(handle, "a");
  script.drops = true;
  push(handle, "b");
  script.drops = false;
  push(handle, "c");
  EXPECT_THAT(fetchUntil("c", handle, CLIENT), ElementsAre("a", "c"));
}

TEST_F(FiltersTest, filterGetsTheContextOfEachPush) {
  script = askingScript();
  makeClient();
  const int context = 0;
  push(handle, "a", &context);
  push(handle, "b", nullptr);
  push(handle, "c", this);
  EXPECT_THAT(script.contexts, ElementsAre(static_cast<const void*>(&context), nullptr,
                                           static_cast<const void*>(this)));
}

TEST_F(FiltersTest, emptinessIsAskedAnewForEveryEventWithFreshArguments) {
  script = askingScript();
  script.start = validTime();
  makeClient();
  push(handle, "a");
  push(handle, "b");
  EXPECT_THAT(script.calls, ElementsAre("GetFilter 0 0 0 0 0 0 0", "GetFilter 0 0 0 0 0 0 0"));
  EXPECT_EQ(script.contexts.size(), 2U);
}

TEST_F(FiltersTest, resultOfGetFilterDoesNotMakeItEmpty) {
  script = askingScript();
  script.result = -1;
  script.drops = true;
  makeClient();
  push(handle, "a");
  EXPECT_EQ(script.contexts.size(), 1U);
}

TEST_F(FiltersTest, filterOfSilentClientIsNotAsked) {
  script = askingScript();
  makeClient();
  handle.setReportStatus(CLIENT, false);
  push(handle, "a");
  EXPECT_THAT(script.calls, IsEmpty());
  EXPECT_THAT(script.contexts, IsEmpty());
}

// One way for a filter to hold criteria, or not to.
struct EmptinessCase {
  const char* name;
  bool isAsked;
  std::function<void(FilterScript&)> fill;
};

class EmptinessTest : public FiltersTest, public testing::WithParamInterface<EmptinessCase> {};

TEST_P(EmptinessTest, onlyAFilterWithCriteriaIsAsked) {
  script.drops = true;
  GetParam().fill(script);
  makeClient();
  push(handle, "a");
  EXPECT_EQ(script.contexts.size(), GetParam().isAsked ? 1U : 0U);
  handle.setFilter(CLIENT, nullptr);
  push(handle, "last");
  EXPECT_EQ(fetchUntil("last", handle, CLIENT),
            GetParam().isAsked ? Texts{"last"} : (Texts{"a", "last"}));
}

INSTANTIATE_TEST_SUITE_P(
    Filters, EmptinessTest,
    testing::Values(
        EmptinessCase{"nothing", false, [](FilterScript&) {}},
        EmptinessCase{"first", true, [](FilterScript& script) { script.first = {0}; }},
        EmptinessCase{"second", true, [](FilterScript& script) { script.second = {""}; }},
        EmptinessCase{"third", true, [](FilterScript& script) { script.third = {0}; }},
        EmptinessCase{"fourth", true, [](FilterScript& script) { script.fourth = {0}; }},
        EmptinessCase{"fifth", true, [](FilterScript& script) { script.fifth = {""}; }},
        EmptinessCase{"start", true, [](FilterScript& script) { script.start = validTime(); }},
        EmptinessCase{"end", true, [](FilterScript& script) { script.end = validTime(); }},
        EmptinessCase{"invalidDates", false,
                      [](FilterScript& script) {
                        script.start = {2012, 13, 1, 0, 0, 0};
                        script.end = {2013, 2, 29, 0, 0, 0};
                      }},
        EmptinessCase{"invalidStartAndValidEnd", true,
                      [](FilterScript& script) {
                        script.start = {2012, 13, 1, 0, 0, 0};
                        script.end = validTime();
                      }}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(FiltersTest, layerFilterMergesEntryByEntry) {
  NXMessageCache cache;
  EXPECT_THAT(cache.layerFilter(), IsEmpty());
  cache.mergeLayerFilter({{{1, 2}, true}});
  cache.mergeLayerFilter({{{1, 2}, false}, {{3, 4}, true}});
  EXPECT_EQ(cache.layerFilter(), (NXLayerFilter{{{1, 2}, false}, {{3, 4}, true}}));
  cache.mergeLayerFilter({});
  EXPECT_EQ(cache.layerFilter(), (NXLayerFilter{{{1, 2}, false}, {{3, 4}, true}}));
}

TEST_F(FiltersTest, layerFilterDoesNotTouchDelivery) {
  handle.setReportStatus(CLIENT, true);
  handle.setLayerFilter(CLIENT, {{{0, 0}, false}, {{1, 2}, true}});
  push(handle, "a");
  EXPECT_THAT(fetchUntil("a", handle, CLIENT), ElementsAre("a"));
}

}  // namespace
}  // namespace zk::test
