// Mutated messages on many connections, while another client goes on with its work:
// whether the agent stays, stays as large as it is, and stays as quick.
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <thread>

#include "tests/agent/support/names.h"
#include "tests/reliability/attackers.h"
#include "tests/support/orb.h"

namespace {

using namespace zk::test;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

struct Settings {
  unsigned long messages = 1000000;
  unsigned connections = 8;
  unsigned members = 4;
  double rate = 4000;
  double slowdown = 2;
  unsigned long growth = 96;
};

constexpr unsigned WINDOWS = 10;  // of attack, each followed by one of quiet
constexpr milliseconds BETWEEN_CALLS{4};

// Another client, which calls all the time.
class Bystander {
 public:
  explicit Bystander(const RunningAgent& agent)
      : session_(nms_.logIn(agent)),
        elements_(
            managerOf<managedElementManager::ManagedElementMgr_I>(session_.in(), "ManagedElement")),
        thread_([this] { call(); }) {}
  ~Bystander() { end(); }
  Bystander(const Bystander&) = delete;
  Bystander& operator=(const Bystander&) = delete;

  // Calls that begin and end between two changes count.
  void setAttacked(bool isAttacked) { phase_ = (phase_ / 2 + 1) * 2 + (isAttacked ? 1 : 0); }
  void end() {
    isOver_ = true;
    if (thread_.joinable()) {
      thread_.join();
    }
  }

  // Once it is over.
  const Latencies& quiet() const { return quiet_; }
  const Latencies& attacked() const { return attacked_; }
  unsigned long failures() const { return failures_; }

 private:
  void call() {
    const auto name = named("ManagedElement", "1");
    while (!isOver_) {
      const unsigned phase = phase_;
      const auto begin = Clock::now();
      try {
        const managedElement::ManagedElement_T_var element = get(name);
      } catch (const globaldefs::ProcessingFailureException&) {
        // An answer too.
      } catch (const CORBA::Exception&) {
        ++failures_;
      }
      const auto took = Clock::now() - begin;
      if (phase == phase_) {
        (phase % 2 == 1 ? attacked_ : quiet_).add(took);
      }
      std::this_thread::sleep_for(BETWEEN_CALLS);
    }
  }

  managedElement::ManagedElement_T* get(const globaldefs::NVSList_T& name) {
    managedElement::ManagedElement_T_var element;
    elements_->getManagedElement(name, element.out());
    return element._retn();
  }

  ReachableNms nms_;
  emsSession::EmsSession_I_var session_;
  managedElementManager::ManagedElementMgr_I_var elements_;
  std::atomic<unsigned> phase_{0};
  std::atomic<bool> isOver_{false};
  Latencies quiet_;
  Latencies attacked_;
  unsigned long failures_ = 0;
  std::thread thread_;  // last: it uses the others
};

// The thread that calls lets the agent and its other clients go first: those who
// attack have machines of their own.
void stepBack() {
  int policy = 0;
  sched_param parameters{};
  pthread_getschedparam(pthread_self(), &policy, &parameters);
  if (parameters.sched_priority > 1) {
    --parameters.sched_priority;
    pthread_setschedparam(pthread_self(), policy, &parameters);
  } else if (parameters.sched_priority == 0) {
    errno = 0;
    static_cast<void>(nice(10));
  }
}

class Attack {
 public:
  Attack(Run& run, const Settings& settings) : run_(run), settings_(settings) {}

  void go() {
    process_ = agent_.start({"--max-sessions", "400", "--peer-sessions", "180", "--ping-period",
                             "1", "--ping-failures", "0", "--consumer-retry", "1", "--log-file",
                             agent_.folder.file("log")});
    if (!run_.promise(agent_.awaitServing(*process_), "the agent starts: " + process_->output())) {
      return;
    }
    Bystander bystander(agent_);
    std::this_thread::sleep_for(milliseconds(500));
    before_ = usageOf(process_->id());
    send(bystander);
    bystander.end();
    reportAnswers();
    reportCalls(bystander);
    reportAgent();
  }

 private:
  void send(Bystander& bystander) {
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < settings_.connections; ++i) {
      attackers_.push_back(
          std::make_unique<Attacker>(agent_, run_.seed() * 1000 + i, i < settings_.members));
    }
    for (const auto& attacker : attackers_) {
      threads.emplace_back([this, &attacker] { attack(*attacker); });
    }
    for (unsigned window = 0; window < WINDOWS && process_->running(); ++window) {
      const auto begin = Clock::now();
      const double used = usageOf(process_->id()).cpuSeconds;
      allowed_ = settings_.messages * (window + 1) / WINDOWS;
      bystander.setAttacked(true);
      watchWhile([&] { return sent_ < allowed_ && process_->running(); });
      bystander.setAttacked(false);
      used_ += usageOf(process_->id()).cpuSeconds - used;
      const auto end =
          Clock::now() + std::min<Clock::duration>(Clock::now() - begin, std::chrono::seconds(5));
      attacked_ += Clock::now() - begin;
      watchWhile([&] { return Clock::now() < end; });
    }
    isOver_ = true;
    for (std::thread& thread : threads) {
      thread.join();
    }
  }

