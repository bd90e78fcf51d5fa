// Layered termination-point names: the table, how a name is read against it,
// and what is left after a refusal.
#include <gtest/gtest.h>

#include "zk_quornex/names/nameparse.h"

namespace NS_QUORCORBA {
namespace {

using Values = std::map<std::string, unsigned long>;

constexpr unsigned int UNTOUCHED = 99;

struct Answer {
  bool accepted;
  unsigned int templateId;
  Values values;
};

Answer parse(const char* name, Values before = {}) {
  Answer answer{false, UNTOUCHED, std::move(before)};
  answer.accepted = ParseTPLayeredName(name, answer.values, answer.templateId);
  return answer;
}

struct Case {
  const char* name;
  unsigned int templateId;
  Values values;
};

void expectAnswer(const Case& c, bool accepted, const Values& before = {}) {
  const Answer answer = parse(c.name, before);
  EXPECT_EQ(answer.accepted, accepted) << c.name;
  EXPECT_EQ(answer.templateId, c.templateId) << c.name;
  EXPECT_EQ(answer.values, c.values) << c.name;
}

void expectAccepted(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    expectAnswer(c, true);
  }
}

void expectRefused(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    expectAnswer(c, false);
  }
}

TEST(TPTemplates, standInLookupOrder) {
  std::string rows;
  for (const TPNameTemplate& row : TP_NAME_TEMPLATES) {
    rows += std::to_string(row.id) + " " + row.text + " " + std::to_string(row.valueCount) + "\n";
  }
  EXPECT_EQ(rows,
            "1 %rack 1\n"
            "2 %rack%shelf 2\n"
            "3 %rack%shelf%slot 3\n"
            "4 %rack%shelf%slot%port 4\n"
            "5 %sts3c_au4%j 1\n"
            "6 %sts3c_au4%j%tu3_vc3%k 2\n"
            "7 %sts3c_au4%j%vt2_tu12%k%l%m 4\n"
            "10 %sts3c_au4 1\n"
            "9 %tu3_vc3 1\n"
            "8 %vt2_tu12 1\n"
            "11 %frequency%id 2\n"
            "12 %frequency%id%dsr 3\n"
            "13 %frequency%id%dsr_1 3\n"
            "14 %frequency%id%dsr_4 3\n"
            "15 %frequency%id%dsr_16 3\n"
            "16 %frequency%id%dsr_64 3\n"
            "17 %frequency%id%dsr_Gb 3\n"
            "18 %dsr 1\n"
            "19 %dsr_1 1\n"
            "20 %dsr_4 1\n"
            "21 %dsr_16 1\n"
            "22 %dsr_64 1\n"
            "23 %dsr_Gb 1\n");
}

