// The agent and its clients killed at moments by chance: whether every change that
// a client was told is made is still there.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <map>
#include <thread>

#include "agent/ems/inventory.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/runningagent.h"
#include "tests/reliability/run.h"
#include "tests/support/orb.h"

namespace {

using namespace zk::test;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr unsigned ELEMENTS = 40;  // each changed by one client alone

struct Settings {
  unsigned rounds = 100;
  unsigned clients = 4;
};

// What is known of one element's label: a change that was asked for when the kill
// came may have been made or not.
struct Label {
  std::string acknowledged;
  std::string asked;
};

std::string fileOf(const RunningAgent& agent, unsigned client) {
  return agent.folder.file("changes" + std::to_string(client));
}

// --- A client, which is a process of its own ---

// Each line is written before the next step, so that a kill loses none.
void note(int file, char what, unsigned element, const std::string& label) {
  const std::string line = what + std::to_string(element) + ' ' + label + '\n';
  if (write(file, line.data(), line.size()) != ssize_t(line.size())) {
    _exit(3);
  }
}

int changeWithoutEnd(const std::string& where, const std::string& path, unsigned client,
                     unsigned clients, unsigned round) {
  const ServingOrb orb;
  ReachableNms nms;
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  emsSession::EmsSession_I_var session;
  RunningAgent::resolve(where)->getEmsSession("", "", nms.reference.in(), session.out());
  const auto elements =
      managerOf<managedElementManager::ManagedElementMgr_I>(session.in(), "ManagedElement");
  for (unsigned number = 0;; ++number) {
    const unsigned element = 1 + client + clients * (number % (ELEMENTS / clients));
    const std::string label = std::to_string(round) + '-' + std::to_string(number);
    note(file, '?', element, label);
    elements->setUserLabel(named("ManagedElement", std::to_string(element)), label.c_str(), false);
    note(file, '!', element, label);
  }
}

// --- The rounds ---

class Kills {
 public:
  Kills(Run& run, const Settings& settings) : run_(run), settings_(settings), chance_(run.seed()) {}

  void go() {
    const auto begin = Clock::now();
    unsigned round = 0;
    while (round < settings_.rounds && playRound(round)) {
      ++round;
    }
    run_.figure("rounds", std::to_string(round));
    run_.figure("agents killed while clients changed labels", std::to_string(agentKills_));
    run_.figure("clients killed before the agent", std::to_string(clientKills_));
    run_.figure("changes acknowledged", std::to_string(acknowledged_));
    run_.figure("changes asked for when the agent was killed",
                std::to_string(made_) + " made, " + std::to_string(unmade_) + " not made");
    run_.figure("labels compared after the kills", std::to_string(compared_));
    run_.figure("acknowledged changes lost", std::to_string(lost_));
    run_.figure("start over what a kill left", starts_.quantile(0.5), "ms (median)");
    run_.figure("start over what a kill left, longest", starts_.quantile(1), "ms");
    run_.figure("duration", std::chrono::duration<double>(Clock::now() - begin).count(), "s");
    run_.promise(round == settings_.rounds, "every round is played");
    run_.promise(acknowledged_ > round, "there is something to lose");
    run_.promise(lost_ == 0, "no acknowledged change is lost");
  }

 private:
  bool playRound(unsigned round) {
    std::filesystem::remove(agent_.iorFile());
    const auto begin = Clock::now();
    auto agent = agent_.start({"--ping-period", "0"});
    if (!run_.promise(agent_.awaitServing(*agent), "the agent starts: " + agent->output())) {
      return false;
    }
    starts_.add(Clock::now() - begin);
    std::vector<std::unique_ptr<Process>> clients;
    for (unsigned i = 0; i < settings_.clients; ++i) {
      clients.push_back(startClient(i, round));
    }
    awaitChanges(clients);
    pauseByChance();
    if (chance_.oneIn(2)) {
      clients[chance_.below(clients.size())]->signal(SIGKILL);
      ++clientKills_;
      pauseByChance();
    }
    agent->signal(SIGKILL);
    ++agentKills_;
    const bool isKilled = agent->waitForEnd().value_or(-1) == 128 + SIGKILL;
    clients.clear();
    for (unsigned i = 0; i < settings_.clients; ++i) {
      collect(i);
    }
    compare();
    return run_.promise(isKilled, "the agent lives until it is killed: " + agent->output());
  }

