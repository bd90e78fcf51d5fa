// The end of a process whose clients are still there.
#include <gtest/gtest.h>

#include <spawn.h>
#include <sys/wait.h>

#include <array>
#include <cstdlib>

namespace zk::test {
namespace {

// With a sanitizer each takes its time.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int EXITS = 30;
#else
constexpr int EXITS = 300;
#endif

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
  // A thread that is there at the end keeps what it has, which is no leak.
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  for (int exits = 0; exits < EXITS; ++exits) {
    const int status = statusOfChild();
    ASSERT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status) << " at exit " << exits;
    ASSERT_EQ(WEXITSTATUS(status), 0) << exits;
  }
}

}  // namespace
}  // namespace zk::test
