#include "agent/orb/references.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/agent/orb/rows.h"

namespace {

using zk::agent::Verdict;
using zk::test::CdrWriter;
using zk::test::changeEveryByte;
using zk::test::expectNothingCutPasses;
using zk::test::expectVerdicts;
using zk::test::Parameters;
using zk::test::Row;

struct Profile {
  std::uint32_t tag = 0;
  std::uint8_t major = 1;
  std::uint8_t minor = 2;
  std::uint32_t keySize = 3;
  std::uint32_t components = 1;
  std::uint32_t componentTag = 1;  // code sets, unless there is another component
  std::string component;
  std::string rest;
  std::uint32_t count = 1;
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
    out.uint32(profile.count);
    for (std::uint32_t i = 0; i < profile.count; ++i) {
      out.uint32(profile.tag).octets(inner.bytes());
    }
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

const std::vector<Row>& accepted() {
  static const std::vector<Row> rows = {
      {"a session", "getEmsSession", login(reference())},
      {"no reference", "getEmsSession", login([](CdrWriter& out) { out.text("").uint32(0); })},
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
  };
  return rows;
}

const std::vector<Row>& damaged() {
  static const std::vector<Row> rows = {
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

TEST(Reference, passes) { expectVerdicts(accepted(), Verdict::PASS); }
TEST(Reference, isDamaged) { expectVerdicts(damaged(), Verdict::MARSHAL); }
TEST(Reference, doesNotPassCutShort) { expectNothingCutPasses(accepted()); }
TEST(Reference, letsTheOrbSurviveEveryByteChanged) { changeEveryByte(accepted()); }

}  // namespace
