// Values and their conversions, told in text files; values stand there as support/Literals.h tells.

#include <cstdlib>
#include <map>

#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "data/value/Value.h"
#include "support/Literals.h"
#include "support/Verbs.h"

namespace tavoline {
namespace {

using test::takeWord;
using test::told;
using test::valueOf;

using Words = std::vector<std::string>;

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
std::string moment(const Words& parts) {
  int part[7] = {};
  for (std::size_t i = 0; i < parts.size(); ++i) part[i] = std::stoi(parts[i]);
  const DateTime made = DateTime::of(part[0], part[1], part[2], part[3], part[4], part[5], part[6]);
  const bool same = made == DateTime::of(made.year(), made.month(), made.day(), made.hour(), made.minute(),
                                         made.second(), made.milli()) &&
                    made.date().millis() + made.time().millis() == made.millis() &&
                    DateTime::fromStored(made.stored()) == made;
  return made.stored() + " is " + std::to_string(made.millis()) + (made.hasDate() ? ", a date" : "") +
         (made.hasTime() ? ", a time" : "") + (same ? "" : ", but not its parts");
}

std::string compared(const Value& a, const Value& b) {
  const std::partial_ordering order = a <=> b;
  const bool agree = (b < a) == (order > 0) && (b >= a) == (order <= 0) && (a == b) == (order == 0) &&
                     (a < b) == (order < 0) && (b <=> a) == (0 <=> order);
  const char* const told = order < 0 ? "less" : order > 0 ? "greater" : order == 0 ? "equal" : "neither";
  return agree ? told : "the comparisons disagree";
}

class Values {
 public:
  explicit Values(test::Transcript& script) : script_(script) {}

  using Result = std::function<std::string(const std::string& subject, const Words& arguments)>;
  static std::function<void(Values&, std::string&)> saying(const Result& result) {
    return [result](Values& values, std::string& arguments) {
      values.script_.say(result(values.subject, test::words(arguments)));
    };
  }
  using Operation = Value (*)(const Value&, const Value&);
  static auto calculating(Operation operation) {
    return saying([operation](const std::string& a, const Words& b) {
      return told(operation(valueOf(a), valueOf(b.at(0))));
    });
  }
  void refused(std::string& arguments) {
    const std::string kind = takeWord(arguments);
    bool all = true;
    for (const std::string& text : test::words(arguments)) try {
        kind == "date"    ? void(readDateTime(text))
        : kind == "whole" ? void(readInteger(text))
                          : void(readFloat(text));
        script_.say(text + " is read");
        all = false;
      } catch (const ConversionError&) {
      }
    if (all) script_.say("all");
  }
  void system(std::string& arguments) {
    const std::string variable = takeWord(arguments);
    script_.say(around_.system(variable, arguments));
  }
  void locale(std::string& arguments) {
    const std::string mark = takeWord(arguments), separator = takeWord(arguments),
                      order = takeWord(arguments);
    using Order = RegionalFormat::DateOrder;
    RegionalFormat::set({mark, separator[0],
                         order == "mdy"   ? Order::MonthDayYear
                         : order == "ymd" ? Order::YearMonthDay
                                          : Order::DayMonthYear,
                         arguments});
  }

  std::string subject;

 private:
  test::Transcript& script_;
  const Surroundings around_;
};

const test::Verbs<Values> kVerbs(
    "values",
    {{"A + B", "the sum of two values", Values::calculating(operator+)},
     {"A - B", "their difference", Values::calculating(operator-)},
     {"A * B", "their product", Values::calculating(operator*)},
     {"A / B", "their quotient", Values::calculating(operator/)},
     {"A ? B", "how they compare, by every operator",
      Values::saying([](auto& a, auto& b) { return compared(valueOf(a), valueOf(b.at(0))); })},
     {"A as KIND", "the value in a column of this kind",
      Values::saying([](auto& a, auto& b) { return told(valueOf(a).as(kKinds.at(b.at(0)))); })},
     {"A names B", "whether two names are the same",
      Values::saying([](auto& a, auto& b) { return sameName(a, b.at(0)) ? "yes" : "no"; })},
     {"TEXT like PATTERN", "whether the text matches",
      Values::saying([](auto& a, auto& b) { return matchesLike(a, b.at(0)) ? "yes" : "no"; })},
     {"shown FLOAT", "a float as the screens show it, and read back", Values::saying([](auto&, auto& b) {
        const std::string text = formatFloat(std::stod(b.at(0)));
        return text + " and back " + formatFloat(readFloat(text));
      })},
     {"format PATTERN FLOAT", "a float by a display format",
      Values::saying([](auto&, auto& b) { return '"' + formatPattern(b.at(0), std::stod(b.at(1))) + '"'; })},
     {"number TEXT", "the number read from a text",
      Values::saying([](auto&, auto& b) { return told(readFloat(b.at(0))); })},
     {"whole TEXT", "the whole number read from a text",
      Values::saying([](auto&, auto& b) { return told(readInteger(b.at(0))); })},
     {"refused KIND TEXT...", "which of these texts are read as a number, whole or date, against expectation",
      &Values::refused},
     {"regional TEXT", "the number in a text that must have the regional mark",
      Values::saying([](auto&, auto& b) { return told(readFloat(b.at(0), DecimalMark::RegionalOnly)); })},
     {"date TEXT", "the date read from a text",
      Values::saying([](auto&, auto& b) { return readDateTime(b.at(0)).stored(); })},
     {"day DATE", "a date without its time, as the screens show it",
      Values::saying([](auto&, auto& b) { return formatDate(valueOf(b.at(0)).toDateTime()); })},
     {"kept TEXT", "the date in the store's form of one", Values::saying([](auto&, auto& b) {
        return DateTime::fromStored(b.at(0)) ? told(*DateTime::fromStored(b.at(0))) : "none";
      })},
     {"of YEAR MONTH DAY [HOUR MINUTE SECOND MILLI]",
      "that moment in the store's form, its distance from the zero day, what it has",
      Values::saying([](auto&, auto& b) { return moment(b); })},
     {"locale MARK SEPARATOR ORDER [GROUPING]", "sets the regional format: dmy, mdy or ymd", &Values::locale},
     {"system VARIABLE LOCALE", "the format of a system where this variable alone names a locale",
      &Values::system},
     {"folded TEXT", "a text without regard to case",
      Values::saying([](auto&, auto& b) { return foldCase(b.at(0)); })},
     {"plain NAME", "a name without regard to case",
      Values::saying([](auto&, auto& b) { return foldName(b.at(0)); })},
     {"quoted TEXT", "a text in the quotes of a statement",
      Values::saying([](auto&, auto& b) { return inQuotes(b.at(0)); })},
     {"characters TEXT", "how many it has",
      Values::saying([](auto&, auto& b) { return std::to_string(characterCount(b.at(0))); })}});
[[maybe_unused]] const bool known = kVerbs.registerTranscripts(TAVOLINE_CASES);

}  // namespace
}  // namespace tavoline
