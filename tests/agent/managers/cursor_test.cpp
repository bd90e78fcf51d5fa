#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

#include "agent/base/sequences.h"
#include "agent/managers/iterators.h"
#include "tests/agent/support/names.h"

namespace {

using namespace zk::agent;
using List = globaldefs::NamingAttributesList_T;

// Entries ("N", index), without those that are gone.
PagedList<List> numbered(std::size_t length, const std::set<std::size_t>& gone = {}) {
  return {length, [gone](std::size_t from, std::size_t count, List& out) {
            for (std::size_t i = from; i < from + count; ++i) {
              if (gone.count(i) == 0) {
                append(out, zk::test::nameOf({{"N", std::to_string(i)}}));
              }
            }
          }};
}

std::string indexes(const List& list) {
  std::string text;
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    text += std::string(list[i][0].value) + " ";
  }
  return text;
}

TEST(Cursor, handsOutEachEntryOnceAndInOrder) {
  Cursor<List> cursor(numbered(5));
  List first;
  EXPECT_TRUE(cursor.take(2, first));
  EXPECT_EQ(indexes(first), "0 1 ");
  List second;
  EXPECT_TRUE(cursor.take(2, second));
  EXPECT_EQ(indexes(second), "2 3 ");
  List third;
  EXPECT_FALSE(cursor.take(2, third));
  EXPECT_EQ(indexes(third), "4 ");
  List none;
  EXPECT_FALSE(cursor.take(2, none));
  EXPECT_EQ(indexes(none), "");
}

TEST(Cursor, knowsWhenTheLastPageWasExact) {
  Cursor<List> cursor(numbered(4));
  List list;
  EXPECT_TRUE(cursor.take(2, list));
  EXPECT_FALSE(cursor.take(2, list));
}

TEST(Cursor, takesNothingForZero) {
  Cursor<List> cursor(numbered(1));
  List list;
  EXPECT_TRUE(cursor.take(0, list));
  EXPECT_EQ(list.length(), 0U);
}

TEST(Cursor, hasNothingMoreWhenEmpty) {
  Cursor<List> cursor(numbered(0));
  List list;
  EXPECT_FALSE(cursor.take(0, list));
  EXPECT_FALSE(cursor.take(10, list));
}

TEST(Cursor, passesOverEntriesThatAreGoneAndStillFillsThePage) {
  Cursor<List> cursor(numbered(6, {1, 2, 5}));
  List first;
  EXPECT_TRUE(cursor.take(2, first));
  EXPECT_EQ(indexes(first), "0 3 ");
  List rest;
  EXPECT_FALSE(cursor.take(5, rest));
  EXPECT_EQ(indexes(rest), "4 ");
}

TEST(Cursor, countsWholeAnswerWhateverIsTaken) {
  Cursor<List> cursor(numbered(6, {1}));
  List list;
  cursor.take(4, list);
  EXPECT_EQ(cursor.length(), 6U);
}

TEST(Cursor, staysWhereItIsWhenFetchingFails) {
  bool failing = true;
  PagedList<List> list = numbered(3);
  Cursor<List> cursor({3, [&, inner = list.append](std::size_t from, std::size_t count, List& out) {
                         if (failing) {
                           throw std::runtime_error("no");
                         }
                         inner(from, count, out);
                       }});
  List out;
  EXPECT_THROW(cursor.take(2, out), std::runtime_error);
  failing = false;
  List again;
  EXPECT_TRUE(cursor.take(2, again));
  EXPECT_EQ(indexes(again), "0 1 ");
}

}  // namespace
