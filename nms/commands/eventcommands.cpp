// The commands that are about events: those that watch them, and the alarms,
// which events keep up to date.
#include "nms/commands/watch.h"
#include "nms/events/alarm.h"

namespace zk::nms {
namespace {

const char* const EVENTS_FOOTER =
    "Writes each event as it comes; with -o json one object a line.\n"
    "\n"
    "When the session is lost, by a restart of the agent say, this is told on\n"
    "standard error with the time of which events may be missing, and the program\n"
    "logs in again, waiting longer each time up to ten seconds.\n"
    "\n"
    "Exit status: 0 all that came was written (and as many as --count said);\n"
    "4 fewer than --count came in time; 5 events were lost or may be missing.\n"
    "\n"
    "Examples:\n"
    "  zk-nms events\n"
    "  zk-nms events --type NT_ALARM --type NT_OBJECT_CREATION\n"
    "  zk-nms events --filter '$perceivedSeverity <= 2' --count 10\n"
    "  zk-nms -o json events --pull --timeout 60 | jq -r .objectName\n";

const char* const WAIT_FOOTER =
    "Waits until an event meets a constraint, writes that event and ends. The agent\n"
    "may end and come back meanwhile; an event of that time is missed, and the\n"
    "standard error says so.\n"
    "\n"
    "Exit status: 0 the event came; 4 it did not come in time; 5 it did not come in\n"
    "time, but may have come while events were lost.\n"
    "\n"
    "Examples:\n"
    "  zk-nms wait --for \"\\$type_name == 'NT_OBJECT_CREATION'\"\n"
    "  zk-nms wait --for \"\\$probableCause == 'LOS' and \\$perceivedSeverity == 5\" --timeout "
    "300\n"
    "  zk-nms -o json wait --for \"\\$notificationId == '17'\" --type NT_ALARM\n";

const char* const ALARMS_FOOTER =
    "With -w the active alarms come first, each as \"active\"; then every change as it\n"
    "happens: \"new\", \"changed\" or \"cleared\". With -o json each is an object on a line\n"
    "of its own, in which \"active\" counts the alarms that are active then. When the\n"
    "session was lost, or the EMS had lost events, the active alarms are read again\n"
    "and what differs is written as changes.\n"
    "\n"
    "Exit status: 0 fine; 4 fewer changes than --count came in time; 5 the session was\n"
    "lost, or events were, and the active alarms could not be read again since.\n"
    "\n"
    "Examples:\n"
    "  zk-nms alarms\n"
    "  zk-nms alarms 7 --exclude-severity warning --exclude-severity indeterminate\n"
    "  zk-nms -o csv alarms --exclude-cause AIS > alarms.csv\n"
    "  zk-nms alarms -w\n"
    "  zk-nms -o json alarms -w --timeout 3600\n";

// Ends after count; 0: never.
class Counting : public WatchHandler {
 public:
  Counting(const Context& context, unsigned count) : context_(context), count_(count) {}

  bool satisfied() const override { return count_ > 0 && came_ >= count_; }

  // Watches until the end, and throws for the exit status.
  void watch(const WatchSettings& settings) {
    Watch watch(context_, settings, *this);
    const Watch::End end = watch.run();
    conclude(watch, end, came_, count_);
  }

 protected:
  const Context& context_;
  const unsigned count_;
  unsigned came_ = 0;
};

class Printer : public Counting {
 public:
  // With titlesFirst, whatever comes, a table begins once the login and the
  // filters are granted.
  Printer(const Context& context, unsigned count, bool titlesFirst)
      : Counting(context, count), titlesFirst_(titlesFirst) {}

  bool catchUp(Connection&) override {
    if (titlesFirst_) {
      stream();
    }
    return false;
  }

  void take(const Event& event) override {
    stream().write(eventRow(event));
    ++came_;
  }

 private:
  RowStream& stream() {
    if (stream_ == nullptr) {
      stream_ = eventStream(context_.out, context_.options.format);
    }
    return *stream_;
  }

  const bool titlesFirst_;
  std::unique_ptr<RowStream> stream_;
};

class EventsCommand : public Command {
 public:
  std::string name() const override { return "events"; }
  std::string summary() const override { return "Watch what happens"; }

  void declare(options::Command& command) override {
    command
        .add("--filter", settings_.wishes.constraints,
             "Events that meet this constraint only, in the Notification Service's extended "
             "trader constraint language; repeat it for events that meet any of several")
        .formOnly("CONSTRAINT");
    declareTypes(command, settings_.wishes);
    declareDelivery(command, settings_.wishes);
    declareCount(command, count_, "End after so many");
    declareWatch(command, settings_);
    command.footer(EVENTS_FOOTER);
  }

  void run(const Context& context) override { Printer(context, count_, true).watch(settings_); }

