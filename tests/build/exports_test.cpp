// What the shared library lets out, read from its symbol table: the classes of
// its interface whole, and nothing else.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace zk::test {

namespace {

const std::string NAMESPACE = "NS_QUORCORBA::";

// The public operations of each class, with the number of overloads.
using Operations = std::map<std::string, std::size_t>;

Operations nameOperations(const std::string& name) {
  return {{name, 1}, {"~" + name, 1}, {"Nms2EmsName", 1}, {"Ems2NmsName", 1}, {"Accept", 1}};
}

Operations with(Operations operations, const Operations& more) {
  operations.insert(more.begin(), more.end());
  return operations;
}

std::map<std::string, Operations> interface() {
  std::map<std::string, Operations> result;
  for (const char* name : {"TEName", "TEMEName", "TESubnetworkName", "TETopoLinkName", "CANodeName",
                           "CASubMapName", "CADispLinkName", "CAPhyLinkName", "CAAIDName"}) {
    result[name] = nameOperations(name);
  }
  result["CAAIDName"] = with(result["CAAIDName"], {{"SetStrIDs", 1}, {"GetStrIDs", 1}});
  result["TENameConvert"] = {{"NmsToEmsNameConvert", 1}, {"EmsToNmsNameConvert", 1}};
  result["NXMessageMgr"] = {{"Instance", 1},         {"getInstance", 1},    {"Destroy", 1},
                            {"addMsgClassCache", 1}, {"subscribeMsg", 1},   {"unSubscribeMsg", 1},
                            {"setFilter", 1},        {"setLayerFilter", 1}, {"GetFilter", 1},
                            {"suspendFilter", 1},    {"resumeFilter", 1},   {"cancelFilter", 1},
                            {"setReportStatus", 1},  {"pushMessage", 1},    {"pushBulkMessage", 1},
                            {"PushBulkMessage", 1},  {"getMsgList", 1},     {"listSignal", 1}};
  result["NXListSignal"] = {{"wait", 1}, {"end", 1}, {"takeMissed", 1}};
  result["TANotification"] = {
      {"OnObjectCreated", 1},      {"OnObjectDeleted", 1},        {"OnObjectAVC", 1},
      {"OnObjectStateChanged", 1}, {"SendObjectNotification", 1}, {"SendNotification", 2},
      {"GetOjectType", 1}};
  result["CAMOAdapter"] = {{"AdapterEms", 1}, {"AdapterMe", 1}};
  result["TECommonFunc"] = {{"OnSetUserLabel", 2},
                            {"OnSetOwner", 2},
                            {"OnSetNativeEmsName", 2},
                            {"OnsetAdditionalInfo", 1}};
  result["TEEMS"] = {{"Instance", 1}, {"Destroy", 1}, {"SetUserLabel", 1}, {"SetOwner", 1}};
  return result;
}

// The lines of the table, each without address and kind, demangled.
std::set<std::string> symbols(const std::string& options) {
  const std::string command = std::string(ZK_NM) + " -DC " + options + " '" ZK_COMMON_LIBRARY "'";
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
  std::string text;
  std::array<char, 4096> part{};
  while (output && fgets(part.data(), part.size(), output.get()) != nullptr) {
    text += part.data();
  }
  std::set<std::string> result;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    // "<16 digits or blanks> <kind> <name>"
    if (line.size() > 19) {
      result.insert(line.substr(19));
    }
  }
  return result;
}

const std::set<std::string>& exported() {
  static const std::set<std::string> all = symbols("--defined-only");
  return all;
}

bool startsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

// "TEName" for a member of that class, its virtual table, or its type
// description; empty for anything else.
std::string owner(const std::string& symbol) {
  for (const char* prefix : {"vtable for ", "typeinfo for ", "typeinfo name for "}) {
    if (startsWith(symbol, prefix + NAMESPACE)) {
      return symbol.substr(std::string(prefix).size() + NAMESPACE.size());
    }
  }
  const std::size_t end = symbol.find("::", NAMESPACE.size());
  if (!startsWith(symbol, NAMESPACE) || end == std::string::npos || end > symbol.find('(')) {
    return "";
  }
  return symbol.substr(NAMESPACE.size(), end - NAMESPACE.size());
}

std::size_t overloads(const std::string& name, const std::string& operation) {
  const std::string start = NAMESPACE + name + "::" + operation + "(";
  std::size_t count = 0;
  for (const std::string& symbol : exported()) {
    count += startsWith(symbol, start) ? 1 : 0;
  }
  return count;
}

TEST(Exports, areReadable) { ASSERT_GT(exported().size(), 50U) << ZK_COMMON_LIBRARY; }

TEST(Exports, belongToTheInterfacesClasses) {
  const auto classes = interface();
  for (const std::string& symbol : exported()) {
    EXPECT_EQ(classes.count(owner(symbol)), 1U) << symbol;
  }
}

// "Accept" for a member function; empty for a virtual table or a type description.
std::string operation(const std::string& symbol) {
  const std::string start = NAMESPACE + owner(symbol) + "::";
  if (!startsWith(symbol, start)) {
    return "";
  }
  return symbol.substr(start.size(), symbol.find('(') - start.size());
}

TEST(Exports, holdNoPrivateMember) {
  const auto classes = interface();
  for (const std::string& symbol : exported()) {
    const auto found = classes.find(owner(symbol));
    const std::string name = operation(symbol);
    EXPECT_TRUE(name.empty() || (found != classes.end() && found->second.count(name) == 1))
        << symbol;
  }
}

TEST(Exports, holdEveryPublicOperation) {
  for (const auto& [name, operations] : interface()) {
    for (const auto& [operation, count] : operations) {
      EXPECT_EQ(overloads(name, operation), count) << name << "::" << operation;
    }
  }
}

TEST(Exports, describeTheClassesThatAreDerivedFrom) {
  for (const auto& [name, operations] : interface()) {
    const bool isName = operations.count("Accept") != 0;
    for (const char* what : {"vtable for ", "typeinfo for ", "typeinfo name for "}) {
      const std::string symbol = std::string(what).append(NAMESPACE).append(name);
      EXPECT_EQ(exported().count(symbol), isName ? 1U : 0U) << symbol;
    }
  }
}

TEST(Exports, holdNothingOfTheTextParsing) {
  for (const char* hidden :
       {"TrimAndCheck", "IsNumeric", "ParseID", "AssignNonEmpty", "SplitByChar", "SplitNameValue",
        "ParseNameValuePath", "ParseTPLayeredName", "CheckTPValues", "ParseNumberPath",
        "SplitNumbers", "ParseIndexedName", "ParseNumberOrInvalid", "TP_NAME_TEMPLATES"}) {
    for (const std::string& symbol : exported()) {
      EXPECT_EQ(symbol.find(hidden), std::string::npos) << symbol;
    }
  }
}

TEST(Exports, leaveThePlatformToTheAgent) {
  const std::set<std::string> needed = symbols("--undefined-only");
  EXPECT_EQ(needed.count("NS_CORBA::CorbaBaseAgentConfig::Instance()"), 1U);
  EXPECT_EQ(needed.count("NS_BUNDLEMGR1::BundleMgr::Instance()"), 1U);
  for (const std::string& symbol : needed) {
    EXPECT_EQ(symbol.find("zk::"), std::string::npos) << "not of the contract: " << symbol;
  }
}

}  // namespace

}  // namespace zk::test
