// Commands that change one text of one object, alike but for the call they make.
#include <CLI/CLI.hpp>
#include <functional>

#include "nms/commands/command.h"
#include "nms/wire/target.h"

namespace zk::nms {
namespace {

using Call = std::function<void(common::Common_I_ptr manager, const globaldefs::NVSList_T& name,
                                const std::string& text)>;

class SetCommand : public Command {
 public:
  SetCommand(std::string name, std::string summary, std::string examples, Call call)
      : name_(std::move(name)),
        summary_(std::move(summary)),
        examples_(std::move(examples)),
        call_(std::move(call)) {}

  std::string name() const override { return name_; }
  std::string summary() const override { return summary_; }

  void declare(CLI::App& app) override {
    app.add_option("object", target_.object, "The object: its full name, or its id and --kind")
        ->option_text("NAME-OR-ID")
        ->required();
    app.add_option("text", text_, "The new text; may be empty")->option_text("TEXT")->required();
    declareKind(app, target_);
    app.footer("Examples:\n" + examples_ +
               "A text that begins with - goes after --, as in: zk-nms " + name_ + " -- 7 -text\n");
  }

  void run(const Context& context) override {
    checkTarget(target_);
    Connection connection(context.options, context.interrupts);
    const auto name = targetName(connection, target_, context.options.page);
    call_(targetManager(connection, name).in(), name, text_);
  }

 private:
  const std::string name_;
  const std::string summary_;
  const std::string examples_;
  const Call call_;
  Target target_;
  std::string text_;
};

class SetLabelCommand : public SetCommand {
 public:
  SetLabelCommand()
      : SetCommand("set-label", "Change an object's user label",
                   "  zk-nms set-label 7 \"Oslo core\"\n"
                   "  zk-nms set-label EMS=Quor/1,ManagedElement=7 \"Oslo core\" --unique\n"
                   "  zk-nms set-label --kind link 5 \"North ring\"\n",
                   [this](common::Common_I_ptr manager, const globaldefs::NVSList_T& name,
                          const std::string& text) {
                     manager->setUserLabel(name, text.c_str(), unique_);
                   }) {}

  void declare(CLI::App& app) override {
    SetCommand::declare(app);
    app.add_flag("--unique", unique_, "Refuse a label that another object has");
  }

 private:
  bool unique_ = false;
};

}  // namespace

std::unique_ptr<Command> makeSetLabelCommand() { return std::make_unique<SetLabelCommand>(); }

std::unique_ptr<Command> makeSetOwnerCommand() {
  return std::make_unique<SetCommand>(
      "set-owner", "Change an object's owner",
      "  zk-nms set-owner 7 \"Region North\"\n"
      "  zk-nms set-owner EMS=Quor/1,TopologicalLink=5 \"\"\n",
      [](common::Common_I_ptr manager, const globaldefs::NVSList_T& name, const std::string& text) {
        manager->setOwner(name, text.c_str());
      });
}

std::unique_ptr<Command> makeSetNativeNameCommand() {
  return std::make_unique<SetCommand>(
      "set-native-name", "Change the name that the EMS itself shows for an object",
      "  zk-nms set-native-name 7 osl-core-1\n"
      "  zk-nms set-native-name --kind node 3 osl\n",
      [](common::Common_I_ptr manager, const globaldefs::NVSList_T& name, const std::string& text) {
        manager->setNativeEMSName(name, text.c_str());
      });
}

}  // namespace zk::nms
