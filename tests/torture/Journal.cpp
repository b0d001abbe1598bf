#include "torture/Journal.h"

#include <unistd.h>

#include <charconv>
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

const char* nameOf(Write::Kind kind) {
  switch (kind) {
    case Write::Kind::Insert:
      return "insert";
    case Write::Kind::Update:
      return "update";
    case Write::Kind::Erase:
      return "erase";
  }
  return "";
}

Write::Kind kindOf(const std::string& name) {
  for (const Write::Kind kind : {Write::Kind::Insert, Write::Kind::Update, Write::Kind::Erase})
    if (name == nameOf(kind)) return kind;
  throw std::runtime_error("no write is called " + name);
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

Write Journal::written(Write::Kind kind, const std::string& table, RowId row,
                       const FieldValues& fields) const {
  Write write{kind, table, row, {}};
  const TableInfo* info = catalog().find(table);
  for (const auto& [name, value] : fields) {
    const ColumnInfo* column = info ? info->find(name) : nullptr;
    if (!column) throw std::runtime_error("no column " + table + '.' + name);
    write.fields.emplace_back(column->name, literal(value.as(column->type)));
  }
  return write;
}

void Journal::asked(const Write& write) {
  std::string line = kAsked + std::string(1, kField) + nameOf(write.kind) + kField + write.table + kField +
                     std::to_string(write.row);
  for (const auto& [column, value] : write.fields) line += kField + column + kField + value;
  send(pipe_, line + kLine);
}

void Journal::answered(const char* how, RowId row) {
  send(pipe_, how + (kField + std::to_string(row)) + kLine);
}

template <class Action>
RowId Journal::told(const Write& write, const Action& action) {
  asked(write);
  RowId row = 0;
  try {
    row = action();
  } catch (const StoreError&) {
    answered(kRefused, write.row);
    throw;
  }
  answered(kDone, row);
  return row;
}

RowId Journal::insert(const std::string& table, const FieldValues& fields) {
  return told(written(Write::Kind::Insert, table, 0, fields), [&] { return inner_->insert(table, fields); });
}

void Journal::update(const std::string& table, RowId row, const FieldValues& fields) {
  told(written(Write::Kind::Update, table, row, fields), [&] {
    inner_->update(table, row, fields);
    return row;
  });
}

void Journal::erase(const std::string& table, RowId row) {
  told(written(Write::Kind::Erase, table, row, {}), [&] {
    inner_->erase(table, row);
    return row;
  });
}

void Journal::execute(const sql::Update&, const sql::Parameters&) {
  throw std::logic_error("the journal knows rows, not statements");
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
