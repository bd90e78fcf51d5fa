#include "tests/nms/support/process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

extern char** environ;

namespace zk::test {
namespace {

std::vector<std::string> environmentWith(const Process::Environment& added) {
  std::vector<std::string> result;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    if (std::string(*entry).rfind("ZK_NMS_", 0) != 0) {
      result.emplace_back(*entry);
    }
  }
  for (const auto& [name, value] : added) {
    result.push_back(std::string(name).append("=").append(value));
  }
  return result;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  result.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    result.push_back(text.data());
  }
  result.push_back(nullptr);
  return result;
}

// A test run in the background has signals ignored that its programs need.
void defaultSignals(posix_spawnattr_t& attributes) {
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(&attributes, &signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGHUP);
  posix_spawnattr_setsigdefault(&attributes, &signals);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
}

}  // namespace

bool eventually(const std::function<bool()>& done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

TemporaryFile::TemporaryFile(const std::string& contents) : path_("/tmp/zk-nms-test-XXXXXX") {
  const int file = mkstemp(path_.data());
  if (file < 0) {
    throw std::runtime_error("no temporary file");
  }
  close(file);
  std::ofstream(path_) << contents;
}

TemporaryFile::~TemporaryFile() { unlink(path_.c_str()); }

std::string TemporaryFile::contents() const {
  std::ostringstream text;
  text << std::ifstream(path_).rdbuf();
  return text.str();
}

Process::Process(std::vector<std::string> argv, const Environment& environment,
                 const std::string& standardOut) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  const std::string& out = standardOut.empty() ? out_.path() : standardOut;
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, out.c_str(), O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, err_.path().c_str(), O_WRONLY, 0);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  defaultSignals(attributes);
  std::vector<std::string> entries = environmentWith(environment);
  const int result = posix_spawn(&pid_, argv[0].c_str(), &files, &attributes, pointers(argv).data(),
                                 pointers(entries).data());
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  if (result != 0) {
    throw std::runtime_error("cannot start " + argv[0]);
  }
  running_ = true;
}

Process::~Process() {
  if (running_) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
}

Ended Process::wait() {
  int status = 0;
  if (!eventually([&] { return waitpid(pid_, &status, WNOHANG) == pid_; })) {
    return {-1000, out_.contents(), err_.contents()};
  }
  running_ = false;
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return {code, out_.contents(), err_.contents()};
}

}  // namespace zk::test
