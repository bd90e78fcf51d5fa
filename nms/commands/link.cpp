#include "nms/commands/objects.h"
#include "nms/output/cells.h"

namespace zk::nms {
namespace {

const char* const kExamples =
    "  zk-nms link\n"
    "  zk-nms link 5\n"
    "  zk-nms link EMS=Quor/1,TopologicalLink=5\n";

Columns columns() {
  return {{"name", "NAME"},
          {"userLabel", "USER LABEL"},
          {"nativeEMSName", "NATIVE NAME", true},
          {"owner", "OWNER"},
          {"direction", "DIRECTION"},
          {"rate", "RATE"},
          {"aEndTP", "A END"},
          {"zEndTP", "Z END"},
          {"additionalInfo", "ADDITIONAL INFO", true}};
}

Row row(const topologicalLink::TopologicalLink_T& link) {
  return {nameCell(link.name),
          textCell(link.userLabel.in()),
          textCell(link.nativeEMSName.in()),
          textCell(link.owner.in()),
          link.direction == globaldefs::CD_BI ? "bi" : "uni",
          link.rate,
          nameCell(link.aEndTP),
          nameCell(link.zEndTP),
          pairsCell(link.additionalInfo)};
}

Rows list(Connection& connection, CORBA::ULong page) {
  topologicalLink::TopologicalLinkList_T_var links;
  topologicalLink::TopologicalLinkIterator_I_var iterator;
  connection.emsManager()->getAllTopLevelTopologicalLinks(page, links.out(), iterator.out());
  return drainRows(page, links, iterator, row);
}

Rows names(Connection& connection, CORBA::ULong page) {
  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var iterator;
  connection.emsManager()->getAllTopLevelTopologicalLinkNames(page, names.out(), iterator.out());
  return drainNames(page, names, iterator);
}

Row one(Connection& connection, const globaldefs::NVSList_T& name) {
  topologicalLink::TopologicalLink_T_var link;
  connection.emsManager()->getTopLevelTopologicalLink(name, link.out());
  return row(link.in());
}

}  // namespace

std::unique_ptr<Command> makeLinkCommand() {
  return makeObjectCommand({"link",
                            "TopologicalLink",
                            "List the top-level topological links, or show one",
                            kExamples,
                            columns(),
                            list,
                            names,
                            one,
                            {}});
}

}  // namespace zk::nms
