// What the machine may do to the agent: a full disk, no descriptors, no threads, a
// clock that steps, clients that hang. Changes are acknowledged and kept or refused
// meanwhile, and all is well again within a second of the fault's end.
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <thread>

#include "tests/agent/support/rawclient.h"
#include "tests/reliability/labels.h"
#include "tests/reliability/run.h"
#include "tests/support/orb.h"

namespace {

using namespace zk::test;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Arguments = RunningAgent::Arguments;

constexpr const char* FACTORY = "EmsSessionFactory";
constexpr const char* ANOTHER_USER = "61814";
constexpr milliseconds RECOVERY{1000};

struct Settings {
  double seconds = 5;
  std::string only;
};

bool isRoot() { return geteuid() == 0; }

// A newcomer's first answer, which takes a connection and a thread.
bool isNewcomerServed(const RunningAgent& agent) {
  RawClient client(agent.port);
  const auto message = client.send(request(1, FACTORY, "getVersion")).receive(1000);
  return message && readReply(*message).status == 0;
}

class Faults {
 public:
  Faults(Run& run, const Settings& settings) : run_(run), settings_(settings) {}

  void go() {
    play("disk full", [this] { diskFull(true); });
    play("disk of the log full", [this] { diskFull(false); });
    play("files may not grow", [this] { filesMayNotGrow(); });
    play("inventory read-only", [this] { readOnly(); });
    play("inventory locked by another", [this] { locked(); });
    play("no descriptors", [this] { noDescriptors(); });
    play("no threads", [this] { noThreads(); });
    play("no memory", [this] { noMemory(); });
    play("clock one hour ahead", [this] { clockSteps(3600); });
    play("clock one hour back", [this] { clockSteps(-3600); });
    play("clients that hang", [this] { hangingClients(); });
  }

 private:
  void play(const std::string& name, const std::function<void()>& fault) {
    if (!settings_.only.empty() && settings_.only != name) {
      return;
    }
    name_ = name;
    agent_ = std::make_unique<RunningAgent>();
    try {
      fault();
    } catch (const CORBA::Exception& failure) {
      promise(false, std::string("no call fails: ") + failure._name());
    } catch (const std::exception& failure) {
      promise(false, std::string("nothing fails: ") + failure.what());
    }
    process_.reset();
    agent_.reset();
    deaf_.reset();
    disk_.clear();
  }

  bool promise(bool isKept, const std::string& what) {
    return run_.promise(isKept, name_ + ": " + what);
  }
  void figure(const std::string& what, const std::string& value) {
    run_.figure(name_ + ": " + what, value);
  }
  bool needsRoot() {
    if (!isRoot()) {
      figure("left out", "it takes root");
    }
    return isRoot();
  }

  // --- The agent ---

  Arguments plain(const std::string& inventory, const std::string& log) const {
    return {ZK_AGENT_PROGRAM,
            "--listen",
            "127.0.0.1:" + std::to_string(agent_->port),
            "--inventory",
            inventory,
            "--ior-file",
            agent_->iorFile(),
            "--ping-period",
            "1",
            "--log-file",
            log};
  }
  Arguments plain() const { return plain(agent_->inventory(), agent_->folder.file("log")); }

  // With a program before it, which becomes the agent.
  void startWith(const Arguments& program, const Arguments& agent) {
    Arguments all = program;
    all.insert(all.end(), agent.begin(), agent.end());
    process_ = std::make_unique<Process>(all.front(), Arguments(all.begin() + 1, all.end()),
                                         agent_->folder.file("output"));
  }

  bool isServing() {
    return promise(agent_->awaitServing(*process_), "the agent starts: " + process_->output());
  }

  // In a place of its own for mounts, after a command there.
  void startAfter(const std::string& command, const Arguments& agent) {
    startWith({"/usr/bin/unshare", "-m", "/bin/sh", "-c", command + " && exec \"$0\" \"$@\""},
              agent);
  }

  // --- The same for each fault ---

