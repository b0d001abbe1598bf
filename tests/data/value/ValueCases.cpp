// Values and their conversions, told in text files: see support/Literals.h. A step is one of these:
//
//     A + B, also - * /          arithmetic
//     A ? B                      comparison
//     A as KIND                  the value in a column of this kind
//     shown FLOAT                a float as the screens show it, and read back
//     format PATTERN FLOAT       by a display format
//     number TEXT, whole TEXT, date TEXT
//                                what is read from a text; "..." where it has blanks
//     regional TEXT              the number in a text that must have the regional mark
//     day DATE                   a date without its time, as the screens show it
//     stored TEXT                a date in the store's form
//     of YEAR MONTH DAY [HOUR [MINUTE [SECOND [MILLI]]]]
//                                that moment in the store's form, its distance from the zero day, what it has
//     set MARK SEPARATOR ORDER   the regional format from now on
//     system VARIABLE LOCALE     that of the system if a variable names a locale, and no other does
//     TEXT like PATTERN, fold TEXT, count TEXT
//     A names B, plain TEXT, quoted TEXT
//                                names that are the same, a name folded, a text in quotes

#include <cstdlib>
#include <map>
#include <sstream>

#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "data/value/Value.h"
#include "support/Literals.h"
#include "support/Transcript.h"

namespace tavoline {
namespace {

using test::takeWord;
using test::told;
using test::valueOf;

const std::map<std::string, FieldType> kKinds = {{"whole", FieldType::Integer},
                                                 {"float", FieldType::Float},
                                                 {"text", FieldType::Text},
                                                 {"date", FieldType::DateTime},
                                                 {"bytes", FieldType::Blob}};

/// The regional format and the system's variables as they were, once a case is through.
class Surroundings {
 public:
  ~Surroundings() {
    RegionalFormat::set(format_);
    for (const auto& [name, value] : variables_)
      value.empty() ? unsetenv(name) : setenv(name, value.c_str(), 1);
  }
  std::string system(const std::string& variable, const std::string& locale) const {
    for (const auto& [name, value] : variables_) unsetenv(name);
    setenv(variable.c_str(), locale.c_str(), 1);
    RegionalFormat::set(RegionalFormat::ofSystem());
    return formatFloat(12.5) + " on " + formatDate(DateTime::of(2024, 5, 1));
  }

 private:
  static std::string valueOf(const char* name) { return std::getenv(name) ? std::getenv(name) : ""; }

  const RegionalFormat format_ = RegionalFormat::current();
  std::map<const char*, std::string> variables_ = {{"LC_ALL", valueOf("LC_ALL")},
                                                   {"LC_NUMERIC", valueOf("LC_NUMERIC")},
                                                   {"LC_TIME", valueOf("LC_TIME")},
                                                   {"LANG", valueOf("LANG")}};
};

/// A moment by its parts, which have to make it up again.
std::string moment(const std::string& parts) {
  int part[7] = {};
  std::istringstream in(parts);
  for (int& each : part) in >> each;
  const DateTime made = DateTime::of(part[0], part[1], part[2], part[3], part[4], part[5], part[6]);
  const bool same = made == DateTime::of(made.year(), made.month(), made.day(), made.hour(), made.minute(),
                                         made.second(), made.milli()) &&
                    made.date().millis() + made.time().millis() == made.millis() &&
                    DateTime::fromStored(made.stored()) == made;
  return made.stored() + " is " + std::to_string(made.millis()) + (made.hasDate() ? ", a date" : "") +
         (made.hasTime() ? ", a time" : "") + (same ? "" : ", but not its parts");
}

void setFormat(std::string step) {
  const std::string mark = takeWord(step), separator = takeWord(step);
  using Order = RegionalFormat::DateOrder;
  RegionalFormat::set({mark, separator[0],
                       step == "mdy"   ? Order::MonthDayYear
                       : step == "ymd" ? Order::YearMonthDay
                                       : Order::DayMonthYear});
}

std::string compared(const Value& a, const Value& b) {
  const std::partial_ordering order = a <=> b;
  const bool agree = (b < a) == (order > 0) && (b >= a) == (order <= 0) && (a == b) == (order == 0) &&
                     (a < b) == (order < 0) && (b <=> a) == (0 <=> order);
  const char* const told = order < 0 ? "less" : order > 0 ? "greater" : order == 0 ? "equal" : "neither";
  return agree ? told : "the comparisons disagree";
}

std::string result(const std::string& a, const std::string& sign, const std::string& b) {
  if (sign == "names") return sameName(a, b) ? "yes" : "no";
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

std::string perform(std::string step, const Surroundings& around) {
  std::string first = takeWord(step), rest = step;
  const std::string word = takeWord(rest);
  if (first == "shown")
    return formatFloat(std::stod(word)) + " and back " + formatFloat(readFloat(formatFloat(std::stod(word))));
  if (first == "format") return '"' + formatPattern(word, std::stod(takeWord(rest))) + '"';
  if (first == "number") return told(readFloat(word));
  if (first == "whole") return told(readInteger(word));
  if (first == "date") return readDateTime(word).stored();
  if (first == "stored") return DateTime::fromStored(word) ? told(*DateTime::fromStored(word)) : "none";
  if (first == "day") return formatDate(valueOf(word).toDateTime());
  if (first == "of") return moment(step);
  if (first == "set") return setFormat(step), "";
  if (first == "system") return around.system(word, takeWord(rest));
  if (first == "regional") return told(readFloat(word, DecimalMark::RegionalOnly));
  if (first == "plain") return foldName(word);
  if (first == "quoted") return inQuotes(word);
  if (first == "fold") return foldCase(word);
  if (first == "count") return std::to_string(characterCount(word));
  return result(first, word, takeWord(rest));
}

[[maybe_unused]] const bool known = test::registerTranscripts(TAVOLINE_CASES, [](test::Transcript& script) {
  const Surroundings around;
  while (script.next()) script.attempt([&] { script.say(perform(script.step(), around)); });
});

}  // namespace
}  // namespace tavoline
