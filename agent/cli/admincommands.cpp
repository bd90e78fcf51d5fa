#include "agent/cli/admincommands.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "agent/base/log.h"
#include "agent/base/sequences.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

namespace {

using Admin = emsAdmin::EmsAdmin_I_ptr;
using options::Command;
using Severity_T = notifications::PerceivedSeverity_T;

// The commands, and what the one that is given asks for.
class Commands {
 public:
  Commands(Command admin, AdminCommand& asked) : admin_(admin), asked_(asked) {}

  // declare adds the command's options, which fill in a Given; ask asks for what
  // they say, and gives what to print if anything.
  template <class Given, class Declare, class Ask>
  void add(const std::string& name, const std::string& summary, Declare declare, Ask ask) {
    const auto given = std::make_shared<Given>();
    Command command = admin_.subcommand(name, summary);
    declare(command, *given);
    command.whenGiven([given, ask, &asked = asked_] {
      asked.request = [given, ask](Admin agent) { return answerOf(ask, agent, *given); };
    });
  }

 private:
  template <class Ask, class Given>
  static std::string answerOf(const Ask& ask, Admin agent, const Given& given) {
    if constexpr (std::is_void_v<decltype(ask(agent, given))>) {
      ask(agent, given);
      return {};
    } else {
      return ask(agent, given);
    }
  }

