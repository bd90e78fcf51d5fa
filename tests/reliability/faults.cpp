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

#include "tests/agent/support/names.h"
#include "tests/agent/support/rawclient.h"
#include "tests/reliability/ordeal.h"
#include "tests/support/orb.h"

namespace {

using namespace zk::test;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Arguments = RunningAgent::Arguments;

constexpr const char* FACTORY = "EmsSessionFactory";
constexpr const char* ANOTHER_USER = "61814";

struct Settings {
  double seconds = 5;
  std::string only;
};

bool isRoot() { return geteuid() == 0; }

class Faults : private Ordeal {
 public:
  Faults(Run& run, const Settings& settings) : Ordeal(run, settings.seconds), settings_(settings) {}

  void go() {
    one("disk full", [this] { diskFull(true); });
    one("disk of the log full", [this] { diskFull(false); });
    one("files may not grow", [this] { filesMayNotGrow(); });
    one("inventory read-only", [this] { readOnly(); });
    one("inventory locked by another", [this] { locked(); });
    one("no descriptors", [this] { noDescriptors(); });
    one("no threads", [this] { noThreads(); });
    one("no memory", [this] { noMemory(); });
    one("clock one hour ahead", [this] { clockSteps(3600); });
    one("clock one hour back", [this] { clockSteps(-3600); });
    one("clients that hang", [this] { hangingClients(); });
    promise(played_ != 0, "there is such a fault");
  }

 private:
  void one(const std::string& name, const std::function<void()>& fault) {
    if (settings_.only.empty() || settings_.only == name) {
      ++played_;
      play(name, fault);
    }
  }

  bool needsRoot() {
    if (!isRoot()) {
      figure("left out", "it takes root");
    }
    return isRoot();
  }

  // A small file system for the log, or for both files.
  void diskFull(bool withInventory) {
    if (!needsRoot()) {
      return;
    }
    const std::string disk = agent().folder.file("disk");
    std::filesystem::create_directory(disk);
    startAfter("mount -t tmpfs -o size=4m tmpfs " + disk,
               plain(withInventory ? disk + "/agent.db" : agent().inventory(), disk + "/log"));
    if (!isServing()) {
      return;
    }
    const std::string inside = "/proc/" + process().id() + "/root" + disk;
    setDisk(withInventory ? inside : "");
    suffer([&] { fill(inside + "/filler"); }, [&] { std::filesystem::remove(inside + "/filler"); });
  }

  static void fill(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const std::string block(4096, 'x');
    while (write(file, block.data(), block.size()) > 0) {
    }
    close(file);
  }

  void limit(__rlimit_resource resource, rlim_t most) {
    const auto pid = static_cast<pid_t>(std::stol(process().id()));
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
    const std::string folder = std::filesystem::path(agent().inventory()).parent_path().string();
    startAfter("mount --bind " + folder + ' ' + folder + " && mount -o remount,bind,ro " + folder,
               plain(agent().inventory(), ""));
    expectRefusal();
    startsWithinASecond();
  }

  void locked() {
    makeInventory();
    sqlite3* other = nullptr;
    sqlite3_open(agent().inventory().c_str(), &other);
    promise(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK,
            "another process locks the inventory");
    startWith({}, plain());
    expectRefusal();
    sqlite3_close(other);
    startsWithinASecond();
    suffer([&] { sqlite3_open(agent().inventory().c_str(), &other); },
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
    process().signal(SIGTERM);
    promise(process().waitForEnd().value_or(-1) == 0, "the agent stops");
  }

  void expectRefusal() {
    const int status = process().waitForEnd().value_or(-1);
    const std::string output = process().output();
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
            limit(RLIMIT_NOFILE, usageOf(process().id()).descriptors);
            for (int i = 0; i < 30; ++i) {
              waiting.push_back(std::make_unique<RawClient>(agent().port));
            }
          },
          [&] { limit(RLIMIT_NOFILE, RLIM_INFINITY); });
    }
  }

  // The limit does not count for root.
  void noThreads() {
    std::filesystem::path folder(agent().folder.file(""));
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
              refused.push_back(std::make_unique<RawClient>(agent().port));
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
            limit(RLIMIT_AS, usageOf(process().id()).addressKiB * 1024);
            for (int i = 0; i < 30; ++i) {
              newcomers.push_back(std::make_unique<RawClient>(agent().port));
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
    all.insert(all.end(), {"/usr/bin/prlimit", "--pid", process().id(), "--nproc=" + text + ':'});
    Process limiting(all.front(), Arguments(all.begin() + 1, all.end()),
                     agent().folder.file("limiting"));
    promise(limiting.waitForEnd().value_or(-1) == 0, "a limit is set: " + limiting.output());
  }

  void clockSteps(std::int64_t seconds) {
    const std::string file = agent().folder.file("clock");
    setClock(file, 0);
    startWith({"/usr/bin/env", "ZK_CLOCK_FILE=" + file, "LD_PRELOAD=" ZK_STEPPED_CLOCK}, plain());
    if (isServing()) {
      RawClient half(agent().port);
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
    std::unique_ptr<RawClient> deaf;
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
            halves.push_back(std::make_unique<RawClient>(agent().port));
            halves.back()->send(request(1, FACTORY, "getVersion").substr(0, std::size_t(i) * 2));
          }
          deaf = std::make_unique<RawClient>(agent().port);
          while (deaf->sendIfTaken(request(1, FACTORY, "getVersion"), 100)) {
          }
        },
        [&] {
          deaf.reset();
          for (const auto& client : stopped) {
            client->signal(SIGCONT);
          }
        });
  }

  std::unique_ptr<Process> startWatching(int number) {
    return std::make_unique<Process>(
        ZK_NMS_PROGRAM,
        Arguments{"--agent", "127.0.0.1:" + std::to_string(agent().port), "-o", "json", "events",
                  "--timeout", "100"},
        agent().folder.file("client" + std::to_string(number)));
  }

  // Changes another element until the client has seen it.
  void awaitSubscription(const Process& client) {
    ReachableNms nms;
    const auto session = nms.logIn(agent());
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

  const Settings& settings_;
  unsigned played_ = 0;
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
