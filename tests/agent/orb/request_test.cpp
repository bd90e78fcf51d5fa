#include "agent/orb/request.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/agent/orb/messages.h"

namespace {

using zk::agent::readLocateRequest;
using zk::agent::readRequest;
using zk::test::CdrWriter;
using zk::test::Form;
using zk::test::forms;
using zk::test::messageOf;
using zk::test::resized;
using zk::test::Sent;

const zk::test::Parameters TEXT = [](CdrWriter& out) { out.text("abc"); };

TEST(Request, isReadInEveryForm) {
  for (const Form& form : forms()) {
    Sent sent;
    sent.key = std::string("key\0of bytes", 12);
    sent.operation = "ping";
    sent.parameters = TEXT;
    const std::string message = messageOf(form, sent);
    const auto request = readRequest(message);
    ASSERT_TRUE(request) << form;
    EXPECT_EQ(request->minor, form.minor);
    EXPECT_EQ(request->littleEndian, form.little);
    EXPECT_EQ(request->id, 0x01020304U);
    EXPECT_TRUE(request->answered);
    EXPECT_EQ(request->key, sent.key);
    EXPECT_EQ(request->operation, "ping");
    EXPECT_EQ((request->parametersAt + 3) / 4 * 4 + 4, message.find("abc")) << form;
    EXPECT_TRUE(form.minor < 2 || request->parametersAt % 8 == 0) << form;
  }
}

TEST(Request, hasNoParameters) {
  for (const Form& form : forms()) {
    const std::string message = messageOf(form, "ping");
    const auto request = readRequest(message);
    ASSERT_TRUE(request) << form;
    EXPECT_EQ(request->parametersAt, message.size()) << form;
  }
}

TEST(Request, mayBeUnanswered) {
  for (const Form& form : forms()) {
    Sent sent;
    sent.answered = 0;
    const std::string message = messageOf(form, sent);
    const auto request = readRequest(message);
    ASSERT_TRUE(request) << form;
    EXPECT_FALSE(request->answered) << form;
  }
}

struct Changed {
  const char* what;
  std::function<void(Sent&)> change;
};

const Changed ACCEPTED[] = {
    {"no service contexts", [](Sent& sent) { sent.contexts = 0; }},
    {"as many service contexts as may be",
     [](Sent& sent) {
       sent.contexts = 32;
       sent.context = std::string(4096, 'x');
     }},
    {"an empty service context that is not of code sets",
     [](Sent& sent) {
       sent.contextId = 17;
       sent.context = "";
     }},
    {"the longest key", [](Sent& sent) { sent.key = std::string(255, 'k'); }},
    {"an empty key", [](Sent& sent) { sent.key = ""; }},
    {"the longest operation", [](Sent& sent) { sent.operation = std::string(128, 'o'); }},
    {"no principal", [](Sent& sent) { sent.principal = ""; }},
};

const Changed REFUSED[] = {
    {"another magic", [](Sent& sent) { sent.magic = "GIOp"; }},
    {"another major version", [](Sent& sent) { sent.major = 2; }},
    {"a fragment to follow", [](Sent& sent) { sent.flags = 2; }},
    {"a reply", [](Sent& sent) { sent.type = 1; }},
    {"too many service contexts", [](Sent& sent) { sent.contexts = 33; }},
    {"a large service context", [](Sent& sent) { sent.context = std::string(4097, 'x'); }},
    {"a short context of code sets", [](Sent& sent) { sent.context = std::string(11, '\1'); }},
    {"a long key", [](Sent& sent) { sent.key = std::string(256, 'k'); }},
    {"a long operation", [](Sent& sent) { sent.operation = std::string(129, 'o'); }},
    {"an empty operation", [](Sent& sent) { sent.operation = ""; }},
    {"an operation that ends early", [](Sent& sent) { sent.operation = std::string("a\0b", 3); }},
};

TEST(Request, isAccepted) {
  for (const Form& form : forms()) {
    for (const Changed& row : ACCEPTED) {
      Sent sent;
      row.change(sent);
      EXPECT_TRUE(readRequest(messageOf(form, sent))) << row.what << ", " << form;
    }
  }
}

TEST(Request, isRefused) {
  for (const Form& form : forms()) {
    for (const Changed& row : REFUSED) {
      Sent sent;
      row.change(sent);
      EXPECT_FALSE(readRequest(messageOf(form, sent))) << row.what << ", " << form;
    }
  }
}

TEST(Request, isRefusedByItsVersion) {
  EXPECT_FALSE(readRequest(messageOf({3, true}, Sent())));
  for (const Form& form : forms()) {
    Sent sent;
    sent.addressing = 1;
    EXPECT_EQ(form.minor < 2, readRequest(messageOf(form, sent)).has_value()) << form;
    sent = Sent();
    sent.principal = std::string(256, 'p');
    EXPECT_EQ(form.minor == 2, readRequest(messageOf(form, sent)).has_value()) << form;
    sent = Sent();
    sent.answered = 2;
    EXPECT_EQ(form.minor == 2, readRequest(messageOf(form, sent)).has_value()) << form;
  }
}

TEST(Request, isRefusedWhenItsSizeIsNotItsOwn) {
  for (const Form& form : forms()) {
    const std::string message = messageOf(form, "ping", TEXT);
    EXPECT_FALSE(readRequest(message + 'x')) << form;
    for (std::size_t size = 0; size < message.size(); ++size) {
      EXPECT_FALSE(readRequest(message.substr(0, size))) << size << ", " << form;
    }
  }
}

TEST(Request, isRefusedWhenCutAnywhereInItsHeader) {
  for (const Form& form : forms()) {
    const std::string message = messageOf(form, "ping");
    for (std::size_t size = 12; size < message.size(); ++size) {
      EXPECT_FALSE(readRequest(resized(message.substr(0, size)))) << size << ", " << form;
    }
  }
}

TEST(Request, isSafeWithEveryByteChanged) {
  for (const Form& form : forms()) {
    const std::string message = messageOf(form, "ping", TEXT);
    for (std::size_t at = 0; at < message.size(); ++at) {
      for (int value = 0; value < 256; ++value) {
        std::string changed = message;
        changed[at] = static_cast<char>(value);
        const auto request = readRequest(changed);
        ASSERT_TRUE(!request || request->parametersAt <= changed.size()) << at << ", " << form;
      }
    }
  }
}

std::string locateRequest(const Form& form, const std::string& key, std::uint16_t addressing = 0) {
  CdrWriter out(form.little);
  out.raw("GIOP").octet(1).octet(static_cast<std::uint8_t>(form.minor)).octet(form.little ? 1 : 0);
  out.octet(3).uint32(0).uint32(7);
  if (form.minor == 2) {
    out.uint16(addressing);
  }
  return resized(out.octets(key).bytes());
}

TEST(LocateRequest, isRead) {
  for (const Form& form : forms()) {
    const std::string message = locateRequest(form, "here");
    const auto request = readLocateRequest(message);
    ASSERT_TRUE(request) << form;
    EXPECT_EQ(request->id, 7U);
    EXPECT_EQ(request->key, "here");
    EXPECT_TRUE(request->answered);
    EXPECT_EQ(request->operation, "");
    EXPECT_EQ(request->minor, form.minor);
    EXPECT_EQ(request->littleEndian, form.little);
    EXPECT_FALSE(readRequest(message)) << form;
  }
}

TEST(LocateRequest, isRefused) {
  for (const Form& form : forms()) {
    EXPECT_FALSE(readLocateRequest(messageOf(form, "ping"))) << form;
    EXPECT_FALSE(readLocateRequest(locateRequest(form, std::string(256, 'k')))) << form;
    EXPECT_EQ(form.minor < 2, readLocateRequest(locateRequest(form, "here", 2)).has_value());
    const std::string message = locateRequest(form, "here");
    for (std::size_t size = 12; size < message.size(); ++size) {
      EXPECT_FALSE(readLocateRequest(resized(message.substr(0, size)))) << size << ", " << form;
    }
  }
}

}  // namespace
