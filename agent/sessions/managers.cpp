#include "agent/sessions/managers.h"

#include <algorithm>
#include <array>

#include "agent/base/log.h"
#include "agent/managers/elementmanager.h"
#include "agent/managers/emsmanager.h"
#include "agent/managers/mapmanager.h"
#include "agent/managers/subnetworkmanager.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

using Make = PortableServer::ServantBase* (*)(const Session&, Inventory&);

template <class Servant>
PortableServer::ServantBase* make(const Session& session, Inventory& inventory) {
  return new Servant(session.paging, inventory);
}

struct Offered {
  const char* name;
  Make make;
};

constexpr std::array<Offered, 4> offered = {{
    {"EMS", make<EmsManager>},
    {"ManagedElement", make<ElementManager>},
    {"MultiLayerSubnetwork", make<SubnetworkManager>},
    {"TopologyMap", make<MapManager>},
}};

constexpr std::array<const char*, 6> standard = {"GuiCutThrough",         "EquipmentInventory",
                                                 "PerformanceManagement", "Protection",
                                                 "Maintenance",           "TrafficDescriptor"};

}  // namespace

std::vector<std::string> managerNames() {
  std::vector<std::string> names;
  names.reserve(offered.size());
  for (const Offered& manager : offered) {
    names.emplace_back(manager.name);
  }
  return names;
}

PortableServer::ServantBase* makeManager(const std::string& name, const Session& session,
                                         Inventory& inventory) {
  const auto* const found =
      std::find_if(offered.begin(), offered.end(),
                   [&name](const Offered& manager) { return name == manager.name; });
  if (found != offered.end()) {
    return found->make(session, inventory);
  }
  if (std::find(standard.begin(), standard.end(), name) != standard.end()) {
    throw notImplemented();
  }
  throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                "no manager has the name '" + printable(name.c_str()) + "'");
}

}  // namespace zk::agent