TEST(ParseTPLayeredName, acceptsANameOfEveryRow) {
  expectAccepted({
      {"/rack=1", 1, {{"rack", 1}}},
      {"/rack=1/shelf=2", 2, {{"rack", 1}, {"shelf", 2}}},
      {"/rack=1/shelf=2/slot=3", 3, {{"rack", 1}, {"shelf", 2}, {"slot", 3}}},
      {"/rack=1/shelf=2/slot=3/port=4", 4, {{"rack", 1}, {"shelf", 2}, {"slot", 3}, {"port", 4}}},
      {"/sts3c_au4-j=64", 5, {{"j", 64}}},
      {"/sts3c_au4-j=1/tu3_vc3-k=3", 6, {{"j", 1}, {"k", 3}}},
      {"/sts3c_au4-j=1/vt2_tu12-k=3-l=7-m=3", 7, {{"j", 1}, {"k", 3}, {"l", 7}, {"m", 3}}},
      {"/sts3c_au4=1", 10, {{"sts3c_au4", 1}}},
      {"/tu3_vc3=1", 9, {{"tu3_vc3", 1}}},
      {"/vt2_tu12=1", 8, {{"vt2_tu12", 1}}},
      {"/frequency=191.35/id=2", 11, {{"frequency", 19135}, {"id", 2}}},
      {"/frequency=1/id=2/dsr=3", 12, {{"frequency", 100}, {"id", 2}, {"dsr", 3}}},
      {"/frequency=1/id=2/dsr_1=3", 13, {{"frequency", 100}, {"id", 2}, {"dsr_1", 3}}},
      {"/frequency=1/id=2/dsr_4=3", 14, {{"frequency", 100}, {"id", 2}, {"dsr_4", 3}}},
      {"/frequency=1/id=2/dsr_16=3", 15, {{"frequency", 100}, {"id", 2}, {"dsr_16", 3}}},
      {"/frequency=1/id=2/dsr_64=3", 16, {{"frequency", 100}, {"id", 2}, {"dsr_64", 3}}},
      {"/frequency=1/id=2/dsr_Gb=3", 17, {{"frequency", 100}, {"id", 2}, {"dsr_Gb", 3}}},
      {"/dsr=8", 18, {{"dsr", 8}}},
      {"/dsr_1=8", 19, {{"dsr_1", 8}}},
      {"/dsr_4=8", 20, {{"dsr_4", 8}}},
      {"/dsr_16=8", 21, {{"dsr_16", 8}}},
      {"/dsr_64=8", 22, {{"dsr_64", 8}}},
      {"/dsr_Gb=8", 23, {{"dsr_Gb", 8}}},
  });
}

TEST(ParseTPLayeredName, takesSlashAndHyphenAlike) {
  expectAccepted({
      {"/rack=1-shelf=2-slot=3-port=4", 4, {{"rack", 1}, {"shelf", 2}, {"slot", 3}, {"port", 4}}},
      {"/rack=1-shelf=2/slot=3", 3, {{"rack", 1}, {"shelf", 2}, {"slot", 3}}},
      {"/sts3c_au4/j=1", 5, {{"j", 1}}},
      {"/sts3c_au4/j=1-tu3_vc3/k=2", 6, {{"j", 1}, {"k", 2}}},
  });
}

TEST(ParseTPLayeredName, trimsBlanksAroundLayersItemsAndKeys) {
  expectAccepted({
      {"/ rack=1 ", 1, {{"rack", 1}}},
      {"/ rack = 1 / shelf = 2 ", 2, {{"rack", 1}, {"shelf", 2}}},
      {"/ sts3c_au4 - j = 1 ", 5, {{"j", 1}}},
      {"/frequency= 2.5/id=1", 11, {{"frequency", 250}, {"id", 1}}},
  });
}

TEST(ParseTPLayeredName, refusesBrokenLayersBeforeAnyValueIsKept) {
  for (const char* name : {"",
                           " ",
                           "rack=1",
                           " /rack=1",
                           "-rack=1",
                           "/",
                           "//",
                           "/ ",
                           "/-",
                           "//rack=1",
                           "/rack=1/",
                           "/rack=1-",
                           "/rack=1//shelf=2",
                           "/rack=1/ /shelf=2",
                           "/rack=1--shelf=2",
                           "/rack=1- -shelf=2",
                           "/rack=1/-shelf=2",
                           "/rack=1-/shelf=2",
                           "/-rack=1",
                           "/rack=1/=2",
                           "/rack=1/ =2",
                           "/=",
                           "/rack=1/shelf=-2/=",
                           "/rack=1/shelf=2/slot=3/port=4/"}) {
    const Answer answer = parse(name, {{"before", 5}});
    EXPECT_FALSE(answer.accepted) << name;
    EXPECT_EQ(answer.templateId, UNTOUCHED) << name;
    EXPECT_EQ(answer.values, (Values{{"before", 5}})) << name;
  }
}

TEST(ParseTPLayeredName, refusesNull) {
  const Answer answer = parse(nullptr, {{"before", 5}});
  EXPECT_FALSE(answer.accepted);
  EXPECT_EQ(answer.templateId, UNTOUCHED);
  EXPECT_EQ(answer.values, (Values{{"before", 5}}));
}

