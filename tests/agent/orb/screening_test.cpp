#include "agent/orb/screening.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/agent/constraint/events.h"
#include "tests/agent/orb/decoding.h"
#include "tests/agent/orb/messages.h"
#include "zk_quornex/idl/channel.h"

#include ZK_STUBS(TimeBase)

namespace zk::agent {

std::ostream& operator<<(std::ostream& out, Verdict verdict) {
  return out << (verdict == Verdict::PASS        ? "PASS"
                 : verdict == Verdict::BAD_PARAM ? "BAD_PARAM"
                                                 : "MARSHAL");
}

}  // namespace zk::agent

namespace {

using zk::agent::readRequest;
using zk::agent::Verdict;
using zk::test::CdrWriter;
using zk::test::decodedByOrb;
using zk::test::encodedByOrb;
using zk::test::Form;
using zk::test::forms;
using zk::test::messageOf;
using zk::test::Parameters;
using zk::test::resized;

constexpr std::uint32_t STRUCT = 15;
constexpr std::uint32_t ENUM = 17;
constexpr std::uint32_t STRING = 18;
constexpr std::uint32_t SEQUENCE = 19;
constexpr std::uint32_t ARRAY = 20;
constexpr std::uint32_t ALIAS = 21;
constexpr std::uint32_t INDIRECTION = 0xffffffff;

constexpr const char* PAIR_ID = "IDL:mtnm.tmforum.org/globaldefs/NameAndStringValue_T:1.0";
constexpr const char* DIRECTION_ID = "IDL:mtnm.tmforum.org/globaldefs/ConnectionDirection_T:1.0";
constexpr const char* LIST_ID = "IDL:mtnm.tmforum.org/globaldefs/NVSList_T:1.0";

Verdict verdictOn(std::string message) {
  const auto request = readRequest(message);
  EXPECT_TRUE(request);
  return request ? zk::agent::screen(message, *request) : Verdict::MARSHAL;
}

// A TypeCode with parameters of its own.
void type(CdrWriter& out, std::uint32_t kind, const Parameters& content) {
  CdrWriter inner = CdrWriter::encapsulation(out.little());
  content(inner);
  out.uint32(kind).octets(inner.bytes());
}

void textType(CdrWriter& out) { out.uint32(STRING).uint32(0); }

void pairType(CdrWriter& out, const char* name = "NameAndStringValue_T", std::uint32_t count = 2) {
  type(out, STRUCT, [&](CdrWriter& in) {
    in.text(PAIR_ID).text(name).uint32(count).text("name");
    textType(in);
    textType(in.text("value"));
  });
}

void directionType(CdrWriter& out, const char* label = "CD_UNI") {
  type(out, ENUM, [&](CdrWriter& in) {
    in.text(DIRECTION_ID).text("ConnectionDirection_T").uint32(2).text(label).text("CD_BI");
  });
}

// set_qos with one property.
Parameters property(const Parameters& any) {
  return [any](CdrWriter& out) { any(out.uint32(1).text("Priority")); };
}

void list(CdrWriter& out, std::uint32_t count, const Parameters& element) {
  out.uint32(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    element(out);
  }
}

void name(CdrWriter& out) {
  list(out, 2, [](CdrWriter& pair) { pair.text("EMS").text("Quor/1"); });
}

void eventType(CdrWriter& out) { out.text("tmf_mtnm").text("NT_ALARM"); }

struct Profile {
  std::uint32_t tag = 0;
  std::uint8_t major = 1;
  std::uint8_t minor = 2;
  std::uint32_t keySize = 3;
  std::uint32_t components = 1;
  std::uint32_t componentTag = 1;  // code sets, unless there is another component
  std::string component;
  std::string rest;
  std::size_t count = 1;
};

std::string codeSets(bool little, std::uint32_t conversions) {
  return CdrWriter::encapsulation(little)
      .uint32(0x10001)
      .uint32(conversions)
      .uint32(0x10109)
      .uint32(0)
      .bytes();
}

Parameters reference(const std::function<void(Profile&)>& change = {}) {
  Profile profile;
  if (change) {
    change(profile);
  }
  return [profile](CdrWriter& out) {
    CdrWriter inner = CdrWriter::encapsulation(out.little());
    if (profile.tag == 0) {
      inner.octet(profile.major).octet(profile.minor).text("127.0.0.1").uint16(5815);
      inner.uint32(profile.keySize).raw("key").uint32(profile.components);
    } else {
      inner.uint32(profile.components);
    }
    inner.uint32(profile.componentTag);
    inner.octets(profile.component.empty() ? codeSets(out.little(), 0) : profile.component);
    inner.raw(profile.rest);
    out.text("IDL:mtnm.tmforum.org/nmsSession/NmsSession_I:1.0");
    list(out, static_cast<std::uint32_t>(profile.count),
         [&](CdrWriter& item) { item.uint32(profile.tag).octets(inner.bytes()); });
  };
}

// One mechanism, over TLS at one address.
std::string security(bool little, std::uint32_t authorities, const std::string& host = "nms") {
  CdrWriter tls = CdrWriter::encapsulation(little);
  tls.uint16(1).uint16(1).uint32(1).text(host).uint16(5816);
  CdrWriter out = CdrWriter::encapsulation(little);
  out.octet(0).uint32(1).uint16(0).uint32(36).octets(tls.bytes());
  out.uint16(0).uint16(0).octets("").octets("");
  out.uint16(0).uint16(0).uint32(authorities);
  for (std::uint32_t i = 0; i < std::min(authorities, 9U); ++i) {
    out.uint32(1).octets("name");
  }
  return out.uint32(1).octets("oid").uint32(0).bytes();
}

Parameters login(const Parameters& session) {
  return [session](CdrWriter& out) { session(out.text("operator").text("secret")); };
}

// A session whose profile has the component.
Parameters withComponent(std::uint32_t tag, const std::function<std::string(bool)>& component) {
  return login([=](CdrWriter& out) {
    reference([&](Profile& profile) {
      profile.componentTag = tag;
      profile.component = component(out.little());
    })(out);
  });
}

std::string address(bool little, const std::string& host) {
  return CdrWriter::encapsulation(little).text(host).uint16(1).bytes();
}

struct Row {
  const char* what;
  const char* operation;
  Parameters parameters;
};

// Their layouts are the IDL's, and they are what clients send.
const std::vector<Row>& accepted() {
  static const std::vector<Row> rows = {
      {"nothing", "getEMS", {}},
      {"an attribute's reading", "_get_MyID", {}},
      {"a number", "getAllManagedElements", [](CdrWriter& out) { out.uint32(50); }},
      {"a name and a number", "getAllManagedElements",
       [](CdrWriter& out) { name(out), out.uint32(5); }},
      {"texts and a truth", "setUserLabel",
       [](CdrWriter& out) { name(out), out.text("").octet(1); }},
      {"a double", "setTraffic", [](CdrWriter& out) { out.number(0x3ff0000000000000, 8); }},
      {"a session", "getEmsSession", login(reference())},
      {"a session without a reference", "getEmsSession",
       login([](CdrWriter& out) { out.text("").uint32(0); })},
      {"a profile of components", "getEmsSession",
       login(reference([](Profile& profile) { profile.tag = 1; }))},
      {"a profile of another kind", "getEmsSession",
       login(reference([](Profile& profile) { profile.tag = 77; }))},
      {"a component of another kind", "getEmsSession", login(reference([](Profile& profile) {
         profile.componentTag = 99;
         profile.component = "x";
       }))},
      {"another address", "getEmsSession",
       withComponent(3, [](bool little) { return address(little, "fe80::1%eth0"); })},
      {"a secure port", "getEmsSession",
       withComponent(20, [](bool) { return std::string(8, '\0'); })},
      {"a security mechanism", "getEmsSession",
       withComponent(33, [](bool little) { return security(little, 1); })},
      {"many constraints", "add_constraints",
       [](CdrWriter& out) {
         list(out, 65, [](CdrWriter& one) {
           list(one, 1, eventType);
           one.text("$a == 1");
         });
       }},
      {"many event types", "subscription_change",
       [](CdrWriter& out) { list(out, 129, eventType), out.uint32(0); }},
      {"the longest text", "create_filter",
       [](CdrWriter& out) { out.text(std::string(65536, 'x')); }},
      {"the longest list", "get_constraints",
       [](CdrWriter& out) { list(out, 1024, [](CdrWriter& id) { id.uint32(1); }); }},
      {"a type's question", "_is_a", [](CdrWriter& out) { out.text("IDL:x/y:1.0"); }},
      {"no value", "set_qos", property([](CdrWriter& out) { out.uint32(0); })},
      {"a short", "set_qos", property([](CdrWriter& out) { out.uint32(2).uint16(1); })},
      {"a long", "set_qos", property([](CdrWriter& out) { out.uint32(3).uint32(1); })},
      {"a float", "set_qos", property([](CdrWriter& out) { out.uint32(6).uint32(1); })},
      {"a double in an Any", "set_qos",
       property([](CdrWriter& out) { out.uint32(7).number(1, 8); })},
      {"a boolean", "set_admin", property([](CdrWriter& out) { out.uint32(8).octet(1); })},
      {"a char", "validate_qos", property([](CdrWriter& out) { out.uint32(9).octet('x'); })},
      {"an octet", "set_qos", property([](CdrWriter& out) { out.uint32(10).octet(255); })},
      {"a time", "set_qos", property([](CdrWriter& out) { out.uint32(24).number(1, 8); })},
      {"a bounded text", "set_qos",
       property([](CdrWriter& out) { out.uint32(STRING).uint32(3).text("abc"); })},
      {"an enum", "set_qos", property([](CdrWriter& out) { directionType(out), out.uint32(1); })},
      {"a struct", "match", [](CdrWriter& out) { pairType(out), out.text("a").text("b"); }},
      {"an operation that nobody has", "explode", [](CdrWriter& out) { out.uint32(0xffffffff); }},
  };
  return rows;
}

// So deep that a reader who follows has no stack left.
void nestAnys(CdrWriter& out, int depth) {
  for (int i = 0; i < depth; ++i) {
    out.uint32(11);
  }
  out.uint32(0);
}

void nestSequences(CdrWriter& out, int depth) {
  std::string inner;
  for (int i = 0; i < depth; ++i) {
    CdrWriter one = CdrWriter::encapsulation(out.little());
    one.uint32(i == 0 ? 10 : SEQUENCE);
    if (i != 0) {
      one.octets(inner);
    }
    inner = one.uint32(0).bytes();
  }
  out.uint32(SEQUENCE).octets(inner).uint32(0);
}

// struct S { S s; }: the member's TypeCode is the struct's own.
void containItself(CdrWriter& out, const char* id) {
  type(out, STRUCT, [&](CdrWriter& in) {
    in.text(id).text("S").uint32(1).text("s").align(4).uint32(INDIRECTION);
    const auto back = in.bytes().size() + 8;  // to the kind, before length and content
    in.uint32(static_cast<std::uint32_t>(-static_cast<std::int64_t>(back)));
  });
}

// Well-formed, but nothing that is taken.
const std::vector<Row>& unwanted() {
  static const std::vector<Row> rows = {
      {"an Any in an Any", "set_qos", property([](CdrWriter& out) { nestAnys(out, 1); })},
      {"Anys 60 deep", "set_qos", property([](CdrWriter& out) { nestAnys(out, 60); })},
      {"Anys 100000 deep", "match", [](CdrWriter& out) { nestAnys(out, 100000); }},
      {"a struct in itself", "set_qos",
       property([](CdrWriter& out) { containItself(out, "IDL:S:1.0"); })},
      {"a known struct in itself", "set_qos",
       property([](CdrWriter& out) { containItself(out, PAIR_ID); })},
      {"an array of empty structs", "set_qos", property([](CdrWriter& out) {
         type(out, ARRAY, [](CdrWriter& in) {
           type(in, STRUCT, [](CdrWriter& empty) { empty.text("IDL:E:1.0").text("E").uint32(0); });
           in.uint32(0xffffffff);
         });
       })},
      {"a sequence", "set_qos", property([](CdrWriter& out) { nestSequences(out, 1); })},
      {"sequences 2000 deep", "set_qos",
       property([](CdrWriter& out) { nestSequences(out, 2000); })},
      {"a type's beginning elsewhere", "set_qos",
       property([](CdrWriter& out) { out.uint32(INDIRECTION).uint32(0xfffffffc); })},
      {"a TypeCode", "set_qos", property([](CdrWriter& out) { out.uint32(12).uint32(0); })},
      {"a reference", "set_qos", property([](CdrWriter& out) {
         type(out, 14, [](CdrWriter& in) { in.text("IDL:x:1.0").text("x"); });
         out.text("").uint32(0);
       })},
      {"a wide text", "set_qos",
       property([](CdrWriter& out) { out.uint32(27).uint32(0).uint32(0); })},
      {"a kind there is not", "set_qos", property([](CdrWriter& out) { out.uint32(1000); })},
      {"a struct with another name", "match",
       [](CdrWriter& out) { pairType(out, "Other"), out.text("a").text("b"); }},
      {"a struct of too many members", "match",
       [](CdrWriter& out) { pairType(out, "NameAndStringValue_T", 0x40000001); }},
      {"an enum with another label", "match",
       [](CdrWriter& out) { directionType(out, "OTHER"), out.uint32(0); }},
      {"an enum that claims to be a struct", "match",
       [](CdrWriter& out) {
         type(out, STRUCT,
              [](CdrWriter& in) { in.text(DIRECTION_ID).text("ConnectionDirection_T").uint32(2); });
       }},
      {"an alias of another type", "match",
       [](CdrWriter& out) {
         type(out, ALIAS, [](CdrWriter& in) { textType(in.text(LIST_ID).text("NVSList_T")); });
         out.text("");
       }},
      {"too long a text", "create_filter",
       [](CdrWriter& out) { out.text(std::string(65537, 'x')); }},
      {"a text beyond its bound", "set_qos",
       property([](CdrWriter& out) { out.uint32(STRING).uint32(2).text("abc"); })},
      {"too long a list", "get_constraints",
       [](CdrWriter& out) { list(out, 1025, [](CdrWriter& id) { id.uint32(1); }); }},
      {"too many values", "add_constraints",
       [](CdrWriter& out) {
         list(out, 1024, [](CdrWriter& one) {
           list(one, 32, eventType);
           one.text("");
         });
       }},
  };
  return rows;
}

const std::vector<Row>& damaged() {
  static const std::vector<Row> rows = {
      {"nothing where something is", "getAllNodes", {}},
      {"neither of two forms", "getAllManagedElements", [](CdrWriter& out) { out.octet(1); }},
      {"a length that overflows", "get_constraints",
       [](CdrWriter& out) { out.uint32(0x40000001).uint32(1); }},
      {"the greatest length", "set_qos", [](CdrWriter& out) { out.uint32(0xffffffff).uint32(0); }},
      {"a name longer than the message", "getMapObject",
       [](CdrWriter& out) { out.uint32(3).text("EMS").text("x"); }},
      {"a text longer than the message", "create_filter",
       [](CdrWriter& out) { out.uint32(0xffffffff).raw("abc"); }},
      {"a text of no bytes", "create_filter", [](CdrWriter& out) { out.uint32(0); }},
      {"a text without an end", "create_filter", [](CdrWriter& out) { out.octets("abc"); }},
      {"a text with an end inside", "create_filter",
       [](CdrWriter& out) { out.text(std::string("a\0b", 3)); }},
      {"neither true nor false", "setUserLabel",
       [](CdrWriter& out) { name(out), out.text("x").octet(2); }},
      {"neither true nor false in an Any", "set_qos",
       property([](CdrWriter& out) { out.uint32(8).octet(2); })},
      {"an enum out of range", "new_for_consumers", [](CdrWriter& out) { out.uint32(2); }},
      {"an enum out of range in an Any", "match",
       [](CdrWriter& out) { directionType(out), out.uint32(2); }},
      {"a TypeCode of no bytes", "set_qos",
       property([](CdrWriter& out) { out.uint32(STRUCT).uint32(0); })},
      {"a TypeCode cut short", "set_qos", property([](CdrWriter& out) {
         out.uint32(STRUCT).uint32(100).octet(out.little() ? 1 : 0).text("IDL:S:1.0").text("S");
       })},
      {"a known TypeCode cut short", "set_qos", property([](CdrWriter& out) {
         type(out, STRUCT, [](CdrWriter& in) { in.text(PAIR_ID); });
       })},
      {"a TypeCode with a rest", "match",
       [](CdrWriter& out) {
         type(out, ENUM, [](CdrWriter& in) {
           in.text(DIRECTION_ID).text("ConnectionDirection_T").uint32(2);
           in.text("CD_UNI").text("CD_BI").uint32(0);
         });
         out.uint32(0);
       }},
      {"a TypeCode in no byte order", "match",
       [](CdrWriter& out) { out.uint32(ENUM).octets(std::string("\2\0\0\0\0\0\0\0", 8)); }},
      {"too many profiles", "getEmsSession",
       login(reference([](Profile& profile) { profile.count = 9; }))},
      {"too large a profile", "getEmsSession", login(reference([](Profile& profile) {
         profile.componentTag = 99;
         profile.component = std::string(4096, 'x');
       }))},
      {"a key longer than its profile", "getEmsSession",
       login(reference([](Profile& profile) { profile.keySize = 60; }))},
      {"another major version", "getEmsSession",
       login(reference([](Profile& profile) { profile.major = 2; }))},
      {"a minor version there is not", "getEmsSession",
       login(reference([](Profile& profile) { profile.minor = 3; }))},
      {"too many components", "getEmsSession",
       login(reference([](Profile& profile) { profile.components = 33; }))},
      {"components that are not there", "getEmsSession",
       login(reference([](Profile& profile) { profile.components = 2; }))},
      {"components of a profile that are not there", "getEmsSession",
       login(reference([](Profile& profile) {
         profile.tag = 1;
         profile.components = 2;
       }))},
      {"a profile with a rest", "getEmsSession",
       login(reference([](Profile& profile) { profile.rest = "x"; }))},
      {"code sets whose length overflows", "getEmsSession", login([](CdrWriter& out) {
         reference([&](Profile& profile) {
           profile.component = codeSets(out.little(), 0x40000001);
         })(out);
       })},
      {"a component cut short", "getEmsSession", login(reference([](Profile& profile) {
         profile.componentTag = 3;
         profile.component = std::string("\0\0\0\0", 4);
       }))},
      {"a host that is none", "getEmsSession",
       withComponent(3, [](bool little) { return address(little, "a]b:c"); })},
      {"a secure host that is none", "getEmsSession",
       withComponent(33, [](bool little) { return security(little, 1, "a b"); })},
      {"more authorities than bytes", "getEmsSession",
       withComponent(33, [](bool little) { return security(little, 0x40000001); })},
      {"a security mechanism cut short", "getEmsSession",
       withComponent(33, [](bool little) { return security(little, 1).substr(0, 40); })},
      {"a short secure port", "getEmsSession",
       withComponent(20, [](bool) { return std::string(7, '\0'); })},
      {"the sender's connection", "getEmsSession",
       login(reference([](Profile& profile) { profile.componentTag = 0x41545401; }))},
  };
  return rows;
}

void expectVerdicts(const std::vector<Row>& rows, Verdict verdict) {
  for (const Form& form : forms()) {
    for (const Row& row : rows) {
      EXPECT_EQ(verdictOn(messageOf(form, row.operation, row.parameters)), verdict)
          << row.what << ", " << form;
    }
  }
}

TEST(Screening, passes) { expectVerdicts(accepted(), Verdict::PASS); }
TEST(Screening, refuses) { expectVerdicts(unwanted(), Verdict::BAD_PARAM); }
TEST(Screening, findsDamage) { expectVerdicts(damaged(), Verdict::MARSHAL); }

// The first number of a name is all of the other form that the operation has, and
// what follows is cut off; nothing is read of an operation that nobody has.
bool mayBeCut(const Row& row, std::size_t to) {
  const std::string operation = row.operation;
  return operation == "explode" || (operation == "getAllManagedElements" && to >= 4);
}

TEST(Screening, cutsOffWhatFollows) {
  for (const Form& form : forms()) {
    for (const Row& row : accepted()) {
      if (std::string(row.operation) == "explode") {
        continue;  // nothing is known of it
      }
      const std::string message = messageOf(form, row.operation, row.parameters);
      const std::size_t begin = readRequest(message)->parametersAt;
      for (const char* more : {"x", "more than a few further bytes"}) {
        std::string longer = resized(message + more);
        ASSERT_EQ(zk::agent::screen(longer, *readRequest(longer)), Verdict::PASS) << row.what;
        // Without parameters the padding before them goes too.
        EXPECT_EQ(longer, begin == message.size() ? resized(longer) : message) << row.what;
        EXPECT_LE(longer.size(), message.size() + 7) << row.what << ", " << form;
      }
    }
  }
}

TEST(Screening, passesNothingCutShort) {
  for (const Form& form : forms()) {
    for (const Row& row : accepted()) {
      const std::string message = messageOf(form, row.operation, row.parameters);
      const std::size_t begin = readRequest(message)->parametersAt;
      const std::size_t step = message.size() > 2000 ? 97 : 1;
      for (std::size_t size = begin; size < message.size(); size += step) {
        const std::string cut = resized(message.substr(0, size));
        EXPECT_TRUE(verdictOn(cut) != Verdict::PASS || mayBeCut(row, size - begin))
            << row.what << ", " << size << ", " << form;
      }
    }
  }
}

// In this machine's byte order, which the ORB encodes in.
constexpr Form OWN = {2, __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__};

std::vector<std::string> messagesOfEvents() {
  std::vector<std::string> messages;
  for (const auto& event : {zk::test::alarm(), zk::test::creation(), zk::test::change()}) {
    messages.push_back(messageOf(OWN, "match_structured", encodedByOrb(event)));
  }
  return messages;
}

TEST(Screening, passesTheAgentsOwnEvents) {
  for (const std::string& message : messagesOfEvents()) {
    EXPECT_EQ(verdictOn(message), Verdict::PASS);
    EXPECT_TRUE(decodedByOrb(message, *readRequest(message)));
  }
}

TEST(Screening, passesATimeOfQos) {
  CosNotification::QoSProperties properties;
  TimeBase::UtcT start{};
  zk::test::addTo(properties, "StartTime") <<= start;
  EXPECT_EQ(verdictOn(messageOf(OWN, "set_qos", encodedByOrb(properties))), Verdict::PASS);
}

TEST(Screening, refusesATypeThatPointsToAnother) {
  std::string message = messagesOfEvents()[1];
  const std::string mark(4, '\xff');
  const std::size_t at = message.find(mark);
  ASSERT_NE(at, std::string::npos) << "no type of the event repeats";
  for (const int change : {-16, -8, -4, 4, 8, 16}) {
    std::string changed = message;
    changed[at + 4] = static_cast<char>(changed[at + 4] + change);
    EXPECT_EQ(verdictOn(changed), Verdict::BAD_PARAM) << change;
  }
}

// What passes, the ORB must survive.
void changeEveryByte(const std::string& message) {
  const std::size_t begin = readRequest(message)->parametersAt;
  for (std::size_t at = begin; at < message.size(); ++at) {
    for (const int value : {0, 1, 2, 0x7f, 0x80, 0xff, message[at] + 1, message[at] - 1}) {
      std::string changed = message;
      changed[at] = static_cast<char>(value);
      const auto request = readRequest(changed);
      ASSERT_TRUE(request);
      if (zk::agent::screen(changed, *request) == Verdict::PASS) {
        decodedByOrb(changed, *readRequest(changed));
      }
    }
  }
}

TEST(Screening, letsTheOrbSurviveEveryByteChanged) {
  for (const std::string& message : messagesOfEvents()) {
    changeEveryByte(message);
  }
  for (const Form& form : forms()) {
    for (const Row& row : accepted()) {
      const std::string message = messageOf(form, row.operation, row.parameters);
      if (message.size() < 500) {
        changeEveryByte(message);
      }
    }
  }
}

}  // namespace
