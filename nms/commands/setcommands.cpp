// The commands that change one text of one object, alike but for the call they make.
#include "nms/commands/program.h"
#include "nms/wire/objects.h"

namespace zk::nms {
namespace {

struct Change {
  const char* command;
  const char* summary;
  const char* examples;
  bool mayBeUnique;  // whether the call can refuse a text that another object has
  void (*call)(common::Common_I_ptr manager, const globaldefs::NVSList_T& name, const char* text,
               bool unique);
};

const Change CHANGES[] = {
    {"set-label", "Change an object's user label",
     "  zk-nms set-label 7 \"Oslo core\"\n"
     "  zk-nms set-label EMS=Quor/1,ManagedElement=7 \"Oslo core\" --unique\n"
     "  zk-nms set-label --kind link 5 \"North ring\"\n",
     true,
     [](common::Common_I_ptr manager, const globaldefs::NVSList_T& name, const char* text,
        bool unique) { manager->setUserLabel(name, text, unique); }},
    {"set-owner", "Change an object's owner",
     "  zk-nms set-owner 7 \"Region North\"\n"
     "  zk-nms set-owner EMS=Quor/1,TopologicalLink=5 \"\"\n",
     false,
     [](common::Common_I_ptr manager, const globaldefs::NVSList_T& name, const char* text, bool) {
       manager->setOwner(name, text);
     }},
    {"set-native-name", "Change the name that the EMS itself shows for an object",
     "  zk-nms set-native-name 7 osl-core-1\n"
     "  zk-nms set-native-name --kind node 3 osl\n",
     false,
     [](common::Common_I_ptr manager, const globaldefs::NVSList_T& name, const char* text, bool) {
       manager->setNativeEMSName(name, text);
     }}};

class SetCommand : public Command {
 public:
  explicit SetCommand(const Change& change) : change_(change) {}

  std::string name() const override { return change_.command; }
  std::string summary() const override { return change_.summary; }

  void declare(options::Command& command) override {
    command.add("object", target_.object, "The object: its full name, or its id and --kind")
        .formOnly("NAME-OR-ID")
        .required();
    command.add("text", text_, "The new text; may be empty").formOnly("TEXT").required();
    command
        .add("--kind", target_.command,
             "What a bare id is of: me, subnetwork, link, node, submap or displaylink. A full "
             "name says it itself")
        .formOnly("KIND");
    if (change_.mayBeUnique) {
      command.flag("--unique", unique_, "Refuse a label that another object has");
    }
    command.footer("Examples:\n" + std::string(change_.examples) +
                   "A text that begins with - goes after --, as in: zk-nms " + name() +
                   " -- 7 -text\n");
  }

  void run(const Context& context) override {
    checkTarget(target_);
    Connection connection(context.options.access, context.interrupts);
    const auto name = targetName(connection, target_);
    change_.call(targetManager(connection, name).in(), name, text_.c_str(), unique_);
  }

 private:
  const Change& change_;
  Target target_;
  std::string text_;
  bool unique_ = false;
};

}  // namespace

void addSetCommands(Commands& commands) {
  for (const Change& change : CHANGES) {
    commands.push_back(std::make_unique<SetCommand>(change));
  }
}

}  // namespace zk::nms
