#include "tools/store/server/ServerFiller.h"

#include "data/schema/Schema.h"
#include "data/store/postgres/Bound.h"
#include "data/store/postgres/Engine.h"

namespace tavoline::tool {

namespace {

constexpr std::size_t pieceSize = 1 << 20;

// As COPY reads it: a backslash before what would end a value or a row.
void addText(std::string& rows, const std::string& text) {
  for (const char c : text) {
    switch (c) {
      case '\\':
        rows += "\\\\";
        break;
      case '\t':
        rows += "\\t";
        break;
      case '\n':
        rows += "\\n";
        break;
      case '\r':
        rows += "\\r";
        break;
      default:
        rows += c;
    }
  }
}

void addBytes(std::string& rows, const Bytes& bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  rows += "\\\\x";
  for (const std::uint8_t byte : bytes) {
    rows += digits[byte >> 4];
    rows += digits[byte & 15];
  }
}

}  // namespace

Inserter ServerFiller::inserter(std::string_view table, const std::vector<std::string_view>& columns) {
  std::string into = postgres::engine().quotedName(table) + " (";
  for (const std::string_view column : columns)
    into += (column == columns.front() ? "" : ", ") + postgres::engine().quotedName(column);
  into += ')';
  const std::string name(table);
  return Inserter([this, name, into](std::span<const Value> row) {
    Piece& piece = pieces_[name];
    if (piece.into != into) {
      send(piece);
      piece.into = into;
    }
    add(piece, row);
  });
}

void ServerFiller::add(Piece& piece, std::span<const Value> row) {
  bool first = true;
  for (const Value& value : row) {
    if (!first) piece.rows += '\t';
    first = false;
    if (value.isBytes())
      addBytes(piece.rows, *value.toBytes());
    else if (const auto text = postgres::asText(connection_.address(), value))
      addText(piece.rows, *text);
    else
      piece.rows += "\\N";
  }
  piece.rows += '\n';
  if (piece.rows.size() > pieceSize) send(piece);
}

void ServerFiller::send(Piece& piece) {
  if (piece.rows.empty()) return;
  connection_.copyInto(piece.into, piece.rows);
  piece.rows.clear();
}

void ServerFiller::sendAll() {
  for (auto& [table, piece] : pieces_) send(piece);
}

void ServerFiller::numberBehind(std::string_view table, std::int64_t last) {
  behind_[std::string(table)] = last;
}

void ServerFiller::readBack(std::string_view table, const std::vector<std::string_view>& columns,
                            const Reading& read) {
  sendAll();
  std::string names;
  std::vector<FieldType> types;
  for (const std::string_view column : columns) {
    names += (names.empty() ? "" : ", ") + postgres::engine().quotedName(column);
    types.push_back(typeOfColumn(table, column));
  }
  connection_.ask(postgres::Question{"DECLARE relecture NO SCROLL CURSOR FOR SELECT " + names + " FROM " +
                                     postgres::engine().quotedName(table) + " ORDER BY rid"});
  std::vector<Value> row(columns.size());
  while (true) {
    const postgres::Answer rows = connection_.ask(postgres::Question{"FETCH FORWARD 500 FROM relecture"});
    if (rows.rows() == 0) break;
    for (int at = 0; at < rows.rows(); ++at) {
      for (std::size_t i = 0; i < row.size(); ++i) row[i] = rows.value(at, static_cast<int>(i), types[i]);
      read(row);
    }
  }
  connection_.execute("CLOSE relecture");
}

void ServerFiller::finish() {
  sendAll();
  for (const schema::Table& table : schema::tables()) {
    const std::string name = postgres::engine().quotedName(table.name);
    const auto last = behind_.find(table.name);
    const std::string behind = std::to_string(last == behind_.end() ? 0 : last->second);
    std::string text = "SELECT setval(pg_get_serial_sequence('";
    text.append(name).append("', 'rid'), n) FROM (SELECT greatest(max(rid), ").append(behind);
    text.append(") AS n FROM ").append(name).append(") AS highest WHERE n > 0");
    connection_.execute(text);
  }
}

}  // namespace tavoline::tool
