// Who is logged in, and out with them.
#include <memory>

#include "agent/cli/admincommands.h"

namespace zk::agent {

namespace {

using Admin = emsAdmin::EmsAdmin_I_ptr;

void addSessions(CLI::App& admin, AdminCommand& command) {
  CLI::App* const sessions =
      admin.add_subcommand("sessions", "List the NMS sessions: number and user, a line each");
  sessions->callback([&command] {
    command.request = [](Admin agent) {
      emsAdmin::NmsLoginList_T_var list = agent->getLogins();
      std::string text;
      for (CORBA::ULong i = 0; i < list->length(); ++i) {
        text += (i == 0 ? "" : "\n") + std::to_string(list[i].sessionId) + " " +
                std::string(list[i].user);
      }
      return text;
    };
  });
}

void addKick(CLI::App& admin, AdminCommand& command) {
  const auto session = std::make_shared<CORBA::Long>(0);
  CLI::App* const kick = admin.add_subcommand("kick", "End an NMS session and tell its NMS");
  kick->add_option("SESSION", *session, "Its number")->required();
  kick->callback([session, &command] {
    command.request = [session](Admin agent) {
      agent->endLogin(*session);
      return std::string();
    };
  });
}

}  // namespace

void addLoginCommands(CLI::App& admin, AdminCommand& command) {
  addSessions(admin, command);
  addKick(admin, command);
}

}  // namespace zk::agent
