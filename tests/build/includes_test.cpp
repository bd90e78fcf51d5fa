// Which room may include which: the direction that data goes, kept by reading
// the sources.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zk::test {

namespace {

namespace fs = std::filesystem;

const fs::path ROOT = ZK_SOURCE_DIR;

using Places = std::set<std::string>;

// A room, or one header, that may be included, besides the room itself and what
// those may include in turn. A room is a folder without the rooms inside it.
const std::map<std::string, Places> MAY_INCLUDE = {
    {"zk_quornex/idl", {}},
    {"zk_quornex/platform", {"zk_quornex/idl"}},
    {"zk_quornex/platform/default", {"zk_quornex/platform"}},
    {"zk_quornex/names", {"zk_quornex/platform"}},
    {"zk_quornex/notify", {"zk_quornex/names"}},
    {"zk_quornex/messages",
     {"zk_quornex/notify/exceptions.h", "zk_quornex/notify/missingservice.h",
      "zk_quornex/platform"}},
    {"zk_quornex/mo", {"zk_quornex/names", "zk_quornex/notify"}},
    {"agent/base", {"zk_quornex/platform", "zk_quornex/platform/default"}},
    {"agent/orb", {"agent/base"}},
    {"agent/ems", {"agent/base"}},
    {"agent/ems/traffic", {"agent/ems"}},
    {"agent/tmf", {"agent/ems", "agent/base", "zk_quornex/mo"}},
    {"agent/constraint", {"zk_quornex/idl"}},
    {"agent/channel", {"agent/constraint", "agent/orb", "zk_quornex/messages"}},
    {"agent/managers", {"agent/tmf", "agent/ems", "agent/orb"}},
    {"agent/sessions", {"agent/managers", "agent/channel"}},
    {"agent/admin", {"agent/sessions", "agent/ems", "agent/ems/traffic", "agent/tmf"}},
    {"agent/cli", {"agent/sessions", "agent/ems/traffic", "options"}},
    {"agent", {"agent/cli", "agent/admin"}},
    {"options", {}},
    {"nms/wire", {"zk_quornex/idl", "zk_quornex/platform/threadsafety.h"}},
    {"nms/output", {"nms/wire"}},
    {"nms/events", {"nms/output"}},
    {"nms/commands", {"nms/events", "options"}},
    {"nms", {"nms/commands"}},
};

// The headers of the library that are nobody else's, and are not installed.
const Places& internalHeaders() {
  static const Places headers = [] {
    std::ifstream list(ROOT / "cmake/internal-headers.txt");
    Places read;
    for (std::string line; std::getline(list, line);) {
      read.insert(line);
    }
    return read;
  }();
  return headers;
}

std::string folderOf(const std::string& path) {
  return fs::path(path).parent_path().generic_string();
}

bool isLibrary(const std::string& path) { return path.compare(0, 11, "zk_quornex/") == 0; }

// Everything a room may include, the room itself too.
void collect(const std::string& room, Places& places) {
  if (places.insert(room).second && MAY_INCLUDE.count(room) != 0) {
    for (const std::string& place : MAY_INCLUDE.at(room)) {
      collect(place, places);
    }
  }
}

bool mayInclude(const std::string& room, const std::string& header) {
  Places places;
  collect(room, places);
  if (internalHeaders().count(header) != 0 && !isLibrary(room)) {
    return false;
  }
  return places.count(folderOf(header)) != 0 || places.count(header) != 0;
}

struct Include {
  std::string file;    // from the root
  std::string header;  // as written
  bool quoted;
};

bool isSource(const fs::path& path) {
  const std::string extension = path.extension().string();
  return extension == ".h" || extension == ".cpp";
}

void readIncludes(const fs::path& path, std::vector<Include>& includes) {
  static const std::regex form("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"].*");
  std::ifstream source(path);
  std::smatch parts;
  for (std::string line; std::getline(source, line);) {
    if (std::regex_match(line, parts, form)) {
      includes.push_back(
          {path.lexically_relative(ROOT).generic_string(), parts[2].str(), parts[1].str() == "\""});
    }
  }
}

// Of the room alone, without the rooms inside it.
std::vector<Include> includesOf(const std::string& room) {
  std::vector<Include> includes;
  for (const auto& entry : fs::directory_iterator(ROOT / room)) {
    if (entry.is_regular_file() && isSource(entry.path())) {
      readIncludes(entry.path(), includes);
    }
  }
  return includes;
}

// Every folder with sources below these, whether the table knows it or not.
Places rooms() {
  Places found;
  for (const char* top : {"zk_quornex", "options", "agent", "nms"}) {
    for (const auto& entry : fs::recursive_directory_iterator(ROOT / top)) {
      if (entry.is_regular_file() && isSource(entry.path())) {
        found.insert(entry.path().parent_path().lexically_relative(ROOT).generic_string());
      }
    }
  }
  return found;
}

bool isOurs(const std::string& header) { return fs::exists(ROOT / header); }

class IncludeDirection : public testing::TestWithParam<std::string> {};

TEST_P(IncludeDirection, isKept) {
  const std::vector<Include> includes = includesOf(GetParam());
  EXPECT_FALSE(includes.empty());
  for (const Include& include : includes) {
    if (isOurs(include.header)) {
      EXPECT_TRUE(mayInclude(GetParam(), include.header))
          << include.file << " includes " << include.header;
    }
  }
}

TEST_P(IncludeDirection, isToldByPathsFromTheRoot) {
  if (GetParam() == "zk_quornex/idl") {
    return;  // includes what is generated from it
  }
  for (const Include& include : includesOf(GetParam())) {
    EXPECT_TRUE(!include.quoted || isOurs(include.header))
        << include.file << " includes " << include.header;
  }
}

INSTANTIATE_TEST_SUITE_P(Folders, IncludeDirection, testing::ValuesIn([] {
                           std::vector<std::string> folders;
                           folders.reserve(MAY_INCLUDE.size());
                           for (const auto& folder : MAY_INCLUDE) {
                             folders.push_back(folder.first);
                           }
                           return folders;
                         }()),
                         [](const auto& folder) {
                           std::string name = folder.param;
                           std::replace(name.begin(), name.end(), '/', '_');
                           return name;
                         });

TEST(IncludeRules, haveARowForEveryRoom) {
  Places told;
  for (const auto& [room, places] : MAY_INCLUDE) {
    told.insert(room);
  }
  EXPECT_EQ(rooms(), told);
}

TEST(IncludeRules, nameInternalHeadersThatAreThere) {
  EXPECT_FALSE(internalHeaders().empty());
  for (const std::string& header : internalHeaders()) {
    EXPECT_TRUE(isOurs(header)) << header;
  }
}

// No two rooms may include each other, not even by way of others.
TEST(IncludeRules, goOneWay) {
  for (const auto& [room, listed] : MAY_INCLUDE) {
    for (const std::string& place : listed) {
      Places beyond;
      collect(place, beyond);
      EXPECT_EQ(beyond.count(room), 0U) << room << " and " << place;
    }
  }
}

TEST(IncludeRules, tellTheDirections) {
  const std::vector<std::pair<std::string, std::string>> accepted = {
      {"zk_quornex/names", "zk_quornex/names/pairs.h"},
      {"zk_quornex/names", "zk_quornex/platform/trace.h"},
      {"zk_quornex/messages", "zk_quornex/notify/exceptions.h"},
      {"zk_quornex/platform/default", "zk_quornex/platform/config.h"},
      {"agent/sessions", "agent/base/log.h"},
      {"agent/channel", "zk_quornex/messages/messagecach.h"},
      {"nms/commands", "nms/wire/orb.h"},
      {"nms/commands", "options/options.h"},
      {"agent/cli", "options/options.h"},
  };
  for (const auto& [room, header] : accepted) {
    EXPECT_TRUE(mayInclude(room, header)) << room << " " << header;
  }
  const std::vector<std::pair<std::string, std::string>> refused = {
      {"zk_quornex/names", "zk_quornex/platform/default/logs.h"},
      {"zk_quornex/names", "zk_quornex/notify/exceptions.h"},
      {"zk_quornex/messages", "zk_quornex/notify/notification.h"},
      {"zk_quornex/messages", "zk_quornex/names/codes.h"},
      {"zk_quornex/mo", "agent/run.h"},
      {"zk_quornex/platform", "zk_quornex/platform/default/logs.h"},
      {"zk_quornex/platform/default", "zk_quornex/names/nameconvert.h"},
      {"agent/channel", "agent/ems/records.h"},
      {"agent/channel", "zk_quornex/messages/traceorigin.h"},
      {"agent/tmf", "zk_quornex/notify/missingservice.h"},
      {"agent/constraint", "agent/base/log.h"},
      {"agent/ems", "agent/tmf/names.h"},
      {"agent/orb", "agent/ems/records.h"},
      {"agent/managers", "agent/channel/channel.h"},
      {"agent", "nms/commands/program.h"},
      {"agent", "tests/support/doubles.h"},
      {"nms/wire", "nms/output/output.h"},
      {"nms/wire", "options/options.h"},
      {"options", "zk_quornex/idl/names.h"},
      {"nms", "zk_quornex/names/nameconvert.h"},
  };
  for (const auto& [room, header] : refused) {
    EXPECT_FALSE(mayInclude(room, header)) << room << " " << header;
  }
}

// What parses options takes long to compile: one source includes it for all.
TEST(IncludeRules, leaveTheParserOfOptionsToOneRoom) {
  for (const std::string& room : rooms()) {
    for (const Include& include : includesOf(room)) {
      const bool parser = include.header.rfind("CLI/", 0) == 0;
      EXPECT_TRUE(!parser || include.file == "options/options.cpp")
          << include.file << " includes " << include.header;
    }
  }
}

// All is written against the mapping that the ORBs share, but for these.
TEST(IncludeRules, leaveTheOrbToFewFiles) {
  const Places knowing = {"zk_quornex/idl/corba.h",     "agent/orb/orb.cpp",
                          "agent/orb/transport.cpp",    "nms/wire/orb.cpp",
                          "tests/support/orb.cpp",      "tests/build/includes_test.cpp",
                          "tests/agent/orb/decoding.h", "tests/agent/orb/decoding.cpp"};
  const std::regex orbName(
      "omniORB|omni_thread|omnithread|omniINS|ORB_TAO|\\bTAO\\b|[<\"](tao/(?!pegtl)|COS/|orbsvcs/"
      ")");
  for (const char* top : {"zk_quornex", "agent", "nms", "tests", "bench", "fuzz"}) {
    for (const auto& entry : fs::recursive_directory_iterator(ROOT / top)) {
      const std::string file = entry.path().lexically_relative(ROOT).generic_string();
      if (entry.is_regular_file() && isSource(entry.path()) && knowing.count(file) == 0) {
        std::ifstream source(entry.path());
        for (std::string line; std::getline(source, line);) {
          EXPECT_FALSE(std::regex_search(line, orbName)) << file << ": " << line;
        }
      }
    }
  }
}

}  // namespace

}  // namespace zk::test