  Command admin_;
  AdminCommand& asked_;
};

struct Nothing {};

std::string textOf(char* id) { return CORBA::String_var(id).in(); }

void addDevices(Commands& commands) {
  struct Device {
    CORBA::Long id = 0;
    std::string name, product, site;
  };
  commands.add<Device>(
      "create-device", "Add a device; prints its id",
      [](Command& command, Device& device) {
        command.add("--name", device.name, "Its name").required();
        command.add("--product", device.product, "Type of the device").required();
        command.add("--site", device.site, "Submap of its site");
      },
      [](Admin agent, const Device& device) {
        return std::to_string(
            agent->createDevice(device.name.c_str(), device.product.c_str(), device.site.c_str()));
      });
  commands.add<Device>(
      "rename-device", "Give a device another name",
      [](Command& command, Device& device) {
        command.add("ID", device.id, "The device").required();
        command.add("NAME", device.name, "Its new name").required();
      },
      [](Admin agent, const Device& device) {
        agent->renameDevice(device.id, device.name.c_str());
      });
}

void addLinks(Commands& commands) {
  struct Link {
    std::string name;
    std::string aPort = "/rack=1/shelf=1/slot=1/port=1", zPort = aPort;
    CORBA::Long a = 0, z = 0;
  };
  commands.add<Link>(
      "create-link", "Add a topological link; prints its id",
      [](Command& command, Link& link) {
        command.add("--name", link.name, "Its name").required();
        command.add("--a", link.a, "Device at the A end").required();
        command.add("--z", link.z, "Device at the Z end").required();
        command.add("--a-port", link.aPort, "Port at the A end").showDefault();
        command.add("--z-port", link.zPort, "Port at the Z end").showDefault();
      },
      [](Admin agent, const Link& link) {
        return textOf(agent->createLink(link.name.c_str(), link.a, link.aPort.c_str(), link.z,
                                        link.zPort.c_str()));
      });
}

// What applies to any object.
void addObjects(Commands& commands) {
  struct Object {
    std::string kind, id, label, text;
  };
  commands.add<Object>(
      "remove", "Remove an object",
      [](Command& command, Object& object) {
        command
            .add("KIND", object.kind, "device, link, node, submap, display-link or physical-link")
            .required();
        command.add("ID", object.id, "Its id").required();
      },
      [](Admin agent, const Object& object) {
        agent->remove(object.kind.c_str(), object.id.c_str());
      });
  commands.add<Object>(
      "set", "Change a label of an object",
      [](Command& command, Object& object) {
        command.add("KIND", object.kind, "As for remove; also ems (with the id \"\"), subnetwork")
            .required();
        command.add("ID", object.id, "Its id").required();
        command.add("LABEL", object.label, "userLabel, owner or nativeEMSName").required();
        command.add("TEXT", object.text, "Its new text").required();
      },
      [](Admin agent, const Object& object) {
        agent->setLabel(object.kind.c_str(), object.id.c_str(), object.label.c_str(),
                        object.text.c_str());
      });
}

// An object of the map: its kind, and the names of its attributes with their
// help. An attribute that is not given is not sent: the agent knows which must
// be.
void addMapObject(Commands& commands, const std::string& kind,
                  const std::vector<std::pair<const char*, const char*>>& attributes) {
  using Values = std::vector<std::pair<std::string, std::string>>;
  commands.add<Values>(
      "create-" + kind, "Add a " + kind + "; prints its id",
      [&attributes](Command& command, Values& values) {
        values.reserve(attributes.size() + 1);  // the options keep the values' places
        for (const auto& [name, help] : attributes) {
          values.emplace_back(name, "");
          command.add(std::string("--") + name, values.back().second, help).required();
        }
        values.emplace_back("id", "");
        command.add("--id", values.back().second, "Its id; otherwise a new one");
      },
      [kind](Admin agent, const Values& values) {
        globaldefs::NVSList_T given;
        for (const auto& [name, value] : values) {
          if (!value.empty()) {
            appendPair(given, name.c_str(), value);
          }
        }
        return textOf(agent->createMapObject(kind.c_str(), given));
      });
}

void addMap(Commands& commands) {
  addMapObject(commands, "node",
               {{"name", "Its name"}, {"parent", "Submap"}, {"device", "Device it stands for"}});
  addMapObject(commands, "submap",
               {{"name", "Its name"}, {"parent", "Submap around it; / is the root"}});
  addMapObject(commands, "display-link",
               {{"name", "Its name"},
                {"parent", "Submap it is drawn in"},
                {"aEnd", "Node or submap at one end"},
                {"zEnd", "Node or submap at the other"}});
  addMapObject(commands, "physical-link", {{"link", "Topological link over it"}});
}

void addAlarms(Commands& commands) {
  struct Alarm {
    CORBA::Long id = 0, device = 0;
    std::string cause, qualifier, text;
    Severity_T severity = notifications::PS_MAJOR;
  };
  commands.add<Alarm>(
      "raise-alarm", "Raise an alarm, or change it; prints its number",
      [](Command& command, Alarm& alarm) {
        command.add("--device", alarm.device, "The device; without one, the EMS itself");
        command.add("--cause", alarm.cause, "Probable cause, such as LOS").required();
        command.add("--qualifier", alarm.qualifier, "Where on the device");
        command.choice(
            "--severity", alarm.severity,
            options::Choices<Severity_T>{{"critical", notifications::PS_CRITICAL},
                                         {"indeterminate", notifications::PS_INDETERMINATE},
                                         {"major", notifications::PS_MAJOR},
                                         {"minor", notifications::PS_MINOR},
                                         {"warning", notifications::PS_WARNING}},
            "How bad it is");
        command.add("--text", alarm.text, "Additional text");
      },
      [](Admin agent, const Alarm& alarm) {
        return std::to_string(agent->raiseAlarm(alarm.device, alarm.cause.c_str(),
                                                alarm.qualifier.c_str(), alarm.severity,
                                                alarm.text.c_str()));
      });
  commands.add<Alarm>(
      "clear-alarm", "Clear an alarm",
      [](Command& command, Alarm& alarm) {
        command.add("ALARM", alarm.id, "Its number").required();
      },
      [](Admin agent, const Alarm& alarm) { agent->clearAlarm(alarm.id); });
}

void addTraffic(Commands& commands) {
  commands.add<double>(
      "traffic", "Let the EMS make up changes by itself",
      [](Command& command, double& rate) {
        command.add("RATE", rate, "Changes a second; 0 ends them").required();
      },
      [](Admin agent, const double& rate) { agent->setTraffic(rate); });
}

// Who is logged in, and out with them.
void addLogins(Commands& commands) {
  commands.add<Nothing>(
      "sessions", "List the NMS sessions: number and user, a line each", [](Command&, Nothing&) {},
      [](Admin agent, const Nothing&) {
        emsAdmin::NmsLoginList_T_var list = agent->getLogins();
        std::string text;
        for (CORBA::ULong i = 0; i < list->length(); ++i) {
          text += (i == 0 ? "" : "\n") + std::to_string(list[i].sessionId) + " " +
                  printable(list[i].user);
        }
        return text;
      });
  commands.add<CORBA::Long>(
      "kick", "End an NMS session and tell its NMS",
      [](Command& command, CORBA::Long& session) {
        command.add("SESSION", session, "Its number").required();
      },
      [](Admin agent, const CORBA::Long& session) { agent->endLogin(session); });
}

int fail(AdminStatus status, const std::string& reason) {
  std::fprintf(stderr, "zk-agent: %s\n", reason.c_str());
  return status;
}

std::string referenceFor(const std::string& agent) {
  if (agent.rfind("IOR:", 0) == 0 || agent.rfind("corbaloc:", 0) == 0) {
    return agent;
  }
  std::string line;
  if (std::getline(std::ifstream(agent), line)) {
    return line;
  }
  return "corbaloc:iiop:" + agent + "/" + ADMIN_KEY;
}

// Ends the ORB however the request went.
class ClientOrb {
 public:
  ClientOrb() {
    int count = 0;
    orb_ = CORBA::ORB_init(count, nullptr);
  }
  ~ClientOrb() { orb_->destroy(); }
  ClientOrb(const ClientOrb&) = delete;
  ClientOrb& operator=(const ClientOrb&) = delete;