 private:
  WatchSettings settings_;
  unsigned count_ = 0;
};

class WaitCommand : public Command {
 public:
  std::string name() const override { return "wait"; }
  std::string summary() const override { return "Wait until something happens"; }

  void declare(options::Command& command) override {
    command
        .add("--for", settings_.wishes.constraints,
             "Constraint in the Notification Service's extended trader constraint language; "
             "repeat it to wait for any of several")
        .formOnly("CONSTRAINT")
        .required();
    declareTypes(command, settings_.wishes);
    declareDelivery(command, settings_.wishes);
    declareWatch(command, settings_);
    command.footer(WAIT_FOOTER);
  }

  // What was lost before the event came is of no interest.
  void run(const Context& context) override {
    Printer printer(context, 1, false);
    Watch watch(context, settings_, printer);
    const Watch::End end = watch.run();
    if (end == Watch::End::TIME_IS_UP) {
      conclude(watch, end, 0, 1);
    }
  }

 private:
  WatchSettings settings_;
};

Columns changeColumns() {
  Columns columns = alarmColumns();
  columns.insert(columns.begin() + 1, {"change", "CHANGE"});
  columns.push_back({"active", "ACTIVE", true});
  return columns;
}

class AlarmWatcher : public Counting {
 public:
  AlarmWatcher(const Context& context, const AlarmScope& scope, unsigned count)
      : Counting(context, count), scope_(scope) {}

  bool catchUp(Connection& connection) override {
    elementName_ = scopeName(connection, scope_);
    const auto active = activeAlarms(connection, scope_);
    if (!started_) {
      stream_ = std::make_unique<RowStream>(context_.out, context_.options.format, changeColumns(),
                                            std::vector<std::size_t>{24, 7, 13, 16, 32});
    }
    for (const AlarmTable::Change& change : table_.replace(active)) {
      write(started_ ? change.what : "active", change.alarm);
      came_ += started_ ? 1 : 0;
    }
    started_ = true;
    return true;
  }

  void take(const Event& event) override {
    const Alarm alarm = readAlarm(event);
    if (event.type == "NT_ALARM" && inScope(alarm, scope_, elementName_)) {
      if (const auto change = table_.apply(alarm)) {
        write(change->what, change->alarm);
        ++came_;
      }
    }
  }

 private:
  void write(const std::string& what, const Alarm& alarm) {
    Row row = alarmRow(alarm);
    row.insert(row.begin() + 1, what);
    row.emplace_back(static_cast<Json::UInt64>(table_.size()));
    stream_->write(row);
  }

  const AlarmScope& scope_;
  std::unique_ptr<RowStream> stream_;
  AlarmTable table_;
  std::string elementName_;
  bool started_ = false;
};

class AlarmsCommand : public Command {
 public:
  AlarmsCommand() { settings_.wishes.types = {"NT_ALARM"}; }

  std::string name() const override { return "alarms"; }
  std::string summary() const override { return "List the active alarms, or watch them"; }

  void declare(options::Command& command) override {
    command.add("element", scope_.element, "Of this managed element: its id or its full name")
        .formOnly("NAME-OR-ID");
    command
        .add("--exclude-severity", scope_.notSeverities,
             "Leave out critical, major, minor, warning or indeterminate ones; repeatable")
        .formOnly("SEVERITY");
    command
        .add("--exclude-cause", scope_.notCauses,
             "Leave out those with this probable cause; repeatable")
        .formOnly("CAUSE");
    const auto watch = command.flag("-w,--watch", watch_, "Go on with what changes");
    declareCount(command, count_, "End after so many changes");
    declareDelivery(command, settings_.wishes);
    declareWatch(command, settings_);
    for (const char* option :
         {"--count", "--timeout", "--ping", "--no-reconnect", "--pull", "--structured"}) {
      command.option(option).needs(watch);
    }
    command.footer(ALARMS_FOOTER);
  }

  void run(const Context& context) override {
    checkScope(scope_);
    if (watch_) {
      AlarmWatcher(context, scope_, count_).watch(settings_);
    } else {
      list(context);
    }
  }

 private:
  void list(const Context& context) const {
    Connection connection(context.options.access, context.interrupts);
    Rows rows;
    for (const Alarm& alarm : activeAlarms(connection, scope_)) {
      rows.push_back(alarmRow(alarm));
    }
    writeList(context.out, context.options.format, alarmColumns(), rows);
  }

  AlarmScope scope_;
  bool watch_ = false;
  unsigned count_ = 0;
  WatchSettings settings_;
};

}  // namespace

void addEventCommands(Commands& commands) {
  commands.push_back(std::make_unique<EventsCommand>());
  commands.push_back(std::make_unique<WaitCommand>());
  commands.push_back(std::make_unique<AlarmsCommand>());
}

}  // namespace zk::nms
