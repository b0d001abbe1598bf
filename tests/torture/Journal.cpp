#include "torture/Journal.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "data/value/Errors.h"

namespace tavoline::test {
namespace {

// Records are lines of fields between two characters that no text of a restaurant holds.
constexpr char kField = '\x1f', kLine = '\n';
// How they begin.
constexpr const char *kAsked = "?", *kDone = "!", *kRefused = "-";

std::string literal(const Value& value) {
  if (value.isNull()) return "NULL";
  if (value.isInteger()) return std::to_string(value.toInteger());
  if (value.isFloat()) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, value.toFloat()).ptr;
    return "CAST('" + std::string(text, end) + "' AS REAL)";
  }
  const std::string text = value.isDateTime() ? value.toDateTime().stored() : value.text();
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
  return quoted + "'";
}

constexpr const char* kNames[] = {"insert", "update", "erase"};  // of the kinds of a write

Write::Kind kindOf(const std::string& name) {
  const auto found = std::find(std::begin(kNames), std::end(kNames), name);
  if (found == std::end(kNames)) throw std::runtime_error("no write is called " + name);
  return static_cast<Write::Kind>(found - std::begin(kNames));
}

std::vector<std::string> split(const std::string& line) {
  std::vector<std::string> parts;
  std::istringstream in(line);
  for (std::string part; std::getline(in, part, kField);) parts.push_back(part);
  return parts;
}

// One call for one line: a pipe takes so few bytes whole.
void send(int pipe, const std::string& line) {
  if (::write(pipe, line.data(), line.size()) != static_cast<ssize_t>(line.size())) ::_exit(1);
}

}  // namespace

std::string Journal::literals(const Request& request) const {
  std::string line;
  const TableInfo* info = catalog().find(request.table);
  for (const auto& [name, value] : request.fields) {
    const ColumnInfo* column = info ? info->find(name) : nullptr;
    if (!column) throw std::runtime_error("no column " + request.table + '.' + name);
    line += kField + column->name + kField + literal(value.as(column->type));
  }
  return line;
}

void Journal::passWrite(const Request& request, const std::function<RowId()>& pass) {
  if (request.kind == Request::Execute) throw std::logic_error("the journal knows rows, not statements");
  const auto tell = [this](const char* how, const std::string& what) {
    send(pipe_, how + (kField + what) + kLine);
  };
  tell(kAsked, kNames[request.kind] + (kField + request.table) + kField + std::to_string(request.row) +
                   literals(request));
  try {
    tell(kDone, std::to_string(pass()));
  } catch (const StoreError&) {
    tell(kRefused, std::to_string(request.row));
    throw;
  }
}

void JournalReader::take(std::string_view bytes) {
  rest_ += bytes;
  for (auto end = rest_.find(kLine); end != std::string::npos; end = rest_.find(kLine)) {
    line(rest_.substr(0, end));
    rest_.erase(0, end + 1);
  }
}

void JournalReader::line(const std::string& text) {
  const std::vector<std::string> parts = split(text);
  if (parts.at(0) != kAsked) return answer(parts);
  Write write{kindOf(parts.at(1)), parts.at(2), std::stoll(parts.at(3)), {}};
  for (std::size_t i = 4; i + 1 < parts.size(); i += 2) write.fields.emplace_back(parts[i], parts[i + 1]);
  uncertain.push_back(write);
  underWay_ = true;
}

void JournalReader::answer(const std::vector<std::string>& parts) {
  if (!std::exchange(underWay_, false)) throw std::runtime_error("answered, and never asked for");
  if (parts.at(0) == kRefused) {
    ++refused;
    lastRefused_ = true;
    return;
  }
  uncertain.back().row = std::stoll(parts.at(1));
  acknowledged.push_back(uncertain.back());
  uncertain.clear();
  if (std::exchange(lastRefused_, false)) ++afterwards;
}

}  // namespace tavoline::test