  emsAdmin::EmsAdmin_I_ptr adminOf(const std::string& agent) const {
    const CORBA::Object_var object = orb_->string_to_object(referenceFor(agent).c_str());
    return emsAdmin::EmsAdmin_I::_unchecked_narrow(object.in());
  }

 private:
  CORBA::ORB_var orb_;
};

void ask(const AdminCommand& command) {
  const ClientOrb orb;
  const emsAdmin::EmsAdmin_I_var admin = orb.adminOf(command.agent);
  const std::string answer = command.request(admin.in());
  if (!answer.empty()) {
    std::printf("%s\n", answer.c_str());
  }
}

}  // namespace

void addAdminCommands(options::Program& program, AdminCommand& command) {
  Command admin =
      program.subcommand("admin", "Change the network of a running agent's embedded EMS");
  admin.requireSubcommands(1, 1);
  admin.footer(
      "Exit status: 0 done, 3 wrong usage, 6 the agent refused, 7 no agent answered, or one\n"
      "without --admin.");
  admin
      .add("--agent", command.agent,
           "HOST:PORT of the agent, started with --admin; or the reference in its\n"
           "--admin-ior-file, or that file")
      .environment("ZK_AGENT_LISTEN")
      .showDefault();
  Commands commands(admin, command);
  addDevices(commands);
  addLinks(commands);
  addObjects(commands);
  addMap(commands);
  addAlarms(commands);
  addTraffic(commands);
  addLogins(commands);
}

int runAdmin(const AdminCommand& command) {
  try {
    ask(command);
    return ADMIN_DONE;
  } catch (const globaldefs::ProcessingFailureException& refused) {
    return fail(ADMIN_REFUSED, std::string("refused: ") + refused.errorReason.in());
  } catch (const CORBA::BAD_PARAM&) {
    return fail(ADMIN_NOT_REACHED,
                "not HOST:PORT, a reference, or a file with one: '" + command.agent + "'");
  } catch (const CORBA::OBJECT_NOT_EXIST&) {
    return fail(ADMIN_NOT_REACHED, "the agent at " + command.agent +
                                       " offers no administration; start it with --admin");
  } catch (const CORBA::SystemException& failure) {
    return fail(ADMIN_NOT_REACHED,
                "no agent answers at " + command.agent + " (" + failure._name() + ")");
  }
}

}  // namespace zk::agent
