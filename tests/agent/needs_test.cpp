// An agent that the system gives too little, and one that is told to go on.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "tests/agent/support/runningagent.h"

namespace {

using managedElementManager::ManagedElementMgr_I;
using zk::test::becomesTrue;
using zk::test::managerOf;
using zk::test::named;
using zk::test::Process;
using zk::test::ReachableNms;
using zk::test::RunningAgent;

// A sanitizer takes address space without end; that of addresses wants descriptors
// and a thread for its own affairs.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool MEMORY_IS_LIMITED = false;
constexpr bool OTHERS_ARE_LIMITED = false;
#elif defined(__SANITIZE_THREAD__)
constexpr bool MEMORY_IS_LIMITED = false;
constexpr bool OTHERS_ARE_LIMITED = true;
#else
constexpr bool MEMORY_IS_LIMITED = true;
constexpr bool OTHERS_ARE_LIMITED = true;
#endif

class Needs : public testing::Test {
 protected:
  // The agent under a limit, which the program in front of it sets.
  void expectShortage(const std::vector<std::string>& limiting, int status,
                      const std::string& reason) {
    std::vector<std::string> arguments(limiting.begin() + 1, limiting.end());
    for (const std::string& argument :
         {std::string(ZK_AGENT_PROGRAM), std::string("--listen"),
          "127.0.0.1:" + std::to_string(agent.port), std::string("--inventory"), agent.inventory(),
          std::string("--ior-file"), agent.iorFile()}) {
      arguments.push_back(argument);
    }
    Process process(limiting.front(), arguments, agent.folder.file("output"));
    EXPECT_EQ(process.waitForEnd().value_or(-1), status) << limiting.back();
    EXPECT_EQ(process.output(), "zk-agent: " + reason + "\n") << limiting.back();
    EXPECT_FALSE(std::filesystem::exists(agent.inventory())) << "an inventory was made";
  }

  RunningAgent agent;
};

TEST_F(Needs, areNamedWhenThereAreNoDescriptors) {
  if (!OTHERS_ARE_LIMITED) {
    GTEST_SKIP() << "a sanitizer takes some itself";
  }
  for (const char* limit : {"--nofile=6", "--nofile=12", "--nofile=13", "--nofile=20"}) {
    expectShortage({"/usr/bin/prlimit", limit}, 10,
                   "out of file descriptors: a start takes 32 (Too many open files)");
  }
}

TEST_F(Needs, areNamedWhenThereIsNoMemory) {
  if (!MEMORY_IS_LIMITED) {
    GTEST_SKIP() << "a sanitizer takes more address space than this";
  }
  for (const char* limit : {"--as=60000000", "--as=80000000"}) {
    expectShortage({"/usr/bin/prlimit", limit}, 8,
                   "out of memory: a start takes 64 MiB (Cannot allocate memory)");
  }
}

// The limit does not count for root, which becomes a user without a process.
TEST_F(Needs, areNamedWhenThereAreNoThreads) {
  if (!OTHERS_ARE_LIMITED) {
    GTEST_SKIP() << "a sanitizer takes some itself";
  }
  std::vector<std::string> limiting = {"/usr/bin/prlimit", "--nproc=1"};
  if (geteuid() == 0) {
    limiting.insert(limiting.begin(), {"/usr/bin/setpriv", "--reuid=61814", "--clear-groups"});
  }
  expectShortage(limiting, 9, "out of threads: a start takes 8 (Resource temporarily unavailable)");
}

TEST_F(Needs, endWithTheStartAsFarAsChangesGo) {
  if (!OTHERS_ARE_LIMITED) {
    GTEST_SKIP() << "a sanitizer takes some itself";
  }
  auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  {
    const auto session = nms.logIn(agent);
    const auto elements = managerOf<ManagedElementMgr_I>(session.in(), "ManagedElement");
    const rlimit none{3, 3};
    ASSERT_EQ(prlimit(std::stoi(process->id()), RLIMIT_NOFILE, &none, nullptr), 0);
    EXPECT_NO_THROW(elements->setUserLabel(named("ManagedElement", "1"), "kept", false));
  }
  process->signal(SIGTERM);
  ASSERT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
  process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  const auto session = nms.logIn(agent);
  managedElement::ManagedElement_T_var element;
  managerOf<ManagedElementMgr_I>(session.in(), "ManagedElement")
      ->getManagedElement(named("ManagedElement", "1"), element.out());
  EXPECT_STREQ(element->userLabel, "kept");
}

TEST_F(Needs, doNotIncludeATerminal) {
  const auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  for (std::size_t count = 1; count <= 3; ++count) {
    process->signal(SIGHUP);
    EXPECT_TRUE(becomesTrue([&] {
      const std::string log = process->output();
      std::size_t lines = 0;
      for (std::size_t at = log.find("SIGHUP"); at != std::string::npos;
           at = log.find("SIGHUP", at + 1)) {
        ++lines;
      }
      return lines == count;
    }));
  }
  const CORBA::String_var version = agent.factory()->getVersion();
  EXPECT_STREQ(version.in(), "3.0");
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
}

}  // namespace