TEST(ParseTPLayeredName, keepsTheValuesBeforeABadOne) {
  expectRefused({
      {"/rack=1/shelf=x", UNTOUCHED, {{"rack", 1}}},
      {"/rack=1/shelf=2/slot=3x/port=4", UNTOUCHED, {{"rack", 1}, {"shelf", 2}}},
      {"/rack=1/shelf=+2", UNTOUCHED, {{"rack", 1}}},
      {"/rack=1/shelf=2.0", UNTOUCHED, {{"rack", 1}}},
      {"/rack=1/shelf=1 2", UNTOUCHED, {{"rack", 1}}},
      {"/rack=1/shelf=\t2", UNTOUCHED, {{"rack", 1}}},
      {"/rack=1/shelf=2=3", UNTOUCHED, {{"rack", 1}}},
      {"/rack=1/direction=both/shelf=2", UNTOUCHED, {{"rack", 1}}},
  });
}

TEST(ParseTPLayeredName, keepsTheValuesOfANameThatFitsNoRow) {
  expectRefused({
      {"/shelf=2", UNTOUCHED, {{"shelf", 2}}},
      {"/shelf=2/rack=1", UNTOUCHED, {{"rack", 1}, {"shelf", 2}}},
      {"/rack=1/shelf=2/slot=3/port=4/x=5",
       UNTOUCHED,
       {{"rack", 1}, {"shelf", 2}, {"slot", 3}, {"port", 4}, {"x", 5}}},
      {"/Rack=1", UNTOUCHED, {{"Rack", 1}}},
      {"/rack=1/SHELF=2", UNTOUCHED, {{"rack", 1}, {"SHELF", 2}}},
      {"/dsr_gb=1", UNTOUCHED, {{"dsr_gb", 1}}},
      {"/sts3c_au4=1-j=1", UNTOUCHED, {{"sts3c_au4", 1}, {"j", 1}}},
      {"/id=1/frequency=2", UNTOUCHED, {{"id", 1}, {"frequency", 200}}},
      {"/rack=-1", UNTOUCHED, {}},
      {"/x", UNTOUCHED, {}},
  });
}

TEST(ParseTPLayeredName, firstValueOfAKeyWins) {
  expectRefused({
      {"/rack=1/rack=2", UNTOUCHED, {{"rack", 1}}},
      {"/rack=0/rack=2", UNTOUCHED, {{"rack", 2}}},
      {"/frequency=1/frequency=2/id=1", UNTOUCHED, {{"frequency", 100}, {"id", 1}}},
  });
  expectAccepted({
      {"/rack=1/direction=src/direction=sink", 1, {{"rack", 1}, {"direction", 1}}},
  });
}

TEST(ParseTPLayeredName, neitherKeepsNorCountsAZero) {
  expectRefused({
      {"/rack=0", UNTOUCHED, {}},
      {"/rack=0/shelf=1", UNTOUCHED, {{"shelf", 1}}},
      {"/rack/shelf", UNTOUCHED, {}},
      {"/rack=", UNTOUCHED, {}},
      {"/rack=4294967296", UNTOUCHED, {}},
      {"/sts3c_au4", UNTOUCHED, {}},
      {"/sts3c_au4-j", UNTOUCHED, {}},
      {"/sts3c_au4-j=1/vt2_tu12-k=1-l=0-m=1", UNTOUCHED, {{"j", 1}, {"k", 1}, {"m", 1}}},
      {"/frequency=1/id=0", UNTOUCHED, {{"frequency", 100}}},
  });
  expectAccepted({
      {"/sts3c_au4=0-j=1", 5, {{"j", 1}}},
      {"/sts3c_au4=00/j=1", 5, {{"j", 1}}},
      {"/sts3c_au4= -j=1", 5, {{"j", 1}}},
      {"/sts3c_au4=1-j", 5, {{"sts3c_au4", 1}}},
      {"/sts3c_au4=1-j/tu3_vc3-k=1", 6, {{"sts3c_au4", 1}, {"k", 1}}},
  });
}

