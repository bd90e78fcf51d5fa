#include <CLI/CLI.hpp>

#include "nms/commands/command.h"
#include "nms/output/cells.h"
#include "nms/output/output.h"
#include "nms/wire/connection.h"

namespace zk::nms {
namespace {

Columns columns() {
  return {{"name", "NAME"},
          {"userLabel", "USER LABEL"},
          {"nativeEMSName", "NATIVE NAME"},
          {"owner", "OWNER"},
          {"emsVersion", "VERSION"},
          {"type", "TYPE"},
          {"additionalInfo", "ADDITIONAL INFO"}};
}

Row row(const emsMgr::EMS_T& ems) {
  return {
      nameCell(ems.name),           textCell(ems.userLabel.in()),  textCell(ems.nativeEMSName.in()),
      textCell(ems.owner.in()),     textCell(ems.emsVersion.in()), textCell(ems.type.in()),
      pairsCell(ems.additionalInfo)};
}

class EmsCommand : public Command {
 public:
  std::string name() const override { return "ems"; }
  std::string summary() const override { return "Show the EMS"; }

  void declare(CLI::App& app) override {
    app.footer(
        "Examples:\n"
        "  zk-nms ems\n"
        "  zk-nms -o json ems\n");
  }

  void run(const Context& context) override {
    Connection connection(context.options, context.interrupts);
    emsMgr::EMS_T_var ems;
    connection.emsManager()->getEMS(ems.out());
    writeOne(context.out, context.options.format, columns(), row(ems.in()));
  }
};

}  // namespace

std::unique_ptr<Command> makeEmsCommand() { return std::make_unique<EmsCommand>(); }

}  // namespace zk::nms
