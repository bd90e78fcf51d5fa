// Runs the body of a test in a process of its own, for what the library sets up
// once a process. The program must not have started a thread by then.
#ifndef ZK_TESTS_SUPPORT_APART_H
#define ZK_TESTS_SUPPORT_APART_H

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace zk::test {

template <class Body>
void runApart(Body body) {
  std::fflush(nullptr);
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    body();
    std::fflush(nullptr);
    std::exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS)
      << "failed in its own process, with status " << status;
}

}  // namespace zk::test

#endif
