#include <CLI/CLI.hpp>

#include "nms/commands/command.h"
#include "nms/commands/watchoptions.h"
#include "nms/events/eventrows.h"

namespace zk::nms {
namespace {

const char* const kFooter =
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

class Finder : public WatchHandler {
 public:
  explicit Finder(const Context& context) : context_(context) {}

  void take(const Event& event) override {
    eventStream(context_.out, context_.options.format)->write(eventRow(event));
    found_ = true;
  }
  bool satisfied() const override { return found_; }

 private:
  const Context& context_;
  bool found_ = false;
};

class WaitCommand : public Command {
 public:
  std::string name() const override { return "wait"; }
  std::string summary() const override { return "Wait until something happens"; }

  void declare(CLI::App& app) override {
    app.add_option("--for", settings_.wishes.constraints,
                   "Constraint in the Notification Service's extended trader constraint language; "
                   "repeat it to wait for any of several")
        ->option_text("CONSTRAINT")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->required();
    declareTypes(app, settings_.wishes);
    declareDelivery(app, settings_.wishes);
    declareWatch(app, settings_);
    app.footer(kFooter);
  }

  void run(const Context& context) override {
    Finder finder(context);
    Watch watch(context, settings_, finder);
    const Watch::End end = watch.run();
    if (end == Watch::End::kTimeIsUp) {
      conclude(watch, end, 0, 1);
    }
  }

 private:
  WatchSettings settings_;
};

}  // namespace

std::unique_ptr<Command> makeWaitCommand() { return std::make_unique<WaitCommand>(); }

}  // namespace zk::nms
