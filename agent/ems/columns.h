// Where the inventory's file keeps each record: its table, and which column holds
// which member.
#ifndef ZK_AGENT_EMS_COLUMNS_H
#define ZK_AGENT_EMS_COLUMNS_H

#include <array>
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
      std::make_tuple(
          Column{"id", &LinkRecord::id}, Column{"direction", &LinkRecord::direction},
          Column{"rate", &LinkRecord::rate},
          Column{"a_device", [](auto& link) -> auto& { return link.aEnd.deviceId;
}
}  // namespace zk::agent
, Column{"a_port", [](auto& link) -> auto& {return link.aEnd.port;
}
}
, Column{"z_device", [](auto& link) -> auto& {return link.zEnd.deviceId;
}
}
, Column{"z_port", [](auto& link) -> auto& {return link.zEnd.port;
}
}),
      LABELS);
}
;

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

}  // namespace zk::agent

#endif
