// Objects of the map.
#include <memory>
#include <utility>
#include <vector>

#include "agent/base/sequences.h"
#include "agent/cli/admincommands.h"

namespace zk::agent {

namespace {

// What the command line may say of an object of one kind. An attribute that is
// not given is not sent: the agent knows which must be.
struct MapCommand {
  const char* kind;
  std::vector<std::pair<const char*, const char*>> attributes;  // name and help
};

const std::vector<MapCommand>& mapCommands() {
  static const std::vector<MapCommand> commands = {
      {"node", {{"name", "Its name"}, {"parent", "Submap"}, {"device", "Device it stands for"}}},
      {"submap", {{"name", "Its name"}, {"parent", "Submap around it; / is the root"}}},
      {"display-link",
       {{"name", "Its name"},
        {"parent", "Submap it is drawn in"},
        {"aEnd", "Node or submap at one end"},
        {"zEnd", "Node or submap at the other"}}},
      {"physical-link", {{"link", "Topological link over it"}}}};
  return commands;
}

using Values = std::vector<std::pair<std::string, std::string>>;

globaldefs::NVSList_T given(const Values& values) {
  globaldefs::NVSList_T list;
  for (const auto& [name, value] : values) {
    if (!value.empty()) {
      appendPair(list, name.c_str(), value);
    }
  }
  return list;
}

void addCreate(CLI::App& admin, AdminCommand& command, const MapCommand& row) {
  const std::string kind = row.kind;
  CLI::App* const create =
      admin.add_subcommand("create-" + kind, "Add a " + kind + "; prints its id");
  const auto values = std::make_shared<Values>();
  values->reserve(row.attributes.size() + 1);
  for (const auto& [name, help] : row.attributes) {
    values->emplace_back(name, "");
    create->add_option(std::string("--") + name, values->back().second, help)->required();
  }
  values->emplace_back("id", "");
  create->add_option("--id", values->back().second, "Its id; otherwise a new one");
  create->callback([kind, values, &command] {
    command.request = [kind, values](emsAdmin::EmsAdmin_I_ptr agent) {
      const CORBA::String_var id = agent->createMapObject(kind.c_str(), given(*values));
      return std::string(id.in());
    };
  });
}

}  // namespace

void addMapCommands(CLI::App& admin, AdminCommand& command) {
  for (const MapCommand& row : mapCommands()) {
    addCreate(admin, command, row);
  }
}

}  // namespace zk::agent
