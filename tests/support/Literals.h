#pragma once

#include <string>

#include "data/store/Store.h"

namespace tavoline::test {

/// A value as transcripts write it: null, a whole number (12), a float (2.5), a text ('x'), a date
/// (@2024-05-01 or @2024-05-01T10:00) or bytes by their digits (&41FF).
Value valueOf(std::string word);
/// A value with its kind, as transcripts say it: "whole 12".
std::string told(const Value& value);
/// The values of one row with bars between them.
std::string joined(const std::vector<Value>& row);
/// What words of the form FIELD=VALUE give.
FieldValues fieldsIn(const std::string& words);

}  // namespace tavoline::test
