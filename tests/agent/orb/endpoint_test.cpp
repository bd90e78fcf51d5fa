#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "agent/orb/endpoint.h"

namespace {

using zk::agent::Endpoint;
using zk::agent::isLoopback;
using zk::agent::parseEndpoint;
using zk::agent::textOf;

struct Accepted {
  const char* text;
  const char* host;
  unsigned short port;
};

const Accepted ACCEPTED[] = {
    {"127.0.0.1:5814", "127.0.0.1", 5814},
    {"localhost:1", "localhost", 1},
    {"[::1]:65535", "::1", 65535},
    {"*:5814", "*", 5814},
    {":5814", "", 5814},
    {"127.0.0.1:0", "127.0.0.1", 0},
};

TEST(Endpoint, isReadFromText) {
  for (const Accepted& row : ACCEPTED) {
    const Endpoint endpoint = parseEndpoint(row.text);
    EXPECT_EQ(endpoint.host, row.host) << row.text;
    EXPECT_EQ(endpoint.port, row.port) << row.text;
  }
}

TEST(Endpoint, isOfLoopbackOnlyWhenItSaysSo) {
  for (const char* host : {"127.0.0.1", "127.255.0.9", "::1", "localhost"}) {
    EXPECT_TRUE(isLoopback({host, 1})) << host;
  }
  for (const char* host : {"", "*", "0.0.0.0", "::", "128.0.0.1", "10.127.0.1", "fe80::1",
                           "::ffff:127.0.0.1", "127.1", "localhost.example", "host"}) {
    EXPECT_FALSE(isLoopback({host, 1})) << host;
  }
}

TEST(Endpoint, isRefused) {
  for (const char* text : {"", "127.0.0.1", "host:", "host:65536", "host:123456", "host:5x",
                           "host:-1", "::1:5814", "[::1:5814", "::1]:5814"}) {
    EXPECT_THROW(parseEndpoint(text), std::invalid_argument) << text;
  }
}

TEST(Endpoint, isWrittenAsItIsRead) {
  for (const char* text : {"127.0.0.1:5814", "[::1]:65535", "*:5814"}) {
    EXPECT_EQ(textOf(parseEndpoint(text)), text);
  }
  EXPECT_EQ(textOf({"", 1}), "*:1");
}

}  // namespace
