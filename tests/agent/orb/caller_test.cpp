#include "agent/orb/caller.h"

#include <gtest/gtest.h>

#include "agent/orb/servanthome.h"

namespace {

using namespace zk::agent;

struct Row {
  const char* peer;
  const char* own;
  const char* expected;
};

const Row ROWS[] = {
    {"giop:tcp:10.1.2.3:4711", "giop:tcp:10.1.2.4:5814", "10.1.2.3"},
    {"giop:tcp:10.1.2.3:4712", "giop:tcp:10.1.2.4:5814", "10.1.2.3"},
    {"giop:ssl:10.1.2.3:4711", "giop:ssl:10.1.2.4:5814", "10.1.2.3"},
    {"giop:tcp:[fe80::1]:4711", "giop:tcp:[fe80::2]:5814", "fe80::1"},
    {"giop:tcp:[::ffff:10.1.2.3]:4711", "giop:tcp:[::ffff:10.1.2.4]:5814", "10.1.2.3"},
    {"giop:tcp:127.0.0.2:4711", "giop:tcp:127.0.0.1:5814", "127.0.0.2"},
    {"giop:tcp:127.0.0.1:4711", "giop:tcp:127.0.0.1:5814", THIS_HOST},
    {"giop:tcp:10.1.2.4:4711", "giop:tcp:10.1.2.4:5814", THIS_HOST},
    {"giop:tcp:[::1]:4711", "giop:tcp:[::1]:5814", THIS_HOST},
    {"giop:tcp:[::ffff:127.0.0.1]:4711", "giop:tcp:127.0.0.1:5814", THIS_HOST},
};

TEST(Caller, isTheHostAtTheOtherEnd) {
  for (const Row& row : ROWS) {
    EXPECT_EQ(peerOf(row.peer, row.own), row.expected) << row.peer << " " << row.own;
  }
}

// Addresses that no ORB writes: told apart or not, nothing breaks.
TEST(Caller, mayHaveAnyAddress) {
  for (const char* text : {"", ":", "[", "]", "[]", "[:", "]:[", "giop:tcp:", "**invalid**"}) {
    EXPECT_NO_THROW(peerOf(text, "giop:tcp:127.0.0.1:5814")) << text;
  }
}

TEST(Caller, isNobodyOutsideOfARequest) { EXPECT_EQ(callingPeer(), ""); }

TEST(SessionObject, isFoundInItsKeyAndInNoOther) {
  const std::string path = std::string("\xff") + SessionAdapter::NAME + '\0';
  const std::string id = ObjectKeys::make();
  EXPECT_EQ(sessionObjectIn(path + id), id);
  EXPECT_EQ(sessionObjectIn(path + "short"), "short");
  EXPECT_EQ(sessionObjectIn(path), "");
  for (const std::string& key :
       {std::string(), id, std::string("EmsSessionFactory"), path.substr(0, path.size() - 1),
        path.substr(1) + id, std::string("x").append(path).append(id)}) {
    EXPECT_FALSE(sessionObjectIn(key));
  }
}

}  // namespace
