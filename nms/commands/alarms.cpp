#include <CLI/CLI.hpp>

#include "nms/commands/command.h"
#include "nms/commands/watchoptions.h"
#include "nms/events/activealarms.h"
#include "nms/events/alarmtable.h"
#include "nms/output/rowstream.h"

namespace zk::nms {
namespace {

const char* const kFooter =
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

Columns changeColumns() {
  Columns columns = alarmColumns();
  columns.insert(columns.begin() + 1, {"change", "CHANGE"});
  columns.push_back({"active", "ACTIVE", true});
  return columns;
}

class AlarmWatcher : public WatchHandler {
 public:
  AlarmWatcher(const Context& context, const AlarmScope& scope, unsigned count)
      : context_(context), scope_(scope), count_(count) {}

  bool catchUp(Connection& connection) override {
    elementName_ = scopeName(connection, scope_);
    const auto active = activeAlarms(connection, scope_, context_.options.page);
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

  bool satisfied() const override { return count_ > 0 && came_ >= count_; }
  unsigned came() const { return came_; }

 private:
  void write(const std::string& what, const Alarm& alarm) {
    Row row = alarmRow(alarm);
    row.insert(row.begin() + 1, what);
    row.emplace_back(static_cast<Json::UInt64>(table_.size()));
    stream_->write(row);
  }

  const Context& context_;
  const AlarmScope& scope_;
  const unsigned count_;
  std::unique_ptr<RowStream> stream_;
  AlarmTable table_;
  std::string elementName_;
  bool started_ = false;
  unsigned came_ = 0;
};

class AlarmsCommand : public Command {
 public:
  AlarmsCommand() { settings_.wishes.types = {"NT_ALARM"}; }

  std::string name() const override { return "alarms"; }
  std::string summary() const override { return "List the active alarms, or watch them"; }

  void declare(CLI::App& app) override {
    app.add_option("element", scope_.element, "Of this managed element: its id or its full name")
        ->option_text("NAME-OR-ID");
    declareExclusions(app);
    CLI::Option* watch = app.add_flag("-w,--watch", watch_, "Go on with what changes");
    declareCount(app, count_)->description("End after so many changes");
    declareDelivery(app, settings_.wishes);
    declareWatch(app, settings_);
    for (const char* option :
         {"--count", "--timeout", "--ping", "--no-reconnect", "--pull", "--structured"}) {
      app.get_option(option)->needs(watch);
    }
    app.footer(kFooter);
  }

  void run(const Context& context) override {
    checkScope(scope_);
    if (watch_) {
      watch(context);
    } else {
      list(context);
    }
  }

 private:
  void declareExclusions(CLI::App& app) {
    app.add_option("--exclude-severity", scope_.notSeverities,
                   "Leave out critical, major, minor, warning or indeterminate ones; repeatable")
        ->option_text("SEVERITY")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--exclude-cause", scope_.notCauses,
                   "Leave out those with this probable cause; repeatable")
        ->option_text("CAUSE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  }

  void list(const Context& context) const {
    Connection connection(context.options, context.interrupts);
    Rows rows;
    for (const Alarm& alarm : activeAlarms(connection, scope_, context.options.page)) {
      rows.push_back(alarmRow(alarm));
    }
    writeList(context.out, context.options.format, alarmColumns(), rows);
  }

  void watch(const Context& context) const {
    AlarmWatcher watcher(context, scope_, count_);
    Watch watch(context, settings_, watcher);
    const Watch::End end = watch.run();
    conclude(watch, end, watcher.came(), count_);
  }

  AlarmScope scope_;
  bool watch_ = false;
  unsigned count_ = 0;
  WatchSettings settings_;
};

}  // namespace

std::unique_ptr<Command> makeAlarmsCommand() { return std::make_unique<AlarmsCommand>(); }

}  // namespace zk::nms
