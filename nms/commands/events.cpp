#include <CLI/CLI.hpp>

#include "nms/commands/command.h"
#include "nms/commands/watchoptions.h"
#include "nms/events/eventrows.h"

namespace zk::nms {
namespace {

const char* const kFooter =
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

class Printer : public WatchHandler {
 public:
  Printer(const Context& context, unsigned count) : context_(context), count_(count) {}

  // Nothing is written for a login or a filter that is refused.
  bool catchUp(Connection&) override {
    if (stream_ == nullptr) {
      stream_ = eventStream(context_.out, context_.options.format);
    }
    return false;
  }

  void take(const Event& event) override {
    stream_->write(eventRow(event));
    ++came_;
  }
  bool satisfied() const override { return count_ > 0 && came_ >= count_; }

  unsigned came() const { return came_; }

 private:
  const Context& context_;
  const unsigned count_;
  std::unique_ptr<RowStream> stream_;
  unsigned came_ = 0;
};

class EventsCommand : public Command {
 public:
  std::string name() const override { return "events"; }
  std::string summary() const override { return "Watch what happens"; }

  void declare(CLI::App& app) override {
    app.add_option("--filter", settings_.wishes.constraints,
                   "Events that meet this constraint only, in the Notification Service's extended "
                   "trader constraint language; repeat it for events that meet any of several")
        ->option_text("CONSTRAINT")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    declareTypes(app, settings_.wishes);
    declareDelivery(app, settings_.wishes);
    declareCount(app, count_);
    declareWatch(app, settings_);
    app.footer(kFooter);
  }

  void run(const Context& context) override {
    Printer printer(context, count_);
    Watch watch(context, settings_, printer);
    const Watch::End end = watch.run();
    conclude(watch, end, printer.came(), count_);
  }

 private:
  WatchSettings settings_;
  unsigned count_ = 0;
};

}  // namespace

std::unique_ptr<Command> makeEventsCommand() { return std::make_unique<EventsCommand>(); }

}  // namespace zk::nms
