// Devices, links between them, and what applies to any object.
#include <memory>

#include "agent/cli/admincommands.h"

namespace zk::agent {

namespace {

using Admin = emsAdmin::EmsAdmin_I_ptr;

constexpr char PORT[] = "/rack=1/shelf=1/slot=1/port=1";

void addCreateDevice(CLI::App& admin, AdminCommand& command) {
  struct Given {
    std::string name, product, site;
  };
  const auto given = std::make_shared<Given>();
  CLI::App* const create = admin.add_subcommand("create-device", "Add a device; prints its id");
  create->add_option("--name", given->name, "Its name")->required();
  create->add_option("--product", given->product, "Type of the device")->required();
  create->add_option("--site", given->site, "Submap of its site");
  create->callback([given, &command] {
    command.request = [given](Admin agent) {
      return std::to_string(
          agent->createDevice(given->name.c_str(), given->product.c_str(), given->site.c_str()));
    };
  });
}

void addRenameDevice(CLI::App& admin, AdminCommand& command) {
  struct Given {
    CORBA::Long id = 0;
    std::string name;
  };
  const auto given = std::make_shared<Given>();
  CLI::App* const rename = admin.add_subcommand("rename-device", "Give a device another name");
  rename->add_option("ID", given->id, "The device")->required();
  rename->add_option("NAME", given->name, "Its new name")->required();
  rename->callback([given, &command] {
    command.request = [given](Admin agent) {
      agent->renameDevice(given->id, given->name.c_str());
      return std::string();
    };
  });
}

void addCreateLink(CLI::App& admin, AdminCommand& command) {
  struct Given {
    std::string name, aPort = PORT, zPort = PORT;
    CORBA::Long a = 0, z = 0;
  };
  const auto given = std::make_shared<Given>();
  CLI::App* const create =
      admin.add_subcommand("create-link", "Add a topological link; prints its id");
  create->add_option("--name", given->name, "Its name")->required();
  create->add_option("--a", given->a, "Device at the A end")->required();
  create->add_option("--z", given->z, "Device at the Z end")->required();
  create->add_option("--a-port", given->aPort, "Port at the A end")->capture_default_str();
  create->add_option("--z-port", given->zPort, "Port at the Z end")->capture_default_str();
  create->callback([given, &command] {
    command.request = [given](Admin agent) {
      const CORBA::String_var id = agent->createLink(
          given->name.c_str(), given->a, given->aPort.c_str(), given->z, given->zPort.c_str());
      return std::string(id.in());
    };
  });
}

void addRemove(CLI::App& admin, AdminCommand& command) {
  struct Given {
    std::string kind, id;
  };
  const auto given = std::make_shared<Given>();
  CLI::App* const remove = admin.add_subcommand("remove", "Remove an object");
  remove
      ->add_option("KIND", given->kind, "device, link, node, submap, display-link or physical-link")
      ->required();
  remove->add_option("ID", given->id, "Its id")->required();
  remove->callback([given, &command] {
    command.request = [given](Admin agent) {
      agent->remove(given->kind.c_str(), given->id.c_str());
      return std::string();
    };
  });
}

void addSet(CLI::App& admin, AdminCommand& command) {
  struct Given {
    std::string kind, id, label, text;
  };
  const auto given = std::make_shared<Given>();
  CLI::App* const set = admin.add_subcommand("set", "Change a label of an object");
  set->add_option("KIND", given->kind, "As for remove; also ems (with the id \"\"), subnetwork")
      ->required();
  set->add_option("ID", given->id, "Its id")->required();
  set->add_option("LABEL", given->label, "userLabel, owner or nativeEMSName")->required();
  set->add_option("TEXT", given->text, "Its new text")->required();
  set->callback([given, &command] {
    command.request = [given](Admin agent) {
      agent->setLabel(given->kind.c_str(), given->id.c_str(), given->label.c_str(),
                      given->text.c_str());
      return std::string();
    };
  });
}

}  // namespace

void addDeviceCommands(CLI::App& admin, AdminCommand& command) {
  addCreateDevice(admin, command);
  addRenameDevice(admin, command);
  addCreateLink(admin, command);
  addRemove(admin, command);
  addSet(admin, command);
}

}  // namespace zk::agent