  std::unique_ptr<Process> startClient(unsigned client, unsigned round) {
    const std::string where =
        "corbaloc:iiop:127.0.0.1:" + std::to_string(agent_.port) + "/EmsSessionFactory";
    return std::make_unique<Process>(
        "/proc/self/exe",
        std::vector<std::string>{"--client", where, fileOf(agent_, client), std::to_string(client),
                                 std::to_string(settings_.clients), std::to_string(round)},
        agent_.folder.file("client" + std::to_string(client)));
  }

  // All are at work, unless one cannot.
  void awaitChanges(const std::vector<std::unique_ptr<Process>>& clients) {
    for (unsigned i = 0; i < clients.size(); ++i) {
      const auto hasChanged = [&] {
        return bytesOf(fileOf(agent_, i)).find('!') != std::string::npos;
      };
      run_.promise(becomesTrue(hasChanged), "a client changes labels: " + clients[i]->output());
    }
  }

  void pauseByChance() {
    std::this_thread::sleep_for(std::chrono::microseconds(chance_.below(300000)));
  }

  void collect(unsigned client) {
    std::ifstream file(fileOf(agent_, client));
    char what = 0;
    unsigned element = 0;
    for (std::string label; file >> what >> element >> label;) {
      Label& known = labels_[element];
      if (what == '!') {
        known.acknowledged = label;
        known.asked.clear();
        ++acknowledged_;
      } else {
        known.asked = label;
      }
    }
    file.close();
    std::filesystem::remove(fileOf(agent_, client));
  }

  // The file as the next agent would open it.
  void compare() {
    const auto inventory = zk::agent::Inventory::open(agent_.inventory());
    for (auto& [element, known] : labels_) {
      const auto device = inventory->device(element);
      const std::string label = device ? device->userLabel : "gone";
      ++compared_;
      if (!known.asked.empty() && label == known.asked) {
        ++made_;
        known.acknowledged = label;
      } else {
        unmade_ += known.asked.empty() ? 0 : 1;
        const bool isKept = label == known.acknowledged || known.acknowledged.empty();
        lost_ += isKept ? 0 : 1;
        run_.promise(isKept, "element " + std::to_string(element) + " keeps '" +
                                 known.acknowledged + "', and has '" + label + "'");
      }
      known.asked.clear();
    }
  }

  Run& run_;
  const Settings& settings_;
  Chance chance_;
  const RunningAgent agent_;
  std::map<unsigned, Label> labels_;
  Latencies starts_;
  unsigned long agentKills_ = 0;
  unsigned long clientKills_ = 0;
  unsigned long acknowledged_ = 0;
  unsigned long made_ = 0;
  unsigned long unmade_ = 0;
  unsigned long compared_ = 0;
  unsigned long lost_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc == 7 && std::string(argv[1]) == "--client") {
    try {
      return changeWithoutEnd(argv[2], argv[3], unsigned(std::stoul(argv[4])),
                              unsigned(std::stoul(argv[5])), unsigned(std::stoul(argv[6])));
    } catch (const CORBA::Exception&) {
      return 0;  // the agent is gone
    }
  }
  Settings settings;
  Run run("kill", "The agent and its clients killed at moments by chance");
  run.add("--rounds", settings.rounds, "How many").showDefault();
  run.add("--clients", settings.clients, "At a time").range(1U, 20U).showDefault();
  if (const auto status = run.begin(argc, argv)) {
    return *status;
  }
  Kills(run, settings).go();
  return run.end();
}