  // Changes before, while and after it lasts.
  void suffer(const std::function<void()>& begin, const std::function<void()>& end) {
    Labels labels(*agent_);
    promise(labels.change() == Labels::Outcome::ACKNOWLEDGED, "changes are made before");
    begin();
    const unsigned long before = labels.acknowledgements();
    const auto until = Clock::now() + milliseconds(long(settings_.seconds * 1000));
    while (Clock::now() < until) {
      const auto outcome = labels.change();
      if (outcome == Labels::Outcome::REFUSED) {
        promise(labels.read() == labels.acknowledged(), "a refused change is not made");
      }
      std::this_thread::sleep_for(milliseconds(2));
    }
    figure("meanwhile", std::to_string(labels.acknowledgements() - before) + " changes made, " +
                            std::to_string(labels.refusals()) + " refused, " +
                            std::to_string(labels.unanswered()) + " not answered");
    promise(labels.unanswered() == 0, "every change is answered: " + labels.failure());
    figure("a newcomer meanwhile", isNewcomerServed(*agent_) ? "served" : "turned away");
    end();
    recover(labels);
    promise(process_->running(), "the agent runs: " + process_->output());
    keep(labels);
  }

  void recover(Labels& labels) {
    const auto begin = Clock::now();
    const auto isWell = [&] {
      return labels.change() == Labels::Outcome::ACKNOWLEDGED && isNewcomerServed(*agent_);
    };
    const bool isBack = becomesTrue(isWell);
    const auto took = std::chrono::duration<double, std::milli>(Clock::now() - begin);
    figure("a change is made and a newcomer served after", rounded(took.count()) + " ms");
    promise(isBack && took <= RECOVERY, "all is well within a second of its end");
  }

  // What a kill leaves at this moment.
  void keep(const Labels& labels) {
    process_->signal(SIGSTOP);
    if (!disk_.empty()) {
      for (const char* file : {"agent.db", "agent.db-wal"}) {
        std::filesystem::copy(disk_ + '/' + file, agent_->folder.file(file));
      }
    }
    process_->signal(SIGKILL);
    process_->waitForEnd();
    const std::string stored = Labels::stored(*agent_);
    promise(stored == labels.acknowledged(), "the last acknowledged change is kept: '" +
                                                 labels.acknowledged() + "', not '" + stored + "'");
  }

  // --- Each fault ---

  // A small file system for the log, or for both files.
  void diskFull(bool withInventory) {
    if (!needsRoot()) {
      return;
    }
    const std::string disk = agent_->folder.file("disk");
    std::filesystem::create_directory(disk);
    startAfter("mount -t tmpfs -o size=4m tmpfs " + disk,
               plain(withInventory ? disk + "/agent.db" : agent_->inventory(), disk + "/log"));
    if (!isServing()) {
      return;
    }
    const std::string inside = "/proc/" + process_->id() + "/root" + disk;
    disk_ = withInventory ? inside : "";
    suffer([&] { fill(inside + "/filler"); }, [&] { std::filesystem::remove(inside + "/filler"); });
  }

  static void fill(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const std::string block(4096, 'x');
    while (write(file, block.data(), block.size()) > 0) {
    }
    close(file);
  }

  void limit(__rlimit_resource resource, rlim_t most) const {
    const auto pid = static_cast<pid_t>(std::stol(process_->id()));
    rlimit now{};
    prlimit(pid, resource, nullptr, &now);
    now.rlim_cur = std::min(most, now.rlim_max);
    if (prlimit(pid, resource, &now, nullptr) != 0) {
      throw std::runtime_error(std::string("no limit: ") + std::strerror(errno));
    }
  }

  void filesMayNotGrow() {
    startWith({}, plain());
    if (isServing()) {
      suffer([this] { limit(RLIMIT_FSIZE, 4096); }, [this] { limit(RLIMIT_FSIZE, RLIM_INFINITY); });
    }
  }

  // The agent does not start over it, and starts once it may write.
  void readOnly() {
    if (!needsRoot()) {
      return;
    }
    makeInventory();
    const std::string folder = std::filesystem::path(agent_->inventory()).parent_path().string();
    startAfter("mount --bind " + folder + ' ' + folder + " && mount -o remount,bind,ro " + folder,
               plain(agent_->inventory(), ""));
    expectRefusal();
    startsWithinASecond();
  }

