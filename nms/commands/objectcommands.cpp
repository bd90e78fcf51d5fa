// The commands that show the EMS, and that list one kind of its objects or show
// one of it, all alike but for the fields of a record and the calls they make.
#include <array>
#include <functional>
#include <optional>

#include "nms/commands/program.h"
#include "nms/wire/objects.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

// A column, and its cell for a record.
template <class Record>
struct Field {
  Column column;
  std::function<Json::Value(const Record&)> cell;
};

template <class Record>
using Fields = std::vector<Field<Record>>;

template <class Record, class Text>
Field<Record> textField(const std::string& key, const std::string& title, Text Record::*member) {
  return {{key, title}, [member](const Record& record) { return textCell((record.*member).in()); }};
}

// What all records begin with; and the one they end with.
template <class Record>
Fields<Record> labelFields() {
  return {{{"name", "NAME"}, [](const Record& record) { return nameCell(record.name); }},
          textField("userLabel", "USER LABEL", &Record::userLabel),
          textField("nativeEMSName", "NATIVE NAME", &Record::nativeEMSName),
          textField("owner", "OWNER", &Record::owner)};
}

template <class Record>
Field<Record> infoField(bool detail) {
  return {{"additionalInfo", "ADDITIONAL INFO", detail},
          [](const Record& record) { return pairsCell(record.additionalInfo); }};
}

template <class Record>
Fields<Record> with(Fields<Record> first, const Fields<Record>& then, bool infoIsDetail) {
  first.insert(first.end(), then.begin(), then.end());
  first.push_back(infoField<Record>(infoIsDetail));
  return first;
}

template <class Record>
Columns columnsOf(const Fields<Record>& fields) {
  Columns columns;
  for (const auto& field : fields) {
    columns.push_back(field.column);
  }
  return columns;
}

template <class Record>
Row rowOf(const Fields<Record>& fields, const Record& record) {
  Row row;
  for (const auto& field : fields) {
    row.push_back(field.cell(record));
  }
  return row;
}

class EmsCommand : public Command {
 public:
  std::string name() const override { return "ems"; }
  std::string summary() const override { return "Show the EMS"; }

  void declare(options::Command& command) override {
    command.footer(
        "Examples:\n"
        "  zk-nms ems\n"
        "  zk-nms -o json ems\n");
  }

  void run(const Context& context) override {
    Connection connection(context.options.access, context.interrupts);
    emsMgr::EMS_T_var ems;
    connection.emsManager()->getEMS(ems.out());
    const auto fields = emsFields();
    writeOne(context.out, context.options.format, columnsOf(fields), rowOf(fields, ems.in()));
  }

 private:
  static Fields<emsMgr::EMS_T> emsFields() {
    using Ems = emsMgr::EMS_T;
    return with<Ems>(labelFields<Ems>(),
                     {textField("emsVersion", "VERSION", &Ems::emsVersion),
                      textField("type", "TYPE", &Ems::type)},
                     false);
  }
};

template <class Record>
struct Listing {
  std::string command;  // "me"
  std::string kind;     // "ManagedElement", see objects.h
  std::string summary;
  std::string examples;
  Fields<Record> fields;
  std::function<void(Connection&, const Each<Record>&)> each;
  std::function<Record(Connection&, const globaldefs::NVSList_T& name)> one;
};

template <class Record>
class ListCommand : public Command {
 public:
  explicit ListCommand(Listing<Record> listing) : listing_(std::move(listing)) {}

  std::string name() const override { return listing_.command; }
  std::string summary() const override { return listing_.summary; }

  void declare(options::Command& command) override {
    given_ = command.add("object", object_, "Show this one: its id or its full name")
                 .formOnly("NAME-OR-ID");
    command.flag("--names", namesOnly_, "List names only").excludes(*given_);
    command.footer("Examples:\n" + listing_.examples);
  }

  void run(const Context& context) override {
    const bool one = given_->given();
    if (one) {
      checkArgument(object_);
    }
    Connection connection(context.options.access, context.interrupts);
    if (one) {
      showOne(context, connection);
    } else if (namesOnly_) {
      listNames(context, connection);
    } else {
      list(context, connection);
    }
  }

 private:
  void showOne(const Context& context, Connection& connection) const {
    const auto name = objectName(connection, listing_.kind, object_);
    writeOne(context.out, context.options.format, columnsOf(listing_.fields),
             rowOf(listing_.fields, listing_.one(connection, name)));
  }

  void listNames(const Context& context, Connection& connection) const {
    Rows rows;
    eachName(connection, listing_.kind,
             [&](const globaldefs::NVSList_T& name) { rows.push_back({nameCell(name)}); });
    writeList(context.out, context.options.format, {{"name", "NAME"}}, rows);
  }

  void list(const Context& context, Connection& connection) const {
    Rows rows;
    listing_.each(connection,
                  [&](const Record& record) { rows.push_back(rowOf(listing_.fields, record)); });
    writeList(context.out, context.options.format, columnsOf(listing_.fields), rows);
  }

  const Listing<Record> listing_;
  std::string object_;
  std::optional<options::Option> given_;
  bool namesOnly_ = false;
};