  template <class Condition>
  void watchWhile(Condition condition) {
    while (condition()) {
      peakKiB_ = std::max(peakKiB_, usageOf(process_->id()).residentKiB);
      std::this_thread::sleep_for(milliseconds(20));
    }
  }

  void attack(Attacker& attacker) {
    stepBack();
    const std::chrono::duration<double> period(settings_.connections / settings_.rate);
    auto due = Clock::now();
    while (!isOver_) {
      if (sent_ >= allowed_) {
        std::this_thread::sleep_for(milliseconds(1));
        due = Clock::now();
        continue;
      }
      ++sent_;
      attacker.step();
      due += std::chrono::duration_cast<Clock::duration>(period);
      std::this_thread::sleep_until(due);
    }
  }

  void reportAnswers() {
    const double seconds = std::chrono::duration<double>(attacked_).count();
    run_.figure("messages sent", std::to_string(sent_) + " on " +
                                     std::to_string(settings_.connections) +
                                     " connections at a time");
    run_.figure("rate while they were sent", double(sent_) / seconds, "/s");
    run_.figure("cores used by the agent meanwhile", used_ / seconds, "");
    Answers all;
    for (const auto& attacker : attackers_) {
      for (const auto& [answer, count] : attacker->answers()) {
        all[answer] += count;
      }
    }
    for (const auto& [answer, count] : all) {
      run_.figure("answers: " + answer, std::to_string(count));
    }
  }

  void reportCalls(const Bystander& bystander) {
    const double quiet = bystander.quiet().quantile(0.99);
    const double attacked = bystander.attacked().quantile(0.99);
    run_.figure("another client's calls", std::to_string(bystander.quiet().count()) + " quiet, " +
                                              std::to_string(bystander.attacked().count()) +
                                              " under attack");
    run_.figure("p50 quiet", bystander.quiet().quantile(0.5), "ms");
    run_.figure("p50 under attack", bystander.attacked().quantile(0.5), "ms");
    run_.figure("p99 quiet", quiet, "ms");
    run_.figure("p99 under attack", attacked, "ms");
    run_.figure("p99 under attack / quiet", attacked / quiet, "");
    run_.promise(attacked < settings_.slowdown * quiet,
                 "p99 under attack stays below " + rounded(settings_.slowdown) + " times");
    run_.promise(bystander.failures() == 0, "every call of another client is answered: " +
                                                std::to_string(bystander.failures()) + " were not");
  }

  void reportAgent() {
    const bool isThere = process_->running();
    run_.promise(isThere, "the agent runs: " + process_->output());
    const Usage after = usageOf(process_->id());
    run_.figure("memory before", double(before_.residentKiB), "KiB");
    run_.figure("memory, highest seen", double(std::max(peakKiB_, after.residentKiB)), "KiB");
    run_.figure("memory after", double(after.residentKiB), "KiB");
    run_.promise(after.peakKiB <= before_.residentKiB + long(settings_.growth) * 1024,
                 "memory grows by " + std::to_string(settings_.growth) + " MiB at most");
    RawClient client(agent_.port);
    const auto reply = client.send(zk::test::request(1, "EmsSessionFactory", "getVersion")).reply();
    run_.promise(reply && reply->status == 0, "a newcomer is served");
    process_->signal(SIGTERM);
    run_.promise(process_->waitForEnd().value_or(-1) == 0, "the agent stops in order");
  }

  Run& run_;
  const Settings& settings_;
  const RunningAgent agent_;
  std::unique_ptr<Process> process_;
  std::vector<std::unique_ptr<Attacker>> attackers_;
  std::atomic<unsigned long> sent_{0};
  std::atomic<unsigned long> allowed_{0};
  std::atomic<bool> isOver_{false};
  Clock::duration attacked_{};
  double used_ = 0;  // seconds of a core, by the agent, while messages were sent
  Usage before_;
  long peakKiB_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  Settings settings;
  Run run("mutations", "Mutated messages from many, and the calls of another client");
  run.add("--messages", settings.messages, "How many").showDefault();
  run.add("--connections", settings.connections, "At a time").range(1U, 64U).showDefault();
  run.add("--members", settings.members, "How many of the connections have logged in")
      .showDefault();
  run.add("--rate", settings.rate, "Messages a second, at most").range(1.0, 1e6).showDefault();
  run.add("--slowdown", settings.slowdown, "Bound of p99 under attack / quiet").showDefault();
  run.add("--growth", settings.growth, "MiB by which the agent's memory may grow").showDefault();
  if (const auto status = run.begin(argc, argv)) {
    return *status;
  }
  setenv("ORBmaxGIOPConnectionPerServer", "20", 1);
  const ServingOrb orb;
  Attack(run, settings).go();
  return run.end();
}
