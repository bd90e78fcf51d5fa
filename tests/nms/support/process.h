// Another program, started with its output captured.
#ifndef ZK_TESTS_NMS_SUPPORT_PROCESS_H
#define ZK_TESTS_NMS_SUPPORT_PROCESS_H

#include <sys/types.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace zk::test {

// Calls done until it says true; false after a minute.
bool eventually(const std::function<bool()>& done);

// A file of its own, deleted at the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& contents = "");
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& path() const { return path_; }
  std::string contents() const;

 private:
  std::string path_;
};

struct Ended {
  int status;  // the exit status, or minus the signal that ended it
  std::string out;
  std::string err;
};

class Process {
 public:
  using Environment = std::map<std::string, std::string>;

  // argv[0] is the program's path. Of this process's environment, ZK_NMS_*
  // does not reach it. A standardOut other than empty is a file to write to.
  Process(std::vector<std::string> argv, const Environment& environment = {},
          const std::string& standardOut = "");
  ~Process();  // kills it if it still runs
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  pid_t pid() const { return pid_; }

  // What it has written so far.
  std::string out() const { return out_.contents(); }
  std::string err() const { return err_.contents(); }

  // Waits for its end; a status of -1000 says that it never came.
  Ended wait();

 private:
  TemporaryFile out_;
  TemporaryFile err_;
  pid_t pid_ = -1;
  bool running_ = false;
};

}  // namespace zk::test

#endif
