// The real agent as a process of its own.
#ifndef ZK_TESTS_AGENT_SUPPORT_PROCESS_H
#define ZK_TESTS_AGENT_SUPPORT_PROCESS_H

#include <sys/types.h>
#include <optional>
#include <string>
#include <vector>

namespace zk::test {

// A program with its output in files. Killed at the end if it still runs.
class Process {
 public:
  // Standard input is the given text; output names a file for standard output
  // and standard error.
  Process(const std::string& program, const std::vector<std::string>& arguments, std::string output,
          const std::string& input = "");
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  void signal(int number) const;
  std::string id() const { return std::to_string(pid_); }
  bool running();

  // The exit status, or 128 plus the signal that ended it; none when it does not
  // end before the deadline.
  std::optional<int> waitForEnd();

  std::string output() const;

 private:
  void look();

  const std::string output_;
  pid_t pid_ = -1;
  std::optional<int> status_;
};

// A port of the loopback interface that nobody listened on a moment ago.
unsigned short freePort();

}  // namespace zk::test

#endif
