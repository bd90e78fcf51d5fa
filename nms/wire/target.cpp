#include "nms/wire/target.h"

#include <CLI/CLI.hpp>
#include <map>

#include "nms/wire/topologymap.h"

namespace zk::nms {
namespace {

const std::map<std::string, std::string> kPairNames = {{"ems", "EMS"},
                                                       {"me", "ManagedElement"},
                                                       {"subnetwork", "MultiLayerSubnetwork"},
                                                       {"link", "TopologicalLink"},
                                                       {"node", "Node"},
                                                       {"submap", "SubMap"},
                                                       {"displaylink", "DisplayLink"}};

const std::map<std::string, std::string> kManagers = {
    {"EMS", "EMS"},
    {"MultiLayerSubnetwork", "MultiLayerSubnetwork"},
    {"TopologicalLink", "MultiLayerSubnetwork"},
    {"Node", "TopologyMap"},
    {"SubMap", "TopologyMap"},
    {"DisplayLink", "TopologyMap"},
    {"PhysicalLink", "TopologyMap"}};

std::string pairNameOf(const Target& target) {
  const auto found = kPairNames.find(target.kind);
  if (found == kPairNames.end()) {
    throw UsageError("not a kind of object: '" + target.kind +
                     "'; there are ems, me, subnetwork, link, node, submap and displaylink");
  }
  return found->second;
}

}  // namespace

void declareKind(CLI::App& app, Target& target) {
  app.add_option("--kind", target.kind,
                 "What a bare id is of: me, subnetwork, link, node, submap or displaylink. A full "
                 "name says it itself")
      ->option_text("KIND")
      ->capture_default_str();
}

void checkTarget(const Target& target) {
  checkArgument(target.object);
  if (pairNameOf(target) == "EMS" && target.object.find('=') == std::string::npos) {
    throw UsageError("an EMS is given by its full name, as in EMS=Quor/1");
  }
}

globaldefs::NVSList_T targetName(Connection& connection, const Target& target, CORBA::ULong page) {
  const std::string pairName = pairNameOf(target);
  if (isMapKind(pairName)) {
    return mapObjectName(connection, pairName, target.object, page);
  }
  return connection.objectName(target.object, pairName.c_str());
}

std::string managerFor(const std::string& pairName) {
  const auto found = kManagers.find(pairName);
  return found == kManagers.end() ? "ManagedElement" : found->second;
}

common::Common_I_var targetManager(Connection& connection, const globaldefs::NVSList_T& name) {
  const CORBA::ULong length = name.length();
  const std::string pairName = length == 0 ? "" : name[length - 1].name.in();
  return connection.manager<common::Common_I>(managerFor(pairName).c_str());
}

}  // namespace zk::nms
