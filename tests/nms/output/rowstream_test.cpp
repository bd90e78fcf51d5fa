#include <gtest/gtest.h>

#include <sstream>

#include "nms/output/rowstream.h"
#include "nms/wire/errors.h"

namespace zk::nms {
namespace {

Columns columns() { return {{"a", "A"}, {"b", "B", true}, {"c", "C"}, {"d", "D"}}; }

std::string written(Format format, const Rows& rows) {
  std::ostringstream out;
  RowStream stream(out, format, columns(), {4, 2});
  for (const Row& row : rows) {
    stream.write(row);
  }
  return out.str();
}

TEST(RowStream, alignsATableAsFarAsItCan) {
  EXPECT_EQ(written(Format::kTable, {{"1", "hidden", "2", "3"},
                                     {"longer than that", "hidden", "\xC3\xBC", ""},
                                     {"", "hidden", "", "x\ny"}}),
            "A     C   D\n"
            "1     2   3\n"
            "longer than that  \xC3\xBC\n"
            "          x\\ny\n");
}

TEST(RowStream, writesOneJsonObjectALine) {
  Json::Value nested;
  nested["x"].append(1);
  EXPECT_EQ(written(Format::kJson, {}), "");
  EXPECT_EQ(written(Format::kJson, {{"1", nested, "two\nlines", true}}),
            "{\"a\": \"1\", \"b\": {\"x\":[1]}, \"c\": \"two\\nlines\", \"d\": true}\n");
}

TEST(RowStream, writesTheKeysOfCsvOnce) {
  Json::Value nested;
  nested["x"] = "y";
  EXPECT_EQ(written(Format::kCsv, {{"1", nested, "a,b", ""}, {"2", "", "", ""}}),
            "a,b,c,d\n1,\"{\"\"x\"\":\"\"y\"\"}\",\"a,b\",\n2,,,\n");
}

TEST(RowStream, saysThatNobodyTakesTheRows) {
  std::ostringstream out;
  RowStream stream(out, Format::kJson, {{"a", "A"}}, {});
  out.setstate(std::ios::badbit);
  EXPECT_THROW(stream.write({"1"}), OutputError);
}

}  // namespace
}  // namespace zk::nms
