#include <gtest/gtest.h>

#include "nms/wire/connection.h"
#include "tests/nms/support/process.h"

namespace zk::nms {
namespace {

TEST(AgentReference, acceptsReferencesAndAddresses) {
  const char* const accepted[][2] = {
      {"corbaloc:iiop:h:1/Key", "corbaloc:iiop:h:1/Key"},
      {"IOR:0102", "IOR:0102"},
      {"corbaname::h:2809#a/b", "corbaname::h:2809#a/b"},
      {"127.0.0.1:5814", "corbaloc:iiop:127.0.0.1:5814/EmsSessionFactory"},
      {"ems-1.example:65535", "corbaloc:iiop:ems-1.example:65535/EmsSessionFactory"},
      {"[::1]:1", "corbaloc:iiop:[::1]:1/EmsSessionFactory"},
  };
  for (const auto& entry : accepted) {
    EXPECT_EQ(agentReference(entry[0]), entry[1]) << entry[0];
  }
}

TEST(AgentReference, refusesOtherTexts) {
  for (const char* text : {"", "host", "host:", ":5814", "host:0", "host:65536", "host:123456",
                           "::1:5814", "host:58 14", "ior:00", "a b:1"}) {
    EXPECT_THROW(agentReference(text), UsageError) << text;
  }
}

TEST(AgentReference, isReadFromAFile) {
  const test::TemporaryFile file("  IOR:0102\n\n");
  EXPECT_EQ(agentReference(file.path()), "IOR:0102");
}

TEST(AgentReference, missesTheFileThatNoAgentWrote) {
  EXPECT_THROW(agentReference("/nonexistent/agent.ior"), ConnectionError);
  EXPECT_THROW(agentReference("./agent.ior"), ConnectionError);
  EXPECT_THROW(agentReference("/tmp"), ConnectionError);
}

TEST(AgentReference, refusesAFileWithoutReference) {
  const test::TemporaryFile empty("");
  const test::TemporaryFile other("127.0.0.1:5814\n");
  EXPECT_THROW(agentReference(empty.path()), ConnectionError);
  EXPECT_THROW(agentReference(other.path()), ConnectionError);
}

}  // namespace
}  // namespace zk::nms
