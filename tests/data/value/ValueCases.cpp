// Values and their conversions, told in text files. A value is null, a whole number (12), a float (2.5), a
// text ('x'), a date (@2024-05-01 or @2024-05-01T10:00) or bytes (&AB). A step is one of these:
//
//     A + B, also - * /          arithmetic
//     A ? B                      comparison
//     A as KIND                  the value in a column of this kind
//     shown FLOAT                a float as the screens show it, and read back
//     format PATTERN FLOAT       by a display format
//     number TEXT, whole TEXT, date TEXT
//                                what is read from a text; "..." where it has blanks
//     stored TEXT                a date in the store's form
//     TEXT like PATTERN, fold TEXT, count TEXT

#include <map>
#include <sstream>

#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "data/value/Value.h"
#include "support/Transcript.h"

namespace tavoline {
namespace {

using test::takeWord;

const std::map<std::string, FieldType> kKinds = {{"whole", FieldType::Integer},
                                                 {"float", FieldType::Float},
                                                 {"text", FieldType::Text},
                                                 {"date", FieldType::DateTime},
                                                 {"bytes", FieldType::Blob}};

Value valueOf(std::string word) {
  if (word == "null") return {};
  if (word[0] == '\'') return word.substr(1, word.size() - 2);
  if (word[0] == '&') return std::make_shared<const Bytes>(word.begin() + 1, word.end());
  if (word[0] == '@') {
    std::replace(word.begin(), word.end(), 'T', ' ');
    return readDateTime(word.substr(1));
  }
  if (word.find_first_of(".e") != std::string::npos) return std::stod(word);
  return std::int64_t{std::stoll(word)};
}

std::string told(const Value& value) {
  if (value.isNull()) return "null";
  if (value.isBytes()) return "bytes " + std::string(value.toBytes()->begin(), value.toBytes()->end());
  const char* kind = value.isInteger()    ? "whole "
                     : value.isFloat()    ? "float "
                     : value.isDateTime() ? "date "
                                          : "text ";
  return kind + value.text();
}

std::string compared(const Value& a, const Value& b) {
  const std::partial_ordering order = a <=> b;
  const bool agree = (b < a) == (order > 0) && (b >= a) == (order <= 0) && (a == b) == (order == 0) &&
                     (a < b) == (order < 0) && (b <=> a) == (0 <=> order);
  const char* const told = order < 0 ? "less" : order > 0 ? "greater" : order == 0 ? "equal" : "neither";
  return agree ? told : "the comparisons disagree";
}

std::string result(const std::string& a, const std::string& sign, const std::string& b) {
  if (sign == "like") return matchesLike(a, b) ? "yes" : "no";
  const Value left = valueOf(a);
  if (sign == "as") return told(left.as(kKinds.at(b)));
  const Value right = valueOf(b);
  if (sign == "?") return compared(left, right);
  if (sign == "+") return told(left + right);
  if (sign == "-") return told(left - right);
  if (sign == "*") return told(left * right);
  if (sign == "/") return told(left / right);
  throw std::runtime_error("no step looks so");
}

std::string perform(std::string step) {
  std::string first = takeWord(step), rest = step;
  const std::string word = takeWord(rest);
  if (first == "shown")
    return formatFloat(std::stod(word)) + " and back " + formatFloat(readFloat(formatFloat(std::stod(word))));
  if (first == "format") return '"' + formatPattern(word, std::stod(takeWord(rest))) + '"';
  if (first == "number") return told(readFloat(word));
  if (first == "whole") return told(readInteger(word));
  if (first == "date") return readDateTime(word).stored();
  if (first == "stored") return DateTime::fromStored(word) ? told(*DateTime::fromStored(word)) : "none";
  if (first == "fold") return foldCase(word);
  if (first == "count") return std::to_string(characterCount(word));
  return result(first, word, takeWord(rest));
}

[[maybe_unused]] const bool known = test::registerTranscripts(TAVOLINE_CASES, [](test::Transcript& script) {
  while (script.next()) script.attempt([&] { script.say(perform(script.step())); });
});

}  // namespace
}  // namespace tavoline