TEST(ParseTPLayeredName, readsNumbersThrough32Bits) {
  expectAccepted({
      {"/rack=4294967297", 1, {{"rack", 1}}},
      {"/rack=1/shelf=2147483648", 2, {{"rack", 1}, {"shelf", 18446744071562067968UL}}},
      {"/dsr=99999999999999999999", 18, {{"dsr", 18446744073709551615UL}}},
      {"/sts3c_au4-j=1/tu3_vc3-k=4294967299", 6, {{"j", 1}, {"k", 3}}},
  });
}

TEST(ParseTPLayeredName, comparesTheJoinedKeysAsOneText) {
  // A "%" inside a key is not told from the one that joins keys.
  expectAccepted({
      {"/sts3c_au4%j=1", 5, {{"sts3c_au4%j", 1}}},
      {"/sts3c_au4%j=1/tu3_vc3%k=9", 6, {{"sts3c_au4%j", 1}, {"tu3_vc3%k", 9}}},
  });
  expectRefused(
      {{"/rack%shelf=1", UNTOUCHED, {{"rack%shelf", 1}}}, {"/%rack=1", UNTOUCHED, {{"%rack", 1}}}});
}

TEST(ParseTPLayeredName, takesADirectionAnywhereWithoutCountingIt) {
  expectAccepted({
      {"/rack=1/shelf=2/slot=3/port=4/direction=sink",
       4,
       {{"rack", 1}, {"shelf", 2}, {"slot", 3}, {"port", 4}, {"direction", 2}}},
      {"/direction=src/rack=1", 1, {{"rack", 1}, {"direction", 1}}},
      {"/rack=1-direction=src-shelf=2", 2, {{"rack", 1}, {"shelf", 2}, {"direction", 1}}},
      {"/rack=1/ direction =sink ", 1, {{"rack", 1}, {"direction", 2}}},
      {"/dsr=1/direction=src", 18, {{"dsr", 1}, {"direction", 1}}},
  });
  expectRefused({{"/direction=src", UNTOUCHED, {{"direction", 1}}}});
}

TEST(ParseTPLayeredName, refusesOtherDirections) {
  for (const char* value : {"both", "Src", "SINK", "", " src", "srcx", "1", "2", "src=", "\tsrc"}) {
    const std::string name = std::string("/rack=1/direction=") + value;
    expectAnswer({name.c_str(), UNTOUCHED, {{"rack", 1}}}, false);
  }
  expectRefused({{"/rack=1/direction", UNTOUCHED, {{"rack", 1}}}});
  expectRefused({{"/rack=1/Direction=src", UNTOUCHED, {{"rack", 1}}}});
}

struct FrequencyCase {
  const char* text;
  unsigned long hundredths;
};

TEST(ParseTPLayeredName, keepsFrequenciesInHundredthsCutOff) {
  const FrequencyCase cases[] = {
      {"191.35", 19135},
      {"0.29", 28},
      {"192.1", 19210},
      {"1", 100},
      {"0.01", 1},
      {"0.019", 1},
      {"+5", 500},
      {" 2", 200},
      {"\t2", 200},
      {"2abc", 200},
      {"1e3", 100000},
      {"1E+3", 100000},
      {"0x10", 1600},
      {".5", 50},
      {"5.", 500},
      {"1e17", 10000000000000000000UL},
      {"1e16", 1000000000000000000UL},
  };
  for (const FrequencyCase& c : cases) {
    const std::string name = std::string("/frequency=") + c.text + "/id=1";
    expectAnswer({name.c_str(), 11, {{"frequency", c.hundredths}, {"id", 1}}}, true);
  }
}

