// Nodes, submaps and display links: three commands, alike but for their kind.
#include "nms/commands/objects.h"
#include "nms/output/cells.h"
#include "nms/wire/topologymap.h"

namespace zk::nms {
namespace {

const char* const kNodeExamples =
    "  zk-nms node\n"
    "  zk-nms node 7\n"
    "  zk-nms node /parentid=AllSubMap/id=7\n"
    "  zk-nms node EMS=Quor/1,Node=/parentid=AllSubMap/id=7\n"
    "A bare id is looked for in the whole map; a path says where it lies.\n";

const char* const kSubMapExamples =
    "  zk-nms submap\n"
    "  zk-nms submap --names\n"
    "  zk-nms submap /parentid=AllSubmap/id=2\n";

const char* const kDisplayLinkExamples =
    "  zk-nms displaylink\n"
    "  zk-nms -o json displaylink 5\n"
    "  zk-nms displaylink /parentid=2/id=5\n";

Columns columns() {
  return {{"name", "NAME"},
          {"userLabel", "USER LABEL"},
          {"nativeEMSName", "NATIVE NAME"},
          {"owner", "OWNER"},
          {"additionalInfo", "ADDITIONAL INFO"}};
}

Row row(const topologyMap::MapObject_T& object) {
  return {nameCell(object.name), textCell(object.userLabel.in()),
          textCell(object.nativeEMSName.in()), textCell(object.owner.in()),
          pairsCell(object.additionalInfo)};
}

ObjectKind kind(const std::string& command, const std::string& pairName, const std::string& summary,
                const std::string& examples) {
  ObjectKind result{command, pairName, summary, examples, columns(), {}, {}, {}, {}};
  result.list = [pairName](Connection& connection, CORBA::ULong page) {
    Rows rows;
    eachMapObject(connection, pairName, page,
                  [&](const topologyMap::MapObject_T& object) { rows.push_back(row(object)); });
    return rows;
  };
  result.names = [pairName](Connection& connection, CORBA::ULong page) {
    Rows rows;
    eachMapObject(connection, pairName, page, [&](const topologyMap::MapObject_T& object) {
      rows.push_back({nameCell(object.name)});
    });
    return rows;
  };
  result.one = [](Connection& connection, const globaldefs::NVSList_T& name) {
    topologyMap::MapObject_T_var object;
    topologyMapManager(connection)->getMapObject(name, object.out());
    return row(object.in());
  };
  result.nameOf = [pairName](Connection& connection, const std::string& argument,
                             CORBA::ULong page) {
    return mapObjectName(connection, pairName, argument, page);
  };
  return result;
}

}  // namespace

std::unique_ptr<Command> makeNodeCommand() {
  return makeObjectCommand(
      kind("node", "Node", "List the nodes of the EMS's map, or show one", kNodeExamples));
}

std::unique_ptr<Command> makeSubMapCommand() {
  return makeObjectCommand(
      kind("submap", "SubMap", "List the submaps of the EMS's map, or show one", kSubMapExamples));
}

std::unique_ptr<Command> makeDisplayLinkCommand() {
  return makeObjectCommand(kind("displaylink", "DisplayLink",
                                "List the links drawn in the EMS's map, or show one",
                                kDisplayLinkExamples));
}

}  // namespace zk::nms
