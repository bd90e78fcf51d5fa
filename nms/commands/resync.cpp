#include <CLI/CLI.hpp>
#include <algorithm>

#include "nms/commands/command.h"
#include "nms/events/activealarms.h"
#include "nms/output/cells.h"
#include "nms/output/output.h"
#include "nms/wire/iterate.h"
#include "nms/wire/topologymap.h"

namespace zk::nms {
namespace {

const char* const kFooter =
    "Reads every managed element, subnetwork, topological link, map object and active\n"
    "alarm again, in full, as an NMS does after events were lost, and writes how many\n"
    "there are. What the EMS does not serve stays empty (null in JSON).\n"
    "\n"
    "Examples:\n"
    "  zk-nms resync\n"
    "  zk-nms events --timeout 3600 || zk-nms -o json resync\n";

// Reads all there is, through one session, into one row.
class Reading {
 public:
  Reading(Connection& connection, CORBA::ULong page) : connection_(connection), page_(page) {}

  void all() {
    emsMgr::EMS_T_var ems;
    connection_.emsManager()->getEMS(ems.out());
    add("ems", "EMS", nameCell(ems->name));
    offered("managedElements", "MANAGED ELEMENTS", [this] { return elements(); });
    offered("subnetworks", "SUBNETWORKS", [this] { return subnetworks(); });
    offered("topologicalLinks", "TOPOLOGICAL LINKS", [this] { return links(); });
    offered("nodes", "NODES", [this] { return mapObjects("Node"); });
    offered("subMaps", "SUBMAPS", [this] { return mapObjects("SubMap"); });
    offered("displayLinks", "DISPLAY LINKS", [this] { return mapObjects("DisplayLink"); });
    offered("activeAlarms", "ACTIVE ALARMS", [this] { return alarms(); });
    addSeverities();
  }

  const Columns& columns() const { return columns_; }
  const Row& row() const { return row_; }

 private:
  void add(const std::string& key, const std::string& title, const Json::Value& value) {
    columns_.push_back({key, title});
    row_.push_back(value);
  }

  // An EMS need not serve all; any other refusal is passed on.
  template <class Read>
  void offered(const std::string& key, const std::string& title, Read read) {
    Json::Value value;
    try {
      value = static_cast<Json::UInt64>(read());
    } catch (const globaldefs::ProcessingFailureException& refusal) {
      if (refusal.exceptionType != globaldefs::EXCPT_NOT_IMPLEMENTED) {
        throw;
      }
    } catch (const CORBA::SystemException& failure) {
      if (!isRefusal(failure)) {
        throw;
      }
    }
    add(key, title, value);
  }

  template <class ListVar, class IteratorVar>
  std::size_t count(ListVar& list, IteratorVar& iterator) const {
    std::size_t result = 0;
    drain(page_, list, iterator, [&](const auto&) { ++result; });
    return result;
  }

  std::size_t elements() const {
    managedElement::ManagedElementList_T_var list;
    managedElement::ManagedElementIterator_I_var iterator;
    connection_.manager<managedElementManager::ManagedElementMgr_I>("ManagedElement")
        ->getAllManagedElements(page_, list.out(), iterator.out());
    return count(list, iterator);
  }

  std::size_t subnetworks() const {
    multiLayerSubnetwork::SubnetworkList_T_var list;
    multiLayerSubnetwork::SubnetworkIterator_I_var iterator;
    connection_.emsManager()->getAllTopLevelSubnetworks(page_, list.out(), iterator.out());
    return count(list, iterator);
  }

  std::size_t links() const {
    topologicalLink::TopologicalLinkList_T_var list;
    topologicalLink::TopologicalLinkIterator_I_var iterator;
    connection_.emsManager()->getAllTopLevelTopologicalLinks(page_, list.out(), iterator.out());
    return count(list, iterator);
  }

  std::size_t mapObjects(const std::string& kind) const {
    std::size_t result = 0;
    eachMapObject(connection_, kind, page_, [&](const topologyMap::MapObject_T&) { ++result; });
    return result;
  }

  std::size_t alarms() {
    alarms_ = activeAlarms(connection_, {}, page_);
    return alarms_.size();
  }

  void addSeverities() {
    const bool known = !row_.back().isNull();
    for (const std::string& severity : severityNames()) {
      if (severity != "cleared") {
        const auto count = std::count_if(alarms_.begin(), alarms_.end(), [&](const Alarm& alarm) {
          return alarm.severity == severity;
        });
        add(severity, "  " + severity,
            known ? Json::Value(static_cast<Json::UInt64>(count)) : Json::Value());
      }
    }
  }

  Connection& connection_;
  const CORBA::ULong page_;
  std::vector<Alarm> alarms_;
  Columns columns_;
  Row row_;
};

class ResyncCommand : public Command {
 public:
  std::string name() const override { return "resync"; }
  std::string summary() const override { return "Read everything again and count it"; }
  void declare(CLI::App& app) override { app.footer(kFooter); }

  void run(const Context& context) override {
    Connection connection(context.options, context.interrupts);
    Reading reading(connection, context.options.page);
    reading.all();
    writeOne(context.out, context.options.format, reading.columns(), reading.row());
  }
};

}  // namespace

std::unique_ptr<Command> makeResyncCommand() { return std::make_unique<ResyncCommand>(); }

}  // namespace zk::nms
