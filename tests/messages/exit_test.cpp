// The end of a process whose clients are still there.
#include <gtest/gtest.h>

#include <spawn.h>
#include <sys/wait.h>

#include <array>

namespace zk::test {
namespace {

constexpr int EXITS = 300;

// The child's wait status; -1 when it could not be started.
int statusOfChild() {
  std::array<char, sizeof ZK_EXIT_CHILD> path{ZK_EXIT_CHILD};
  std::array<char*, 2> arguments{path.data(), nullptr};
  pid_t child = 0;
  int status = -1;
  if (posix_spawn(&child, path.data(), nullptr, nullptr, arguments.data(), environ) == 0) {
    waitpid(child, &status, 0);
  }
  return status;
}

TEST(ProcessExit, isCleanWhileClientsThreadsStart) {
  for (int exits = 0; exits < EXITS; ++exits) {
    const int status = statusOfChild();
    ASSERT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status) << " at exit " << exits;
    ASSERT_EQ(WEXITSTATUS(status), 0) << exits;
  }
}

}  // namespace
}  // namespace zk::test
