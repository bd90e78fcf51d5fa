// What follows from a record's columns: the SQL texts about its rows, and how a
// row is read and written.
#ifndef ZK_AGENT_EMS_ROWS_H
#define ZK_AGENT_EMS_ROWS_H

#include <SQLiteCpp/SQLiteCpp.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <string>

#include "agent/ems/columns.h"

namespace zk::agent {

template <class Record, class Function>
void forEachColumn(Function&& function) {
  std::apply([&](const auto&... column) { (function(column), ...); }, Table<Record>::COLUMNS);
}

// --- SQL texts ---

// The condition's own parameters come first to last, here and below.
template <class Record>
std::string selectOf(const std::string& condition) {
  std::string names;
  forEachColumn<Record>(
      [&](const auto& column) { names += (names.empty() ? "" : ", ") + std::string(column.name); });
  const Place& place = Table<Record>::PLACE;
  return "SELECT " + names + " FROM " + place.table + " WHERE " + place.condition() + " AND " +
         condition;
}

// Its parameters are those that bindRow fills.
template <class Record>
std::string insertOf() {
  const Place& place = Table<Record>::PLACE;
  std::string names = place.column == nullptr ? "" : std::string(", ") + place.column;
  std::string values = place.column == nullptr ? "" : std::string(", ") + place.value;
  forEachColumn<Record>([&](const auto& column) {
    names += std::string(", ") + column.name;
    values += ", ?";
  });
  return std::string("INSERT INTO ") + place.table + " (" + names.substr(2) + ") VALUES (" +
         values.substr(2) + ")";
}

// Its parameters are those that bindRow fills, and after them the id. What it
// leaves unused of them is the id among the columns.
template <class Record>
std::string updateOf() {
  std::string changes;
  int number = 0;
  forEachColumn<Record>([&](const auto& column) {
    ++number;
    if (std::strcmp(column.name, "id") != 0) {
      changes += (changes.empty() ? "" : ", ") + std::string(column.name) + " = ?" +
                 std::to_string(number);
    }
  });
  const Place& place = Table<Record>::PLACE;
  return std::string("UPDATE ") + place.table + " SET " + changes + " WHERE " + place.condition() +
         " AND id = ?" + std::to_string(number + 1);
}

// --- Values: null reads as 0 or the empty text ---

using Time = std::chrono::system_clock::time_point;

inline void readValue(const SQLite::Column& from, std::string& value) { value = from.getString(); }
inline void readValue(const SQLite::Column& from, Time& value) {
  value = Time(std::chrono::milliseconds(from.getInt64()));
}
template <class Number>
void readValue(const SQLite::Column& from, Number& value) {
  value = static_cast<Number>(from.getInt64());
}

inline const std::string& stored(const std::string& text) { return text; }
inline long stored(Time time) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count();
}
template <class Number>
long stored(Number number) {
  return static_cast<long>(number);
}

// --- Rows ---

// row holds one, as selectOf asks for it.
template <class Record>
void readRow(const SQLite::Statement& row, Record& record) {
  int index = 0;
  forEachColumn<Record>([&](const auto& column) {
    readValue(row.getColumn(index++), std::invoke(column.member, record));
  });
}

// Fills the statement's first parameters, one for each column, and returns the
// number of the next.
template <class Record>
int bindRow(SQLite::Statement& statement, const Record& record) {
  int number = 1;
  forEachColumn<Record>([&](const auto& column) {
    const auto& value = std::invoke(column.member, record);
    if (column.orNull && value == std::decay_t<decltype(value)>()) {
      statement.bind(number++);
    } else {
      statement.bind(number++, stored(value));
    }
  });
  return number;
}

}  // namespace zk::agent

#endif
