// What the embedded EMS knows of each object: plain values, owned by whoever
// holds them. All texts are UTF-8.
#ifndef ZK_AGENT_EMS_RECORDS_H
#define ZK_AGENT_EMS_RECORDS_H

#include <chrono>
#include <string>
#include <variant>

#include "zk_quornex/platform/ems.h"

namespace zk::agent {

enum class ObjectKind { EMS, DEVICE, SUBNETWORK, LINK, NODE, SUB_MAP, DISPLAY_LINK, PHYSICAL_LINK };

// The map's physical root: it holds every other submap and has no parent.
inline constexpr char ROOT_SUBMAP_ID[] = "/";

// The one subnetwork that all devices and links are in.
inline constexpr char SUBNETWORK_ID[] = "1";

// Which object is meant. Device ids are written in decimal; the EMS itself has
// an empty id. parentId matters for map objects only, and there an empty one
// means: whatever submap holds it.
struct ObjectKey {
  ObjectKind kind = ObjectKind::EMS;
  std::string id;
  std::string parentId;

  static ObjectKey ems() { return {}; }
  static ObjectKey subnetwork(std::string id) {
    return {ObjectKind::SUBNETWORK, std::move(id), {}};
  }
  static ObjectKey device(unsigned long id) { return {ObjectKind::DEVICE, std::to_string(id), {}}; }
  static ObjectKey link(std::string id) { return {ObjectKind::LINK, std::move(id), {}}; }
};

bool operator==(const ObjectKey& left, const ObjectKey& right);

// What an NMS may set on an object.
struct Labels {
  std::string userLabel;
  std::string owner;
  std::string nativeName;  // the name the EMS itself shows
};

// An empty nativeName stands for the configured EMS name.
struct EmsRecord : Labels {};

// The device's native name is Device::name, which is never empty.
struct DeviceRecord : ::Device {
  std::string userLabel;
  std::string owner;
  std::string version;   // of its software
  std::string location;  // free text
  std::string siteId;    // the submap of its site; may be empty
};

// How the devices of a subnetwork are connected. The inventory's file holds the
// numbers, here and below.
enum class Topology {
  SINGLE = 0,
  CHAIN = 1,
  PATH_RING = 2,  // each path is protected by itself
  OPEN_PATH_RING = 3,
  SHARED_RING = 4,  // the paths share the protection
  OPEN_SHARED_RING = 5,
  MESH = 6
};

struct SubnetworkRecord : Labels {
  std::string id;
  Topology topology = Topology::SINGLE;
};

enum class LinkDirection { UNIDIRECTIONAL = 0, BIDIRECTIONAL = 1 };

// What a link carries: a section of the synchronous hierarchy, or one optical
// channel.
enum class LinkRate { UNKNOWN = 0, STM_1 = 20, STM_4 = 21, STM_16 = 22, WAVELENGTH = 40 };

struct LinkEnd {
  long deviceId = 0;
  std::string port;  // such as /rack=1/shelf=1/slot=3/port=1
};

// A topological link of the subnetwork.
struct LinkRecord : Labels {
  std::string id;
  LinkDirection direction = LinkDirection::BIDIRECTIONAL;
  LinkRate rate = LinkRate::UNKNOWN;
  LinkEnd aEnd;
  LinkEnd zEnd;
};

// Nodes and submaps share one space of ids.
struct NodeRecord : Labels {
  std::string id;
  std::string parentId;
  long deviceId = 0;  // the device it stands for
};

// parentId is empty for the physical root only.
struct SubMapRecord : Labels {
  std::string id;
  std::string parentId;
};

// A line drawn in the submap parentId between two nodes or submaps.
struct DisplayLinkRecord : Labels {
  std::string id;
  std::string parentId;
  std::string aEndId;
  std::string zEndId;
};

// The medium under a topological link.
struct PhysicalLinkRecord {
  std::string id;
  std::string linkId;
};

// In the order of ObjectKind.
using ObjectRecord = std::variant<EmsRecord, DeviceRecord, SubnetworkRecord, LinkRecord, NodeRecord,
                                  SubMapRecord, DisplayLinkRecord, PhysicalLinkRecord>;

ObjectKey keyOf(const ObjectRecord& object);

enum class Severity {
  INDETERMINATE = 0,
  CRITICAL = 1,
  MAJOR = 2,
  MINOR = 3,
  WARNING = 4,
  CLEARED = 5
};

// An alarm is told from others by device, probable cause and qualifier.
struct AlarmRecord {
  long id = 0;        // the EMS's own number, never used twice
  long deviceId = 0;  // 0: the EMS itself
  std::string probableCause;
  std::string qualifier;            // where on the device; may be empty
  std::string nativeProbableCause;  // as the EMS words it
  Severity severity = Severity::INDETERMINATE;
  std::chrono::system_clock::time_point raisedAt;  // kept to the millisecond
  std::string additionalText;
};

}  // namespace zk::agent

#endif
