#include "nms/commands/objects.h"
#include "nms/output/cells.h"

namespace zk::nms {
namespace {

const char* const kExamples =
    "  zk-nms me\n"
    "  zk-nms me --names\n"
    "  zk-nms me 7\n"
    "  zk-nms me EMS=Quor/1,ManagedElement=7\n"
    "  zk-nms -o csv --page 500 me > devices.csv\n";

Columns columns() {
  return {{"name", "NAME"},
          {"userLabel", "USER LABEL"},
          {"nativeEMSName", "NATIVE NAME"},
          {"owner", "OWNER"},
          {"location", "LOCATION"},
          {"version", "VERSION"},
          {"productName", "PRODUCT"},
          {"communicationState", "STATE"},
          {"emsInSyncState", "IN SYNC"},
          {"supportedRates", "RATES", true},
          {"additionalInfo", "ADDITIONAL INFO", true}};
}

Row row(const managedElement::ManagedElement_T& me) {
  const bool available = me.communicationState == managedElement::CS_AVAILABLE;
  const bool inSync = me.emsInSyncState;
  return {nameCell(me.name),
          textCell(me.userLabel.in()),
          textCell(me.nativeEMSName.in()),
          textCell(me.owner.in()),
          textCell(me.location.in()),
          textCell(me.version.in()),
          textCell(me.productName.in()),
          available ? "available" : "unavailable",
          inSync,
          ratesCell(me.supportedRates),
          pairsCell(me.additionalInfo)};
}

auto manager(Connection& connection) {
  return connection.manager<managedElementManager::ManagedElementMgr_I>("ManagedElement");
}

Rows list(Connection& connection, CORBA::ULong page) {
  managedElement::ManagedElementList_T_var elements;
  managedElement::ManagedElementIterator_I_var iterator;
  manager(connection)->getAllManagedElements(page, elements.out(), iterator.out());
  return drainRows(page, elements, iterator, row);
}

Rows names(Connection& connection, CORBA::ULong page) {
  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var iterator;
  manager(connection)->getAllManagedElementNames(page, names.out(), iterator.out());
  return drainNames(page, names, iterator);
}

Row one(Connection& connection, const globaldefs::NVSList_T& name) {
  managedElement::ManagedElement_T_var element;
  manager(connection)->getManagedElement(name, element.out());
  return row(element.in());
}

}  // namespace

std::unique_ptr<Command> makeMeCommand() {
  return makeObjectCommand({"me",
                            "ManagedElement",
                            "List the managed elements, or show one",
                            kExamples,
                            columns(),
                            list,
                            names,
                            one,
                            {}});
}

}  // namespace zk::nms
