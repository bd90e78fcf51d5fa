// The text-level parsing behind the names: identifiers, key=value paths, number
// lists, and the layered names of termination points. Free functions without
// state; any thread may call them at once. Internal: nothing here is exported.
//
// Except where noted, the result is whether the text was accepted. Nothing
// throws on bad input. After a refusal an out-argument may hold partial results
// and must not be read.
#ifndef ZK_NAMES_NAMEPARSE_H
#define ZK_NAMES_NAMEPARSE_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace NS_QUORCORBA {

// Trims spaces (only those) from both ends, in place, and says whether anything
// is left that is, with digitsOnly, made of the digits 0 to 9 alone.
bool TrimAndCheck(std::string& text, bool digitsOnly);

// Whether text is a non-empty run of decimal digits after trimming.
bool IsNumeric(const char* text);

// Reads a decimal identifier. It goes through a signed 32-bit value that is
// widened with its sign, because that is how wide the EMS's identifiers are:
// "4294967297" gives 1. value is untouched after a refusal.
bool ParseID(const char* text, unsigned long& value);

// Copies text, untrimmed, when it is neither null nor empty; else leaves out.
bool AssignNonEmpty(const char* text, std::string& out);

// Appends the trimmed pieces between separators to pieces. An empty piece,
// also one after a separator at the very end, is refused.
bool SplitByChar(const std::string& text, std::vector<std::string>& pieces, char separator);

// Splits an item at its first "=". The key is trimmed and must not be empty;
// the value stays as it is, and is empty where there is no "=".
bool SplitNameValue(const std::string& item, std::string& key, std::string& value);

// Reads "/key=value/key=value". Pairs are added to those already there; the
// first value of a key wins.
bool ParseNameValuePath(const char* path, std::map<std::string, std::string>& pairs);

// Reads a layered termination-point name, such as "/rack=1/shelf=2/slot=3" or
// "/sts3c_au4-j=1", and says which template it follows. Values are added to
// those already there, which then count in the check; the first value of a key
// wins. templateId is set before the values are checked.
bool ParseTPLayeredName(const char* name, std::map<std::string, unsigned long>& values,
                        unsigned int& templateId);

// Whether the values obey the rules of the template; an id without rules
// accepts anything.
bool CheckTPValues(const std::map<std::string, unsigned long>& values, unsigned int templateId);

// Reads numbers separated by "/", each as ParseID does. numbers is cleared first,
// except for a null or empty text.
bool ParseNumberPath(const char* text, std::vector<unsigned long>& numbers);

// Reads signed 64-bit numbers separated by any run of delimiters, cutting text
// up in place. numbers is cleared first; a refused number is still in it. A
// text without numbers is accepted.
bool SplitNumbers(char* text, std::vector<long>& numbers, const char* delimiters);

// Reads "name(number)".
bool ParseIndexedName(const char* text, std::string& name, unsigned long& index);

// The decimal number in text, or 4294967295 when it is none. A null text is
// also reported as a failed assertion.
long ParseNumberOrInvalid(const char* text);

// One kind of layered termination-point name.
struct TPNameTemplate {
  std::int32_t id;          // what ParseTPLayeredName reports
  std::string text;         // "%" and each key, in the name's order
  std::uint8_t valueCount;  // how many keys carry a counted value
};

// In lookup order. Built while the library is loaded, never changed.
extern const std::vector<TPNameTemplate> TP_NAME_TEMPLATES;

}  // namespace NS_QUORCORBA

#endif