TEST(ParseTPLayeredName, countsAFrequencyOfZeroAndRefusesIt) {
  for (const char* value : {"0", "", "abc", "0.009", "0.0", ".", "e5", "=5", "x1", "0e9"}) {
    const std::string name = std::string("/frequency=") + value + "/id=1";
    expectAnswer({name.c_str(), 11, {{"frequency", 0}, {"id", 1}}}, false);
  }
  expectRefused({{"/frequency/id=1", 11, {{"frequency", 0}, {"id", 1}}}});
  expectRefused({{"/frequency", UNTOUCHED, {{"frequency", 0}}}});
}

TEST(ParseTPLayeredName, cutsAFrequencyAtAMinusSign) {
  expectRefused({
      {"/frequency=-1/id=1", UNTOUCHED, {{"frequency", 0}, {"id", 1}}},
      {"/frequency=1e-2/id=1", UNTOUCHED, {{"frequency", 100}, {"id", 1}}},
  });
}

TEST(ParseTPLayeredName, takesAFrequencyBeyond64BitsWithoutUndefinedBehaviour) {
  for (const char* value :
       {"inf", "1e18", "1e300", "1e999", "INFINITY", "nan", "184467440737095516.16"}) {
    const Answer answer = parse((std::string("/frequency=") + value + "/id=1").c_str());
    EXPECT_EQ(answer.templateId, 11U) << value;
    EXPECT_EQ(answer.values.count("frequency"), 1U) << value;
    EXPECT_EQ(answer.accepted, answer.values.at("frequency") != 0) << value;
  }
}

TEST(ParseTPLayeredName, tellsTheTemplateAlsoWhenTheCheckRefuses) {
  expectRefused({
      {"/rack=2", 1, {{"rack", 2}}},
      {"/rack=2/shelf=1", 2, {{"rack", 2}, {"shelf", 1}}},
      {"/rack=2/shelf=1/slot=1", 3, {{"rack", 2}, {"shelf", 1}, {"slot", 1}}},
      {"/rack=2/shelf=1/slot=1/port=1", 4, {{"rack", 2}, {"shelf", 1}, {"slot", 1}, {"port", 1}}},
      {"/sts3c_au4=2-j", 5, {{"sts3c_au4", 2}}},
      {"/sts3c_au4-j=1/tu3_vc3-k=4", 6, {{"j", 1}, {"k", 4}}},
      {"/sts3c_au4-j=1/vt2_tu12-k=3-l=8-m=3", 7, {{"j", 1}, {"k", 3}, {"l", 8}, {"m", 3}}},
      {"/vt2_tu12=2", 8, {{"vt2_tu12", 2}}},
      {"/tu3_vc3=2", 9, {{"tu3_vc3", 2}}},
      {"/sts3c_au4=2", 10, {{"sts3c_au4", 2}}},
  });
}

TEST(ParseTPLayeredName, letsValuesThatAreThereTakePart) {
  expectAnswer({"/rack=1", 1, {{"rack", 1}, {"x", 0}}}, false, {{"x", 0}});
  expectAnswer({"/rack=1", 1, {{"rack", 1}, {"x", 7}}}, true, {{"x", 7}});
  expectAnswer({"/rack=1", 1, {{"rack", 2}}}, false, {{"rack", 2}});
  expectAnswer({"/rack=2", 1, {{"rack", 1}}}, true, {{"rack", 1}});
  expectAnswer({"/frequency=abc/id=1", 11, {{"frequency", 5}, {"id", 1}}}, true,
               {{"frequency", 5}});
  expectAnswer({"/dsr=1", 18, {{"dsr", 1}, {"k", 4}}}, false, {{"k", 4}});
  expectAnswer({"/rack=1", 1, {{"rack", 1}, {"direction", 9}}}, true, {{"direction", 9}});
  expectAnswer({"/dsr=1/direction=src", 18, {{"dsr", 1}, {"direction", 9}}}, false,
               {{"direction", 9}});
  // A value that is there does not replace a counted one.
  expectAnswer({"/rack/shelf=1", UNTOUCHED, {{"rack", 1}, {"shelf", 1}}}, false, {{"rack", 1}});
}

}  // namespace
}  // namespace NS_QUORCORBA
