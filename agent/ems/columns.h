// Where the inventory's file keeps each record: its table, and which column holds
// which member; and what follows from that: the SQL texts about its rows, and how
// a row is read and written.
#ifndef ZK_AGENT_EMS_COLUMNS_H
#define ZK_AGENT_EMS_COLUMNS_H

#include <SQLiteCpp/SQLiteCpp.h>

#include <array>
#include <chrono>
#include <cstring>
#include <functional>
#include <string>
#include <tuple>

#include "agent/ems/records.h"

namespace zk::agent {

// member is what std::invoke takes: a pointer to the member, or a function that
// gives a reference to it.
template <class Member>
struct Column {
  const char* name;
  Member member;
  bool orNull = false;  // the empty text and 0 refer to nothing, and are null
};
template <class Member>
Column(const char*, Member) -> Column<Member>;
template <class Member>
Column(const char*, Member, bool) -> Column<Member>;

// A table, and for one that holds other records too, the column and value by
// which a row of this one is known.
struct Place {
  const char* table;
  const char* column = nullptr;
  const char* value = nullptr;

  // For a WHERE clause.
  std::string condition() const {
    return column == nullptr ? "1" : std::string(column) + " = " + value;
  }
};

// PLACE, and COLUMNS in any order.
template <class Record>
struct Table;

inline constexpr bool OR_NULL = true;

// A part of a member.
template <class Member, class Part>
constexpr auto within(Member member, Part part) {
  return [member, part](auto& record) -> decltype(auto) { return (record.*member.*part); };
}

inline constexpr auto LABELS =
    std::make_tuple(Column{"user_label", &Labels::userLabel}, Column{"owner", &Labels::owner},
                    Column{"native_name", &Labels::nativeName});

template <>
struct Table<EmsRecord> {
  static constexpr Place PLACE{"ems", "id", "''"};
  static constexpr auto COLUMNS = LABELS;
};

template <>
struct Table<DeviceRecord> {
  static constexpr Place PLACE{"device"};
  static constexpr auto COLUMNS = std::make_tuple(
      Column{"id", &DeviceRecord::id}, Column{"native_name", &DeviceRecord::name},
      Column{"product_name", &DeviceRecord::productName},
      Column{"user_label", &DeviceRecord::userLabel}, Column{"owner", &DeviceRecord::owner},
      Column{"version", &DeviceRecord::version}, Column{"location", &DeviceRecord::location},
      Column{"site_id", &DeviceRecord::siteId, OR_NULL});
};

template <>
struct Table<SubnetworkRecord> {
  static constexpr Place PLACE{"subnetwork"};
  static constexpr auto COLUMNS =
      std::tuple_cat(std::make_tuple(Column{"id", &SubnetworkRecord::id},
                                     Column{"topology", &SubnetworkRecord::topology}),
                     LABELS);
};

template <>
struct Table<LinkRecord> {
  static constexpr Place PLACE{"link"};
  static constexpr auto COLUMNS = std::tuple_cat(
      std::make_tuple(Column{"id", &LinkRecord::id}, Column{"direction", &LinkRecord::direction},
                      Column{"rate", &LinkRecord::rate},
                      Column{"a_device", within(&LinkRecord::aEnd, &LinkEnd::deviceId)},
                      Column{"a_port", within(&LinkRecord::aEnd, &LinkEnd::port)},
                      Column{"z_device", within(&LinkRecord::zEnd, &LinkEnd::deviceId)},
                      Column{"z_port", within(&LinkRecord::zEnd, &LinkEnd::port)}),
      LABELS);
};

// Nodes and submaps share one table, in which the kind has the number that it
// has here.
static_assert(static_cast<int>(ObjectKind::NODE) == 4 &&
              static_cast<int>(ObjectKind::SUB_MAP) == 5);

template <>
struct Table<NodeRecord> {
  static constexpr Place PLACE{"map_object", "kind", "4"};
  static constexpr auto COLUMNS =
      std::tuple_cat(std::make_tuple(Column{"id", &NodeRecord::id},
                                     Column{"parent_id", &NodeRecord::parentId, OR_NULL},
                                     Column{"device_id", &NodeRecord::deviceId}),
                     LABELS);
};

template <>
struct Table<SubMapRecord> {
  static constexpr Place PLACE{"map_object", "kind", "5"};
  static constexpr auto COLUMNS =
      std::tuple_cat(std::make_tuple(Column{"id", &SubMapRecord::id},
                                     Column{"parent_id", &SubMapRecord::parentId, OR_NULL}),
                     LABELS);
};

template <>
struct Table<DisplayLinkRecord> {
  static constexpr Place PLACE{"display_link"};
  static constexpr auto COLUMNS = std::tuple_cat(
      std::make_tuple(
          Column{"id", &DisplayLinkRecord::id}, Column{"parent_id", &DisplayLinkRecord::parentId},
          Column{"a_end", &DisplayLinkRecord::aEndId}, Column{"z_end", &DisplayLinkRecord::zEndId}),
      LABELS);
};

template <>
struct Table<PhysicalLinkRecord> {
  static constexpr Place PLACE{"physical_link"};
  static constexpr auto COLUMNS = std::make_tuple(Column{"id", &PhysicalLinkRecord::id},
                                                  Column{"link_id", &PhysicalLinkRecord::linkId});
};

// A new alarm's id is null, which SQLite replaces by the next number.
template <>
struct Table<AlarmRecord> {
  static constexpr Place PLACE{"alarm"};
  static constexpr auto COLUMNS = std::make_tuple(
      Column{"id", &AlarmRecord::id, OR_NULL}, Column{"device_id", &AlarmRecord::deviceId, OR_NULL},
      Column{"probable_cause", &AlarmRecord::probableCause},
      Column{"qualifier", &AlarmRecord::qualifier},
      Column{"native_probable_cause", &AlarmRecord::nativeProbableCause},
      Column{"severity", &AlarmRecord::severity}, Column{"raised_at", &AlarmRecord::raisedAt},
      Column{"additional_text", &AlarmRecord::additionalText});
};

// Where the objects of a kind are.
inline const Place& placeOf(ObjectKind kind) {
  static constexpr std::array<Place, 8> PLACES{
      {Table<EmsRecord>::PLACE, Table<DeviceRecord>::PLACE, Table<SubnetworkRecord>::PLACE,
       Table<LinkRecord>::PLACE, Table<NodeRecord>::PLACE, Table<SubMapRecord>::PLACE,
       Table<DisplayLinkRecord>::PLACE, Table<PhysicalLinkRecord>::PLACE}};
  return PLACES[static_cast<std::size_t>(kind)];
}

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
