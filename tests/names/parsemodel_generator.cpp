#include "tests/names/parsemodel_generator.h"

namespace zk::test::model {

namespace {

using Keys = std::vector<std::string>;

const Keys SHAPES[] = {
    {"rack"},
    {"rack", "shelf"},
    {"rack", "shelf", "slot"},
    {"rack", "shelf", "slot", "port"},
    {"sts3c_au4", "j"},
    {"sts3c_au4", "j", "tu3_vc3", "k"},
    {"sts3c_au4", "j", "vt2_tu12", "k", "l", "m"},
    {"sts3c_au4"},
    {"tu3_vc3"},
    {"vt2_tu12"},
    {"frequency", "id"},
    {"frequency", "id", "dsr"},
    {"frequency", "id", "dsr_1"},
    {"frequency", "id", "dsr_4"},
    {"frequency", "id", "dsr_16"},
    {"frequency", "id", "dsr_64"},
    {"frequency", "id", "dsr_Gb"},
    {"dsr"},
    {"dsr_1"},
    {"dsr_4"},
    {"dsr_16"},
    {"dsr_64"},
    {"dsr_Gb"},
};

// Layers whose key stands alone in a name that goes on beneath them.
bool isBare(const Keys& shape, std::size_t at) {
  const std::string& key = shape[at];
  return at + 1 < shape.size() && (key == "sts3c_au4" || key == "tu3_vc3" || key == "vt2_tu12");
}

const char* const KEYS[] = {"rack", "shelf", "slot",     "port",   "sts3c_au4", "j",
                            "k",    "l",     "m",        "id",     "frequency", "direction",
                            "dsr",  "dsr_4", "dsr_Gb",   "Rack",   "x",         "%rack",
                            "",     "a b",   "vt2_tu12", "tu3_vc3"};

const char* const NUMBERS[] = {"0",
                               "00",
                               "1",
                               "2",
                               "3",
                               "4",
                               "7",
                               "8",
                               "2147483647",
                               "2147483648",
                               "4294967295",
                               "4294967296",
                               "4294967297",
                               "4294967299",
                               "9223372036854775807",
                               "9223372036854775808",
                               "99999999999999999999",
                               "-1",
                               "+1",
                               "1.5",
                               "x",
                               "",
                               " ",
                               "\t1",
                               "1 2",
                               "12a",
                               "0x10",
                               "00000000000000000000000000001"};

const char* const FREQUENCIES[] = {"191.35", "0.29",  "0.01", "0.009", "192.1",   "1e3",
                                   "1e17",   "1e18",  "inf",  "nan",   "0x1p3",   "abc",
                                   ".5",     "5.",    "+5",   " 2",    "\t2",     "2abc",
                                   "1e400",  "0e999", "",     "0",     "0.00001", "193.1e+2"};

constexpr char CHARACTERS[] = "/-=% \t0123456789kxjlmrackdsr_().,+e";

}  // namespace

std::string Generator::blanks() { return oneIn(20) ? std::string(1 + below(2), ' ') : ""; }

std::string Generator::number() {
  if (oneIn(4)) {
    return oneOf(NUMBERS);
  }
  return std::to_string(1 + (oneIn(2) ? below(3) : below(9)));
}

std::string Generator::frequency() {
  if (oneIn(2)) {
    return oneOf(FREQUENCIES);
  }
  std::string text = std::to_string(below(400)) + ".";
  return text += std::to_string(below(1000));
}

std::string Generator::item(const std::string& key) {
  std::string text = blanks();
  text += key;
  text += blanks();
  text += "=";
  const bool plain = key == "rack" || key == "sts3c_au4" || key == "tu3_vc3" || key == "vt2_tu12";
  if (key == "frequency") {
    text += frequency();
  } else if (key == "direction") {
    text += oneIn(5) ? "both" : oneIn(2) ? "src" : "sink";
  } else {
    text += plain && !oneIn(5) ? "1" : number();
  }
  return text += blanks();
}

std::string Generator::layeredName() {
  const Keys& shape = SHAPES[below(std::size(SHAPES))];
  std::string name;
  for (std::size_t at = 0; at < shape.size(); ++at) {
    name += at == 0 || oneIn(2) ? '/' : '-';
    name += isBare(shape, at) && !oneIn(10) ? shape[at] : item(shape[at]);
    while (oneIn(8)) {
      name += oneCharacterOf("/-");
      name += item(oneIn(2) ? "direction" : oneOf(KEYS));
    }
  }
  return oneIn(3) ? damaged(name) : name;
}

std::string Generator::keyValuePath() {
  std::string path;
  do {
    path += '/';
    path += item(oneIn(2) ? "id" : oneIn(2) ? "parentid" : oneOf(KEYS));
  } while (!oneIn(3));
  return oneIn(3) ? damaged(path) : path;
}

std::string Generator::numberList() {
  std::string list;
  if (oneIn(5)) {
    list += oneCharacterOf("/.,");
  }
  list += number();
  while (!oneIn(4)) {
    list += oneIn(6) ? oneCharacterOf(".,") : '/';
    list += blanks();
    list += number();
    list += blanks();
  }
  return oneIn(3) ? damaged(list) : list;
}

std::string Generator::indexedName() {
  std::string text = blanks();
  text += oneOf(KEYS);
  text += '(';
  text += blanks();
  text += number();
  text += ')';
  return oneIn(3) ? damaged(text) : text;
}

Values Generator::valuesBefore() {
  Values values;
  while (oneIn(3)) {
    const std::string key = oneOf(KEYS);
    values[key] = below(5);
  }
  return values;
}

Pairs Generator::pairsBefore() {
  Pairs pairs;
  while (oneIn(3)) {
    const std::string key = oneOf(KEYS);
    pairs[key] = number();
  }
  return pairs;
}

// One to four characters put in, taken out, replaced or doubled.
std::string Generator::damaged(std::string text) {
  do {
    const std::size_t at = below(text.size() + 1);
    const char c = CHARACTERS[below(sizeof(CHARACTERS) - 1)];
    switch (below(4)) {
      case 0:
        text.insert(at, 1, c);
        break;
      case 1:
        text.erase(at, 1);
        break;
      case 2:
        text.replace(at, 1, 1, c);
        break;
      default:
        text.insert(at, text.substr(at, 1 + below(8)));
    }
  } while (oneIn(2));
  return text;
}

}  // namespace zk::test::model
