#include "agent/orb/screening.h"

#include <string>
#include <vector>

#include "tests/agent/orb/rows.h"

namespace {

using zk::agent::readRequest;
using zk::agent::Verdict;
using zk::test::CdrWriter;
using zk::test::changeEveryByte;
using zk::test::expectNothingCutPasses;
using zk::test::expectVerdicts;
using zk::test::Form;
using zk::test::forms;
using zk::test::messageOf;
using zk::test::Parameters;
using zk::test::resized;
using zk::test::Row;

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

// What clients send.
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
      {"an operation that nobody has", "explode", [](CdrWriter& out) { out.uint32(0xffffffff); }},
  };
  return rows;
}

// Well-formed, but nothing that is taken.
const std::vector<Row>& unwanted() {
  static const std::vector<Row> rows = {
      {"too long a text", "create_filter",
       [](CdrWriter& out) { out.text(std::string(65537, 'x')); }},
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
      {"an enum out of range", "new_for_consumers", [](CdrWriter& out) { out.uint32(2); }},
  };
  return rows;
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
        const auto request = readRequest(longer);
        ASSERT_TRUE(request) << row.what << ", " << form;
        ASSERT_EQ(zk::agent::screen(longer, *request), Verdict::PASS) << row.what;
        // Without parameters the padding before them goes too.
        EXPECT_EQ(longer, begin == message.size() ? resized(longer) : message) << row.what;
        EXPECT_LE(longer.size(), message.size() + 7) << row.what << ", " << form;
      }
    }
  }
}

TEST(Screening, passesNothingCutShort) { expectNothingCutPasses(accepted(), mayBeCut); }

TEST(Screening, letsTheOrbSurviveEveryByteChanged) { changeEveryByte(accepted()); }

}  // namespace