Listing<managedElement::ManagedElement_T> elements() {
  using Element = managedElement::ManagedElement_T;
  return {"me",
          "ManagedElement",
          "List the managed elements, or show one",
          "  zk-nms me\n"
          "  zk-nms me --names\n"
          "  zk-nms me 7\n"
          "  zk-nms me EMS=Quor/1,ManagedElement=7\n"
          "  zk-nms -o csv --page 500 me > devices.csv\n",
          with<Element>(labelFields<Element>(),
                        {textField("location", "LOCATION", &Element::location),
                         textField("version", "VERSION", &Element::version),
                         textField("productName", "PRODUCT", &Element::productName),
                         {{"communicationState", "STATE"},
                          [](const Element& me) {
                            const bool available =
                                me.communicationState == managedElement::CS_AVAILABLE;
                            return available ? "available" : "unavailable";
                          }},
                         {{"emsInSyncState", "IN SYNC"},
                          [](const Element& me) { return static_cast<bool>(me.emsInSyncState); }},
                         {{"supportedRates", "RATES", true},
                          [](const Element& me) { return ratesCell(me.supportedRates); }}},
                        true),
          eachElement,
          [](Connection& connection, const globaldefs::NVSList_T& name) {
            managedElement::ManagedElement_T_var element;
            elementManager(connection)->getManagedElement(name, element.out());
            return element.in();
          }};
}

Listing<multiLayerSubnetwork::MultiLayerSubnetwork_T> subnetworks() {
  using Subnetwork = multiLayerSubnetwork::MultiLayerSubnetwork_T;
  static const std::array<const char*, 7> TOPOLOGIES = {
      "singleton", "chain", "psr", "open_psr", "spring", "open_spring", "mesh"};
  return {"subnetwork",
          "MultiLayerSubnetwork",
          "List the top-level subnetworks, or show one",
          "  zk-nms subnetwork\n"
          "  zk-nms subnetwork 1\n"
          "  zk-nms subnetwork EMS=Quor/1,MultiLayerSubnetwork=1\n",
          with<Subnetwork>(
              labelFields<Subnetwork>(),
              {{{"subnetworkType", "TOPOLOGY"},
                [](const Subnetwork& subnetwork) {
                  return TOPOLOGIES.at(static_cast<std::size_t>(subnetwork.subnetworkType));
                }},
               {{"supportedRates", "RATES", true},
                [](const Subnetwork& subnetwork) { return ratesCell(subnetwork.supportedRates); }}},
              true),
          eachSubnetwork,
          [](Connection& connection, const globaldefs::NVSList_T& name) {
            multiLayerSubnetwork::MultiLayerSubnetwork_T_var subnetwork;
            connection
                .manager<multiLayerSubnetwork::MultiLayerSubnetworkMgr_I>("MultiLayerSubnetwork")
                ->getMultiLayerSubnetwork(name, subnetwork.out());
            return subnetwork.in();
          }};
}

Listing<topologicalLink::TopologicalLink_T> links() {
  using Link = topologicalLink::TopologicalLink_T;
  auto labels = labelFields<Link>();
  labels[2].column.detail = true;
  return {
      "link",
      "TopologicalLink",
      "List the top-level topological links, or show one",
      "  zk-nms link\n"
      "  zk-nms link 5\n"
      "  zk-nms link EMS=Quor/1,TopologicalLink=5\n",
      with<Link>(
          labels,
          {{{"direction", "DIRECTION"},
            [](const Link& link) { return link.direction == globaldefs::CD_BI ? "bi" : "uni"; }},
           {{"rate", "RATE"}, [](const Link& link) { return link.rate; }},
           {{"aEndTP", "A END"}, [](const Link& link) { return nameCell(link.aEndTP); }},
           {{"zEndTP", "Z END"}, [](const Link& link) { return nameCell(link.zEndTP); }}},
          true),
      eachLink,
      [](Connection& connection, const globaldefs::NVSList_T& name) {
        topologicalLink::TopologicalLink_T_var link;
        connection.emsManager()->getTopLevelTopologicalLink(name, link.out());
        return link.in();
      }};
}

Listing<topologyMap::MapObject_T> mapObjects(const std::string& command, const std::string& kind,
                                             const std::string& summary,
                                             const std::string& examples) {
  using Object = topologyMap::MapObject_T;
  return {command,
          kind,
          summary,
          examples,
          with<Object>(labelFields<Object>(), {}, false),
          [kind](Connection& connection, const Each<Object>& each) {
            eachMapObject(connection, kind, each);
          },
          [](Connection& connection, const globaldefs::NVSList_T& name) {
            topologyMap::MapObject_T_var object;
            topologyMapManager(connection)->getMapObject(name, object.out());
            return object.in();
          }};
}

template <class Record>
std::unique_ptr<Command> listCommand(Listing<Record> listing) {
  return std::make_unique<ListCommand<Record>>(std::move(listing));
}

}  // namespace

void addObjectCommands(Commands& commands) {
  commands.push_back(std::make_unique<EmsCommand>());
  commands.push_back(listCommand(elements()));
  commands.push_back(listCommand(subnetworks()));
  commands.push_back(listCommand(links()));
  commands.push_back(listCommand(
      mapObjects("node", "Node", "List the nodes of the EMS's map, or show one",
                 "  zk-nms node\n"
                 "  zk-nms node 7\n"
                 "  zk-nms node /parentid=AllSubMap/id=7\n"
                 "  zk-nms node EMS=Quor/1,Node=/parentid=AllSubMap/id=7\n"
                 "A bare id is looked for in the whole map; a path says where it lies.\n")));
  commands.push_back(
      listCommand(mapObjects("submap", "SubMap", "List the submaps of the EMS's map, or show one",
                             "  zk-nms submap\n"
                             "  zk-nms submap --names\n"
                             "  zk-nms submap /parentid=AllSubmap/id=2\n")));
  commands.push_back(listCommand(mapObjects("displaylink", "DisplayLink",
                                            "List the links drawn in the EMS's map, or show one",
                                            "  zk-nms displaylink\n"
                                            "  zk-nms -o json displaylink 5\n"
                                            "  zk-nms displaylink /parentid=2/id=5\n")));
}

}  // namespace zk::nms
