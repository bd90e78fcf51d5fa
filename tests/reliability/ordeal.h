// What each fault has in common: an agent of its own, a client that asks for changes
// before, while and after it lasts, and what is promised meanwhile. For one thread.
#ifndef ZK_TESTS_RELIABILITY_ORDEAL_H
#define ZK_TESTS_RELIABILITY_ORDEAL_H

#include <functional>
#include <memory>
#include <string>

#include "tests/agent/support/runningagent.h"
#include "tests/reliability/run.h"

namespace zk::test {

class Labels;

class Ordeal {
 public:
  using Arguments = RunningAgent::Arguments;

  // Faults last so many seconds.
  Ordeal(Run& run, double seconds) : run_(run), seconds_(seconds) {}

  // Gives the fault an agent's files; what it throws is a broken promise.
  void play(const std::string& name, const std::function<void()>& fault);

  RunningAgent& agent() { return *agent_; }
  Process& process() { return *process_; }

  bool promise(bool isKept, const std::string& what);
  void figure(const std::string& what, const std::string& value);

  // --- The agent ---

  Arguments plain(const std::string& inventory, const std::string& log) const;
  Arguments plain() const;

  // With a program before it, which becomes the agent.
  void startWith(const Arguments& program, const Arguments& agent);
  // In a place of its own for mounts, after a command there.
  void startAfter(const std::string& command, const Arguments& agent);
  bool isServing();

  // --- The fault ---

  // The agent's inventory is agent.db in this folder, which only it has.
  void setDisk(const std::string& folder) { disk_ = folder; }

  // Each change is answered, and made and kept or refused and not made; all is well
  // within a second of the end. The agent is killed then.
  void suffer(const std::function<void()>& begin, const std::function<void()>& end);

 private:
  void change(Labels& labels);
  void recover(Labels& labels);
  void keep(const Labels& labels);

  Run& run_;
  const double seconds_;
  std::string name_;
  std::unique_ptr<RunningAgent> agent_;
  std::unique_ptr<Process> process_;
  std::string disk_;
};

// Within which all is well after a fault.
constexpr std::chrono::milliseconds RECOVERY{1000};

}  // namespace zk::test

#endif
