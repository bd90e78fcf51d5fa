// Anys among the parameters: the values whose types strangers choose.
#include <cstdint>
#include <string>
#include <vector>

#include "tests/agent/constraint/events.h"
#include "tests/agent/orb/rows.h"
#include "zk_quornex/idl/channel.h"

#include ZK_STUBS(TimeBase)

namespace {

using zk::agent::readRequest;
using zk::agent::Verdict;
using zk::test::CdrWriter;
using zk::test::changeEveryByte;
using zk::test::decodedByOrb;
using zk::test::encodedByOrb;
using zk::test::expectNothingCutPasses;
using zk::test::expectVerdicts;
using zk::test::Form;
using zk::test::messageOf;
using zk::test::Parameters;
using zk::test::Row;
using zk::test::verdictOn;

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

void properties(CdrWriter& out, std::uint32_t count) {
  out.uint32(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    out.text("").uint32(0);
  }
}

const std::vector<Row>& accepted() {
  static const std::vector<Row> rows = {
      {"as many as may be", "set_qos", [](CdrWriter& out) { properties(out, 256); }},
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
      {"too many", "set_qos", [](CdrWriter& out) { properties(out, 257); }},
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
      {"a text beyond its bound", "set_qos",
       property([](CdrWriter& out) { out.uint32(STRING).uint32(2).text("abc"); })},
  };
  return rows;
}

const std::vector<Row>& damaged() {
  static const std::vector<Row> rows = {
      {"neither true nor false in an Any", "set_qos",
       property([](CdrWriter& out) { out.uint32(8).octet(2); })},
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
  };
  return rows;
}

TEST(ScreenedAny, passes) { expectVerdicts(accepted(), Verdict::PASS); }
TEST(ScreenedAny, isRefused) { expectVerdicts(unwanted(), Verdict::BAD_PARAM); }
TEST(ScreenedAny, isDamaged) { expectVerdicts(damaged(), Verdict::MARSHAL); }
TEST(ScreenedAny, doesNotPassCutShort) { expectNothingCutPasses(accepted()); }

// In this machine's byte order, which the ORB encodes in.
constexpr Form OWN = {2, __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__};

std::vector<std::string> messagesOfEvents() {
  std::vector<std::string> messages;
  for (const auto& event : {zk::test::alarm(), zk::test::creation(), zk::test::change()}) {
    messages.push_back(messageOf(OWN, "match_structured", encodedByOrb(event)));
  }
  return messages;
}

TEST(ScreenedAny, passesTheAgentsOwnEvents) {
  for (const std::string& message : messagesOfEvents()) {
    EXPECT_EQ(verdictOn(message), Verdict::PASS);
    EXPECT_TRUE(decodedByOrb(message, *readRequest(message)));
  }
}

TEST(ScreenedAny, passesATimeOfQos) {
  CosNotification::QoSProperties properties;
  TimeBase::UtcT start{};
  zk::test::addTo(properties, "StartTime") <<= start;
  EXPECT_EQ(verdictOn(messageOf(OWN, "set_qos", encodedByOrb(properties))), Verdict::PASS);
}

TEST(ScreenedAny, refusesATypeThatPointsToAnother) {
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

TEST(ScreenedAny, letsTheOrbSurviveEveryByteChanged) {
  for (const std::string& message : messagesOfEvents()) {
    changeEveryByte(message);
  }
  changeEveryByte(accepted());
}

}  // namespace
