#include <gtest/gtest.h>
#include <json/reader.h>

#include <cerrno>
#include <sstream>

#include "nms/output/output.h"
#include "nms/wire/failure.h"

namespace zk::nms {
namespace {

const Columns COLUMNS = {{"name", "NAME"}, {"label", "USER LABEL"}, {"more", "MORE", true}};

std::string list(Format format, const Rows& rows, const Columns& columns = COLUMNS) {
  std::ostringstream out;
  writeList(out, format, columns, rows);
  return out.str();
}

std::string one(Format format, const Row& row) {
  std::ostringstream out;
  writeOne(out, format, COLUMNS, row);
  return out.str();
}

Json::Value pairs() {
  Json::Value pair;
  pair["name"] = "site";
  pair["value"] = "a,b";
  Json::Value cell(Json::arrayValue);
  cell.append(pair);
  cell.append(pair);
  return cell;
}

Json::Value numbers() {
  Json::Value cell(Json::arrayValue);
  cell.append(1);
  cell.append(-7);
  return cell;
}

TEST(Table, alignsByWhatTheTerminalShows) {
  EXPECT_EQ(list(Format::TABLE, {{"a", "x", "hidden"},
                                 {"M\xC3\xBCnchen", "y", ""},
                                 {"\xE6\x9D\xB1\xE4\xBA\xAC", "z", ""}}),
            "NAME     USER LABEL\n"
            "a        x\n"
            "M\xC3\xBCnchen  y\n"
            "\xE6\x9D\xB1\xE4\xBA\xAC     z\n");
}

TEST(Table, ofNothingIsItsTitles) { EXPECT_EQ(list(Format::TABLE, {}), "NAME  USER LABEL\n"); }

TEST(Table, leavesNoBlanksAtLineEnds) {
  EXPECT_EQ(list(Format::TABLE, {{"a", "", ""}, {"", "b", ""}, {"", "", ""}}),
            "NAME  USER LABEL\n"
            "a\n"
            "      b\n"
            "\n");
}

TEST(Table, keepsEachObjectOnItsLine) {
  EXPECT_EQ(list(Format::TABLE, {{"two\nlines", "\x1B[2J", ""}}),
            "NAME        USER LABEL\n"
            "two\\nlines  \\x1B[2J\n");
}

TEST(Table, ofOneObjectHasALinePerField) {
  EXPECT_EQ(one(Format::TABLE, {"a", true, pairs()}),
            "NAME        a\n"
            "USER LABEL  yes\n"
            "MORE        site=a\\,b,site=a\\,b\n");
}

TEST(Json, isAnArrayWithOneObjectALine) {
  EXPECT_EQ(list(Format::JSON, {{"a", false, numbers()}, {"b", 5, pairs()}}),
            "[\n"
            "  {\"name\": \"a\", \"label\": false, \"more\": [1,-7]},\n"
            "  {\"name\": \"b\", \"label\": 5, \"more\": [{\"name\":\"site\",\"value\":\"a,b\"},"
            "{\"name\":\"site\",\"value\":\"a,b\"}]}\n"
            "]\n");
}

TEST(Json, ofNothingIsAnEmptyArray) { EXPECT_EQ(list(Format::JSON, {}), "[]\n"); }

TEST(Json, escapesWhatItMustAndKeepsUtf8) {
  EXPECT_EQ(list(Format::JSON, {{"\"q\" \\ \n \x1B", "M\xC3\xBCnchen", ""}}),
            "[\n"
            "  {\"name\": \"\\\"q\\\" \\\\ \\n \\u001b\", \"label\": \"M\xC3\xBCnchen\", "
            "\"more\": \"\"}\n"
            "]\n");
}

TEST(Json, readsBack) {
  const Rows rows = {{"\"q\" \\ \n \x1B", "\xE6\x9D\xB1", pairs()}, {"", true, numbers()}};
  std::istringstream text(list(Format::JSON, rows));
  Json::Value read;
  text >> read;
  ASSERT_EQ(read.size(), rows.size());
  for (Json::ArrayIndex i = 0; i < read.size(); ++i) {
    EXPECT_EQ(read[i]["name"], rows[i][0]);
    EXPECT_EQ(read[i]["label"], rows[i][1]);
    EXPECT_EQ(read[i]["more"], rows[i][2]);
  }
}

TEST(Json, ofOneObjectIsAListOfOne) {
  EXPECT_EQ(one(Format::JSON, {"a", "b", "c"}),
            "[\n  {\"name\": \"a\", \"label\": \"b\", \"more\": \"c\"}\n]\n");
}

TEST(Csv, quotesOnlyWhatNeedsIt) {
  EXPECT_EQ(list(Format::CSV, {{"plain", "a,b", "say \"x\""},
                               {"two\nlines", "cr\rhere", " blanks "},
                               {"", "M\xC3\xBCnchen", numbers()}}),
            "name,label,more\n"
            "plain,\"a,b\",\"say \"\"x\"\"\"\n"
            "\"two\nlines\",\"cr\rhere\", blanks \n"
            ",M\xC3\xBCnchen,1 -7\n");
}

TEST(Csv, ofNothingIsItsFirstLine) { EXPECT_EQ(list(Format::CSV, {}), "name,label,more\n"); }

TEST(Csv, showsAnEmptyOnlyField) {
  EXPECT_EQ(list(Format::CSV, {{""}, {"a"}}, {{"name", "NAME"}}), "name\n\"\"\na\n");
}

TEST(Csv, ofOneObjectHasAllFields) {
  EXPECT_EQ(one(Format::CSV, {"a", true, pairs()}),
            "name,label,more\na,yes,\"site=a\\,b,site=a\\,b\"\n");
}

TEST(Output, saysWhenItCannotBeWritten) {
  std::ostringstream out;
  out.setstate(std::ios::badbit);
  errno = 0;
  EXPECT_THROW(writeList(out, Format::TABLE, COLUMNS, {}), OutputError);
  EXPECT_THROW(writeList(out, Format::JSON, COLUMNS, {}), OutputError);
  EXPECT_THROW(writeOne(out, Format::TABLE, COLUMNS, {"a", "b", "c"}), OutputError);
}

TEST(Cells, makeTextsOfTheWireUtf8) {
  EXPECT_EQ(textCell("M\xFCnchen").asString(), "M\xC3\xBCnchen");
  globaldefs::NVSList_T name;
  name.length(1);
  name[0].name = "EMS";
  name[0].value = "M\xFCnchen";
  EXPECT_EQ(nameCell(name).asString(), "EMS=M\xC3\xBCnchen");
  EXPECT_EQ(pairsCell(name)[0]["value"].asString(), "M\xC3\xBCnchen");
}

TEST(Cells, ofEmptyListsShowNothing) {
  EXPECT_EQ(cellText(ratesCell(transmissionParameters::LayerRateList_T())), "");
  EXPECT_EQ(cellText(pairsCell(globaldefs::NVSList_T())), "");
  EXPECT_TRUE(pairsCell(globaldefs::NVSList_T()).isArray());
}

Columns streamColumns() { return {{"a", "A"}, {"b", "B", true}, {"c", "C"}, {"d", "D"}}; }

std::string written(Format format, const Rows& rows) {
  std::ostringstream out;
  RowStream stream(out, format, streamColumns(), {4, 2});
  for (const Row& row : rows) {
    stream.write(row);
  }
  return out.str();
}

TEST(RowStream, alignsATableAsFarAsItCan) {
  EXPECT_EQ(written(Format::TABLE, {{"1", "hidden", "2", "3"},
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
  EXPECT_EQ(written(Format::JSON, {}), "");
  EXPECT_EQ(written(Format::JSON, {{"1", nested, "two\nlines", true}}),
            "{\"a\": \"1\", \"b\": {\"x\":[1]}, \"c\": \"two\\nlines\", \"d\": true}\n");
}

TEST(RowStream, writesTheKeysOfCsvOnce) {
  Json::Value nested;
  nested["x"] = "y";
  EXPECT_EQ(written(Format::CSV, {{"1", nested, "a,b", ""}, {"2", "", "", ""}}),
            "a,b,c,d\n1,\"{\"\"x\"\":\"\"y\"\"}\",\"a,b\",\n2,,,\n");
}

TEST(RowStream, saysThatNobodyTakesTheRows) {
  std::ostringstream out;
  RowStream stream(out, Format::JSON, {{"a", "A"}}, {});
  out.setstate(std::ios::badbit);
  EXPECT_THROW(stream.write({"1"}), OutputError);
}

}  // namespace
}  // namespace zk::nms
