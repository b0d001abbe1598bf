#include "support/Literals.h"

#include <algorithm>

#include "data/value/Regional.h"
#include "support/Transcript.h"

namespace tavoline::test {

Value valueOf(std::string word) {
  if (word == "null") return {};
  if (word[0] == '\'') return word.substr(1, word.size() - 2);
  if (word[0] == '&') {
    Bytes bytes;
    for (std::size_t at = 1; at < word.size(); at += 2)
      bytes.push_back(static_cast<std::uint8_t>(std::stoi(word.substr(at, 2), nullptr, 16)));
    return std::make_shared<const Bytes>(bytes);
  }
  if (word[0] == '@') {
    std::replace(word.begin(), word.end(), 'T', ' ');
    return readDateTime(word.substr(1));
  }
  if (word.find_first_of(".e") != std::string::npos) return std::stod(word);
  return std::int64_t{std::stoll(word)};
}

std::string told(const Value& value) {
  if (value.isNull()) return "null";
  if (value.isInteger()) return "whole " + value.text();
  if (value.isFloat()) return "float " + value.text();
  if (value.isDateTime()) {
    const int milli = value.toDateTime().milli();
    return "date " + value.text() + (milli ? " and " + std::to_string(milli) + " ms" : "");
  }
  if (!value.isBytes()) return "text " + value.text();
  std::string digits;
  for (const std::uint8_t byte : *value.toBytes())
    for (const int digit : {byte / 16, byte % 16}) digits += "0123456789ABCDEF"[digit];
  return "bytes " + digits;
}

std::string joined(const std::vector<Value>& row) {
  std::string line;
  for (const Value& value : row) line += (&value == &row[0] ? "" : "|") + value.text();
  return line;
}

FieldValues fieldsIn(const std::string& assignments) {
  FieldValues fields;
  for (const std::string& word : words(assignments)) {
    const auto equals = word.find('=');
    fields.emplace_back(word.substr(0, equals), valueOf(word.substr(equals + 1)));
  }
  return fields;
}

}  // namespace tavoline::test
