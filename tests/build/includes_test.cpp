// Which folder may include which: the direction that data goes, kept by reading
// the sources.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace zk::test {

namespace {

namespace fs = std::filesystem;

const fs::path ROOT = ZK_SOURCE_DIR;

using Places = std::set<std::string>;

// A folder, or one header, that may be included, besides the folder itself. The
// folder "platform" is the contract alone.
const std::map<std::string, Places> MAY_INCLUDE = {
    {"idl", {}},
    {"platform", {"idl"}},
    {"platform/default", {"platform", "idl"}},
    {"names", {"platform", "idl"}},
    {"notify", {"names", "platform", "idl"}},
    {"messages", {"notify/exceptions.h", "platform", "idl"}},
    {"mo", {"names", "notify", "platform", "idl"}},
    {"agent", {"names", "notify", "messages", "mo", "platform", "platform/default", "idl"}},
    {"nms", {"idl"}},
};

// "platform/default" or the first folder of a path from the root.
std::string folderOf(const std::string& path) {
  const std::string inside = "platform/default/";
  if (path.compare(0, inside.size(), inside) == 0) {
    return "platform/default";
  }
  return path.substr(0, path.find('/'));
}

bool mayInclude(const std::string& folder, const std::string& header) {
  const Places& places = MAY_INCLUDE.at(folder);
  return folderOf(header) == folder || places.count(folderOf(header)) != 0 ||
         places.count(header) != 0;
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

// Of the whole folder, but "platform" without "platform/default".
std::vector<Include> includesOf(const std::string& folder) {
  std::vector<Include> includes;
  for (const auto& entry : fs::recursive_directory_iterator(ROOT / folder)) {
    const std::string file = entry.path().lexically_relative(ROOT).generic_string();
    if (entry.is_regular_file() && isSource(entry.path()) && folderOf(file) == folder) {
      readIncludes(entry.path(), includes);
    }
  }
  return includes;
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
  if (GetParam() == "idl") {
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

TEST(IncludeRules, tellTheDirections) {
  EXPECT_TRUE(mayInclude("names", "names/pairs.h"));
  EXPECT_TRUE(mayInclude("names", "platform/trace.h"));
  EXPECT_FALSE(mayInclude("names", "platform/default/logs.h"));
  EXPECT_FALSE(mayInclude("names", "notify/exceptions.h"));
  EXPECT_TRUE(mayInclude("messages", "notify/exceptions.h"));
  EXPECT_FALSE(mayInclude("messages", "notify/notification.h"));
  EXPECT_FALSE(mayInclude("messages", "names/codes.h"));
  EXPECT_FALSE(mayInclude("mo", "agent/run.h"));
  EXPECT_FALSE(mayInclude("nms", "names/nameconvert.h"));
  EXPECT_FALSE(mayInclude("platform", "platform/default/logs.h"));
  EXPECT_TRUE(mayInclude("platform/default", "platform/config.h"));
  EXPECT_FALSE(mayInclude("platform/default", "names/nameconvert.h"));
  EXPECT_FALSE(mayInclude("agent", "nms/app.h"));
  EXPECT_FALSE(mayInclude("agent", "tests/support/doubles.h"));
}

// The library is written against the mapping that all ORBs share.
TEST(IncludeRules, leaveTheOrbToOneHeader) {
  const std::regex orbHeader("(omniORB4|omniORB3|omnithread|COS|tao|orbsvcs)/?.*");
  for (const char* folder : {"names", "notify", "messages", "mo", "platform", "platform/default"}) {
    for (const Include& include : includesOf(folder)) {
      EXPECT_FALSE(std::regex_match(include.header, orbHeader))
          << include.file << " includes " << include.header;
    }
  }
}

}  // namespace

}  // namespace zk::test
