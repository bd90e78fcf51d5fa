// The classifier of layered termination-point names: the template table, the
// reading of a name against it, and the rules its values obey.
#include <algorithm>
#include <clocale>
#include <cstdlib>

#include "zk_quornex/names/nameparse.h"

namespace NS_QUORCORBA {

// The three single-layer rows carry the ids 10, 9, 8 in that order, deliberately:
// an id is not its row's position.
const std::vector<TPNameTemplate> TP_NAME_TEMPLATES = {
    {1, "%rack", 1},
    {2, "%rack%shelf", 2},
    {3, "%rack%shelf%slot", 3},
    {4, "%rack%shelf%slot%port", 4},
    {5, "%sts3c_au4%j", 1},
    {6, "%sts3c_au4%j%tu3_vc3%k", 2},
    {7, "%sts3c_au4%j%vt2_tu12%k%l%m", 4},
    {10, "%sts3c_au4", 1},
    {9, "%tu3_vc3", 1},
    {8, "%vt2_tu12", 1},
    {11, "%frequency%id", 2},
    {12, "%frequency%id%dsr", 3},
    {13, "%frequency%id%dsr_1", 3},
    {14, "%frequency%id%dsr_4", 3},
    {15, "%frequency%id%dsr_16", 3},
    {16, "%frequency%id%dsr_64", 3},
    {17, "%frequency%id%dsr_Gb", 3},
    {18, "%dsr", 1},
    {19, "%dsr_1", 1},
    {20, "%dsr_4", 1},
    {21, "%dsr_16", 1},
    {22, "%dsr_64", 1},
    {23, "%dsr_Gb", 1},
};

namespace {

using Values = std::map<std::string, unsigned long>;

struct Item {
  std::string key;
  std::string value;
};

bool readItems(const char* name, std::vector<Item>& items) {
  std::vector<std::string> layers;
  if (name == nullptr || *name != '/' || !SplitByChar(name + 1, layers, '/')) {
    return false;
  }
  std::vector<std::string> texts;
  for (const std::string& layer : layers) {
    if (!SplitByChar(layer, texts, '-')) {
      return false;
    }
  }
  for (const std::string& text : texts) {
    Item item;
    if (!SplitNameValue(text, item.key, item.value)) {
      return false;
    }
    items.push_back(std::move(item));
  }
  return true;
}

// Truncates toward zero. What does not fit is given the value the processor's
// own conversion gives, since the language leaves it undefined.
unsigned long truncated(double number) {
  constexpr double TWO_TO_63 = 9223372036854775808.0;
  constexpr unsigned long NOT_REPRESENTABLE = 1UL << 63;
  if (number >= -TWO_TO_63 && number < TWO_TO_63) {
    return static_cast<unsigned long>(static_cast<long>(number));
  }
  if (number >= TWO_TO_63) {
    return number < 2 * TWO_TO_63 ? static_cast<unsigned long>(number) : 0;
  }
  return NOT_REPRESENTABLE;
}

// The name as it is matched against the templates.
struct Shape {
  std::string text;
  unsigned int valueCount = 0;

  void addKey(const std::string& key) {
    text += '%';
    text += key;
  }
};

bool readDirection(const Item& item, Values& values) {
  if (item.value == "src") {
    values.emplace(item.key, 1);
  } else if (item.value == "sink") {
    values.emplace(item.key, 2);
  } else {
    return false;
  }
  return true;
}

// As in the C locale, whatever the process's own has for a decimal point.
double toNumber(const std::string& text) {
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtod_l(text.c_str(), nullptr, cLocale);
}

// Kept in hundredths, and counted even when it is 0.
void readFrequency(const Item& item, Values& values, Shape& shape) {
  values.emplace(item.key, truncated(toNumber(item.value) * 100.0));
  ++shape.valueCount;
  shape.addKey(item.key);
}

// A key without a value, or with the value 0, shapes the name but is neither
// kept nor counted.
bool readNumber(const Item& item, Values& values, Shape& shape) {
  unsigned long number = 0;
  if (!item.value.empty() && !ParseID(item.value.c_str(), number)) {
    return false;
  }
  if (number != 0) {
    values.emplace(item.key, number);
    ++shape.valueCount;
  }
  shape.addKey(item.key);
  return true;
}

bool readValues(const std::vector<Item>& items, Values& values, Shape& shape) {
  for (const Item& item : items) {
    bool accepted = true;
    if (item.key == "direction") {
      accepted = readDirection(item, values);
    } else if (item.key == "frequency") {
      readFrequency(item, values, shape);
    } else {
      accepted = readNumber(item, values, shape);
    }
    if (!accepted) {
      return false;
    }
  }
  return true;
}

const TPNameTemplate* findTemplate(const Shape& shape) {
  for (const TPNameTemplate& row : TP_NAME_TEMPLATES) {
    if (row.text == shape.text && row.valueCount == shape.valueCount) {
      return &row;
    }
  }
  return nullptr;
}

bool isDirection(unsigned long value) { return value == 1 || value == 2; }

bool equipmentValue(const std::string& key, unsigned long value) {
  return key == "rack" ? value == 1 : value != 0;
}

bool portValue(const std::string& key, unsigned long value) {
  return key == "direction" ? isDirection(value) : equipmentValue(key, value);
}

// k, l and m number a TU-12 inside a VC-4: three TUG-3s, of seven TUG-2s, of
// three TU-12s.
bool layerValue(const std::string& key, unsigned long value) {
  if (key == "direction") {
    return isDirection(value);
  }
  if (value == 0) {
    return false;
  }
  if (key == "k" || key == "m") {
    return value <= 3;
  }
  if (key == "l") {
    return value <= 7;
  }
  const bool single = key == "sts3c_au4" || key == "tu3_vc3" || key == "vt2_tu12";
  return !single || value == 1;
}

using ValueRule = bool (*)(const std::string&, unsigned long);

ValueRule ruleOf(unsigned int templateId) {
  if (templateId >= 1 && templateId <= 3) {
    return equipmentValue;
  }
  if (templateId == 4) {
    return portValue;
  }
  return templateId >= 5 && templateId <= 23 ? layerValue : nullptr;
}

}  // namespace

bool ParseTPLayeredName(const char* name, std::map<std::string, unsigned long>& values,
                        unsigned int& templateId) {
  std::vector<Item> items;
  Shape shape;
  if (!readItems(name, items) || !readValues(items, values, shape)) {
    return false;
  }
  const TPNameTemplate* found = findTemplate(shape);
  if (found == nullptr) {
    return false;
  }
  templateId = static_cast<unsigned int>(found->id);
  return CheckTPValues(values, templateId);
}

bool CheckTPValues(const std::map<std::string, unsigned long>& values, unsigned int templateId) {
  const ValueRule rule = ruleOf(templateId);
  return rule == nullptr || std::all_of(values.begin(), values.end(), [rule](const auto& entry) {
           return rule(entry.first, entry.second);
         });
}

}  // namespace NS_QUORCORBA
