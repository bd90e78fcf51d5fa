#include "nms/commands/objects.h"

#include <CLI/CLI.hpp>

#include "nms/output/cells.h"

namespace zk::nms {
namespace {

class ObjectCommand : public Command {
 public:
  explicit ObjectCommand(ObjectKind kind) : kind_(std::move(kind)) {}

  std::string name() const override { return kind_.command; }
  std::string summary() const override { return kind_.summary; }

  void declare(CLI::App& app) override {
    given_ = app.add_option("object", object_, "Show this one: its id or its full name")
                 ->option_text("NAME-OR-ID");
    app.add_flag("--names", namesOnly_, "List names only")->excludes(given_);
    app.footer("Examples:\n" + kind_.examples);
  }

  void run(const Context& context) override {
    if (given_->count() > 0) {
      showOne(context);
    } else if (namesOnly_) {
      listNames(context);
    } else {
      list(context);
    }
  }

 private:
  void showOne(const Context& context) const {
    checkArgument(object_);
    Connection connection(context.options, context.interrupts);
    const auto name = nameOf(connection, context.options.page);
    writeOne(context.out, context.options.format, kind_.columns, kind_.one(connection, name));
  }

  globaldefs::NVSList_T nameOf(Connection& connection, CORBA::ULong page) const {
    return kind_.nameOf ? kind_.nameOf(connection, object_, page)
                        : connection.objectName(object_, kind_.pairName.c_str());
  }

  void listNames(const Context& context) const {
    Connection connection(context.options, context.interrupts);
    writeList(context.out, context.options.format, {{"name", "NAME"}},
              kind_.names(connection, context.options.page));
  }

  void list(const Context& context) const {
    Connection connection(context.options, context.interrupts);
    writeList(context.out, context.options.format, kind_.columns,
              kind_.list(connection, context.options.page));
  }

  const ObjectKind kind_;
  std::string object_;
  CLI::Option* given_ = nullptr;
  bool namesOnly_ = false;
};

}  // namespace

std::unique_ptr<Command> makeObjectCommand(ObjectKind kind) {
  return std::make_unique<ObjectCommand>(std::move(kind));
}

Rows drainNames(CORBA::ULong page, globaldefs::NamingAttributesList_T_var& list,
                globaldefs::NamingAttributesIterator_I_var& iterator) {
  return drainRows(page, list, iterator,
                   [](const globaldefs::NVSList_T& name) { return Row{nameCell(name)}; });
}

}  // namespace zk::nms
