#include <algorithm>

#include "nms/commands/program.h"
#include "nms/events/alarm.h"
#include "nms/output/output.h"
#include "nms/wire/failure.h"
#include "nms/wire/objects.h"

namespace zk::nms {
namespace {

const char* const FOOTER =
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
  explicit Reading(Connection& connection) : connection_(connection) {}

  void all() {
    emsMgr::EMS_T_var ems;
    connection_.emsManager()->getEMS(ems.out());
    add("ems", "EMS", nameCell(ems->name));
    offered("managedElements", "MANAGED ELEMENTS", [this] { return count(eachElement); });
    offered("subnetworks", "SUBNETWORKS", [this] { return count(eachSubnetwork); });
    offered("topologicalLinks", "TOPOLOGICAL LINKS", [this] { return count(eachLink); });
    offered("nodes", "NODES", [this] { return count(eachMapObject, "Node"); });
    offered("subMaps", "SUBMAPS", [this] { return count(eachMapObject, "SubMap"); });
    offered("displayLinks", "DISPLAY LINKS",
            [this] { return count(eachMapObject, "DisplayLink"); });
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

  template <class Each, class... Kind>
  std::size_t count(Each each, Kind... kind) const {
    std::size_t result = 0;
    each(connection_, kind..., [&](const auto&) { ++result; });
    return result;
  }

  std::size_t alarms() {
    alarms_ = activeAlarms(connection_, {});
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
  std::vector<Alarm> alarms_;
  Columns columns_;
  Row row_;
};

class ResyncCommand : public Command {
 public:
  std::string name() const override { return "resync"; }
  std::string summary() const override { return "Read everything again and count it"; }
  void declare(options::Command& command) override { command.footer(FOOTER); }

  void run(const Context& context) override {
    Connection connection(context.options.access, context.interrupts);
    Reading reading(connection);
    reading.all();
    writeOne(context.out, context.options.format, reading.columns(), reading.row());
  }
};

}  // namespace

void addResyncCommand(Commands& commands) { commands.push_back(std::make_unique<ResyncCommand>()); }

}  // namespace zk::nms