  void locked() {
    makeInventory();
    sqlite3* other = nullptr;
    sqlite3_open(agent_->inventory().c_str(), &other);
    promise(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK,
            "another process locks the inventory");
    startWith({}, plain());
    expectRefusal();
    sqlite3_close(other);
    startsWithinASecond();
    suffer([&] { sqlite3_open(agent_->inventory().c_str(), &other); },
           [&] {
             const int result = sqlite3_exec(other, "UPDATE device SET user_label = ''", nullptr,
                                             nullptr, nullptr);
             promise(result == SQLITE_BUSY, "the agent lets no other process write");
             sqlite3_close(other);
           });
  }

  void makeInventory() {
    startWith({}, plain());
    isServing();
    process_->signal(SIGTERM);
    promise(process_->waitForEnd().value_or(-1) == 0, "the agent stops");
  }

  void expectRefusal() {
    const int status = process_->waitForEnd().value_or(-1);
    const std::string output = process_->output();
    figure("a start over it ends with",
           std::to_string(status) + ": " + output.substr(0, output.find('\n')));
    promise(status == 2, "the agent says that it cannot use the inventory");
  }

  void startsWithinASecond() {
    const auto begin = Clock::now();
    startWith({}, plain());
    isServing();
    const auto took = std::chrono::duration<double, std::milli>(Clock::now() - begin);
    figure("after it, the agent serves after", rounded(took.count()) + " ms");
    promise(took <= RECOVERY, "all is well within a second of its end");
  }

  void noDescriptors() {
    startWith({}, plain());
    if (isServing()) {
      std::vector<std::unique_ptr<RawClient>> waiting;
      suffer(
          [&] {
            limit(RLIMIT_NOFILE, usageOf(process_->id()).descriptors);
            for (int i = 0; i < 30; ++i) {
              waiting.push_back(std::make_unique<RawClient>(agent_->port));
            }
          },
          [&] { limit(RLIMIT_NOFILE, RLIM_INFINITY); });
    }
  }

  // The limit does not count for root.
  void noThreads() {
    std::filesystem::path folder(agent_->folder.file(""));
    Arguments user;
    if (isRoot()) {
      chmod(folder.parent_path().c_str(), 0777);
      user = {"/usr/bin/setpriv", std::string("--reuid=") + ANOTHER_USER, "--clear-groups"};
    }
    startWith(user, plain());
    if (isServing()) {
      std::vector<std::unique_ptr<RawClient>> refused;
      suffer(
          [&] {
            limitThreads(user, 1);
            for (int i = 0; i < 30; ++i) {
              refused.push_back(std::make_unique<RawClient>(agent_->port));
              refused.back()->send(request(1, FACTORY, "getVersion"));
            }
          },
          [&] { limitThreads(user, RLIM_INFINITY); });
    }
  }

  // Not a byte more than it has.
  void noMemory() {
    startWith({}, plain());
    if (isServing()) {
      std::vector<std::unique_ptr<RawClient>> newcomers;
      suffer(
          [&] {
            limit(RLIMIT_AS, usageOf(process_->id()).addressKiB * 1024);
            for (int i = 0; i < 30; ++i) {
              newcomers.push_back(std::make_unique<RawClient>(agent_->port));
              newcomers.back()->send(request(1, FACTORY, "getVersion"));
            }
          },
          [&] { limit(RLIMIT_AS, RLIM_INFINITY); });
    }
  }

  // By the user whose threads they are.
  void limitThreads(const Arguments& user, rlim_t most) {
    rlimit own{};
    getrlimit(RLIMIT_NPROC, &own);
    const std::string text = most < own.rlim_max             ? std::to_string(most)
                             : own.rlim_max == RLIM_INFINITY ? "unlimited"
                                                             : std::to_string(own.rlim_max);
    Arguments all = user;
    all.insert(all.end(), {"/usr/bin/prlimit", "--pid", process_->id(), "--nproc=" + text + ':'});
    Process limiting(all.front(), Arguments(all.begin() + 1, all.end()),
                     agent_->folder.file("limiting"));
    promise(limiting.waitForEnd().value_or(-1) == 0, "a limit is set: " + limiting.output());
  }

