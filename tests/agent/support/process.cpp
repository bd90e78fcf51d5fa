#include "tests/agent/support/process.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

#include "tests/agent/ems/support.h"
#include "tests/platform/waiting.h"

namespace zk::test {

namespace {

int openInput(const std::string& path, const std::string& text) {
  writeBytes(path, text);
  return open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

}  // namespace

Process::Process(const std::string& program, const std::vector<std::string>& arguments,
                 std::string output, const std::string& input)
    : output_(std::move(output)) {
  std::vector<std::string> texts = {program};
  texts.insert(texts.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  argv.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    argv.push_back(text.data());
  }
  argv.push_back(nullptr);
  const int in = openInput(output_ + ".in", input);
  const int out = open(output_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  pid_ = fork();
  if (pid_ == 0) {
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(out, STDERR_FILENO);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  close(in);
  close(out);
  if (pid_ < 0) {
    throw std::runtime_error("cannot fork");
  }
}

Process::~Process() {
  if (running()) {
    signal(SIGKILL);
    int status = 0;
    waitpid(pid_, &status, 0);
  }
}

void Process::signal(int number) const { kill(pid_, number); }

bool Process::running() {
  look();
  return !status_;
}

std::optional<int> Process::waitForEnd() {
  becomesTrue([this] { return !running(); });
  return status_;
}

std::string Process::output() const { return bytesOf(output_); }

void Process::look() {
  int status = 0;
  if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_) {
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
}

unsigned short freePort() {
  const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  const bool bound = bind(fd, reinterpret_cast<sockaddr*>(&address), length) == 0 &&
                     getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) == 0;
  close(fd);
  if (!bound) {
    throw std::runtime_error("no free port");
  }
  return ntohs(address.sin_port);
}

}  // namespace zk::test
