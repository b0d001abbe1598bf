#include "torture/Journal.h"

#include <unistd.h>

#include <charconv>
#include <stdexcept>
#include <utility>

#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline::test {
namespace {

// Records are lines, which no text of a restaurant breaks; how they begin.
constexpr char kAsked = '?', kDone = '!', kRefused = '-', kLine = '\n';
const std::string kRow = ":rid";  // for the number that an insert gets

}  // namespace

std::string withRow(const std::string& write, const std::string& row) {
  const auto at = write.find(kRow);
  return at == write.npos ? write : std::string(write).replace(at, kRow.size(), row);
}

std::string literal(const Value& value) {
  if (value.isNull()) return "NULL";
  if (value.isInteger()) return std::to_string(value.toInteger());
  if (value.isDateTime()) return inQuotes(value.toDateTime().stored());
  if (!value.isFloat()) return inQuotes(value.text());
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, value.toFloat()).ptr;
  return "CAST('" + std::string(text, end) + "' AS REAL)";
}

namespace {

// One call for one line: a pipe takes so few bytes whole.
void send(int pipe, char how, const std::string& what = {}) {
  const std::string line = how + what + kLine;
  if (::write(pipe, line.data(), line.size()) != static_cast<ssize_t>(line.size())) ::_exit(1);
}

}  // namespace

std::string Journal::statement(const Request& request) const {
  const TableInfo* info = catalog()->find(request.table);
  std::string names = "rid", values = kRow, assignments;  // a row may be written with nothing in it
  for (const auto& [name, value] : request.fields) {
    const ColumnInfo* column = info ? info->find(name) : nullptr;
    if (!column) throw std::runtime_error("no column " + request.table + '.' + name);
    const std::string quoted = '"' + column->name + '"', known = literal(value.as(column->type));
    names.append(", ").append(quoted);
    values.append(", ").append(known);
    assignments.append(assignments.empty() ? "" : ", ").append(quoted).append(" = ").append(known);
  }
  const std::string table = '"' + request.table + '"', row = " WHERE rid = " + std::to_string(request.row);
  switch (request.kind) {
    case Request::Insert:
      return "INSERT INTO " + table + " (" + names + ") VALUES (" + values + ")";
    case Request::Update:
      return "UPDATE " + table + " SET " + (assignments.empty() ? "rid = rid" : assignments) + row;
    case Request::Erase:
      return "DELETE FROM " + table + row;
    case Request::Execute:
      break;
  }
  throw std::logic_error("the journal knows rows, not statements");
}

void Journal::passWrite(const Request& request, const std::function<RowId()>& pass) {
  send(pipe_, kAsked, statement(request));
  RowId row = 0;
  try {
    row = pass();
  } catch (const StoreError&) {
    send(pipe_, kRefused);
    throw;
  }
  send(pipe_, kDone, std::to_string(row));
}

void JournalReader::take(std::string_view bytes) {
  rest_ += bytes;
  for (auto end = rest_.find(kLine); end != std::string::npos; end = rest_.find(kLine)) {
    line(rest_.substr(0, end));
    rest_.erase(0, end + 1);
  }
}

void JournalReader::line(const std::string& text) {
  if (text[0] == kAsked) {
    uncertain.push_back(text.substr(1));
    underWay_ = true;
    return;
  }
  if (!std::exchange(underWay_, false)) throw std::runtime_error("answered, and never asked for");
  if (text[0] == kRefused) {
    ++refused;
    lastRefused_ = true;
    return;
  }
  acknowledged.push_back(withRow(uncertain.back(), text.substr(1)));
  uncertain.clear();
  if (std::exchange(lastRefused_, false)) ++afterwards;
}

}  // namespace tavoline::test