  void clockSteps(std::int64_t seconds) {
    const std::string file = agent_->folder.file("clock");
    setClock(file, 0);
    startWith({"/usr/bin/env", "ZK_CLOCK_FILE=" + file, "LD_PRELOAD=" ZK_STEPPED_CLOCK}, plain());
    if (isServing()) {
      RawClient half(agent_->port);
      half.send(request(1, FACTORY, "getVersion").substr(0, 30));
      suffer([&] { setClock(file, seconds); },
             [&] { promise(half.isHungUp(), "a message without an end is given up in time"); });
    }
  }

  static void setClock(const std::string& file, std::int64_t seconds) {
    const int clock = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    const ssize_t count = pwrite(clock, &seconds, sizeof seconds, 0);
    close(clock);
    if (count != ssize_t(sizeof seconds)) {
      throw std::runtime_error("no clock");
    }
  }

  // NMSs that are stopped while events are pushed to them, and connections whose
  // other end reads nothing, or has sent half a request.
  void hangingClients() {
    startWith({}, plain());
    if (!isServing()) {
      return;
    }
    std::vector<std::unique_ptr<Process>> stopped;
    std::vector<std::unique_ptr<RawClient>> halves;
    suffer(
        [&] {
          for (int i = 0; i < 4; ++i) {
            stopped.push_back(startWatching(i));
          }
          for (const auto& client : stopped) {
            awaitSubscription(*client);
            client->signal(SIGSTOP);
          }
          for (int i = 0; i < 20; ++i) {
            halves.push_back(std::make_unique<RawClient>(agent_->port));
            halves.back()->send(request(1, FACTORY, "getVersion").substr(0, std::size_t(i) * 2));
          }
          deaf_ = std::make_unique<RawClient>(agent_->port);
          while (deaf_->sendIfTaken(request(1, FACTORY, "getVersion"), 100)) {
          }
        },
        [&] {
          deaf_.reset();
          for (const auto& client : stopped) {
            client->signal(SIGCONT);
          }
        });
  }

  std::unique_ptr<Process> startWatching(int number) {
    return std::make_unique<Process>(
        ZK_NMS_PROGRAM,
        Arguments{"--agent", "127.0.0.1:" + std::to_string(agent_->port), "-o", "json", "events",
                  "--timeout", "100"},
        agent_->folder.file("client" + std::to_string(number)));
  }

  // Changes another element until the client has seen it.
  void awaitSubscription(const Process& client) {
    ReachableNms nms;
    const auto session = nms.logIn(*agent_);
    const auto elements =
        managerOf<managedElementManager::ManagedElementMgr_I>(session.in(), "ManagedElement");
    unsigned number = 0;
    promise(becomesTrue([&] {
              const std::string label = std::to_string(++number);
              elements->setUserLabel(named("ManagedElement", "2"), label.c_str(), false);
              return client.output().find("userLabel=") != std::string::npos;
            }),
            "a client watches: " + client.output());
    session->endSession();
  }

  Run& run_;
  const Settings& settings_;
  std::string name_;
  std::unique_ptr<RunningAgent> agent_;
  std::unique_ptr<Process> process_;
  std::string disk_;  // of the agent's inventory, when it is one of its own
  std::unique_ptr<RawClient> deaf_;
};

}  // namespace

int main(int argc, char** argv) {
  Settings settings;
  Run run("faults", "What the machine may do to the agent");
  run.add("--seconds", settings.seconds, "How long each lasts").range(0.1, 600.0).showDefault();
  run.add("--only", settings.only, "One of them, by its name in the output");
  if (const auto status = run.begin(argc, argv)) {
    return *status;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const ServingOrb orb;
  Faults(run, settings).go();
  return run.end();
}
