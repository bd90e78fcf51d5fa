#include <array>

#include "nms/commands/objects.h"
#include "nms/output/cells.h"

namespace zk::nms {
namespace {

const char* const kExamples =
    "  zk-nms subnetwork\n"
    "  zk-nms subnetwork 1\n"
    "  zk-nms subnetwork EMS=Quor/1,MultiLayerSubnetwork=1\n";

const std::array<const char*, 7> kTopologies = {"singleton", "chain",       "psr", "open_psr",
                                                "spring",    "open_spring", "mesh"};

Columns columns() {
  return {{"name", "NAME"},
          {"userLabel", "USER LABEL"},
          {"nativeEMSName", "NATIVE NAME"},
          {"owner", "OWNER"},
          {"subnetworkType", "TOPOLOGY"},
          {"supportedRates", "RATES", true},
          {"additionalInfo", "ADDITIONAL INFO", true}};
}

Row row(const multiLayerSubnetwork::MultiLayerSubnetwork_T& subnetwork) {
  return {nameCell(subnetwork.name),
          textCell(subnetwork.userLabel.in()),
          textCell(subnetwork.nativeEMSName.in()),
          textCell(subnetwork.owner.in()),
          kTopologies.at(static_cast<std::size_t>(subnetwork.subnetworkType)),
          ratesCell(subnetwork.supportedRates),
          pairsCell(subnetwork.additionalInfo)};
}

Rows list(Connection& connection, CORBA::ULong page) {
  multiLayerSubnetwork::SubnetworkList_T_var subnetworks;
  multiLayerSubnetwork::SubnetworkIterator_I_var iterator;
  connection.emsManager()->getAllTopLevelSubnetworks(page, subnetworks.out(), iterator.out());
  return drainRows(page, subnetworks, iterator, row);
}

Rows names(Connection& connection, CORBA::ULong page) {
  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var iterator;
  connection.emsManager()->getAllTopLevelSubnetworkNames(page, names.out(), iterator.out());
  return drainNames(page, names, iterator);
}

Row one(Connection& connection, const globaldefs::NVSList_T& name) {
  using Manager = multiLayerSubnetwork::MultiLayerSubnetworkMgr_I;
  multiLayerSubnetwork::MultiLayerSubnetwork_T_var subnetwork;
  connection.manager<Manager>("MultiLayerSubnetwork")
      ->getMultiLayerSubnetwork(name, subnetwork.out());
  return row(subnetwork.in());
}

}  // namespace

std::unique_ptr<Command> makeSubnetworkCommand() {
  return makeObjectCommand({"subnetwork",
                            "MultiLayerSubnetwork",
                            "List the top-level subnetworks, or show one",
                            kExamples,
                            columns(),
                            list,
                            names,
                            one,
                            {}});
}

}  // namespace zk::nms
