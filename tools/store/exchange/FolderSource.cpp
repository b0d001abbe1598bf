#include "tools/store/exchange/FolderSource.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "tools/store/exchange/Cells.h"
#include "tools/store/exchange/Csv.h"
#include "tools/store/exchange/Fitting.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuseChanged(const std::string& path) {
  throw StoreError(
      "« " + path +
      " » n'est plus tel qu'il a été exporté : rien n'a été importé. Refaites l'export, ou prenez-en une "
      "autre copie.");
}

/// A name that cannot lead out of the folder: 64 digits of a digest, and an ending.
bool isPictureName(std::string_view name) {
  constexpr std::size_t kDigest = 64, kLongestEnding = 5;
  const std::string_view digest = name.substr(0, name.find('.'));
  const auto plain = [](char c) { return isDigit(c) || (c >= 'a' && c <= 'z'); };
  return digest.size() == kDigest && std::all_of(digest.begin(), digest.end(), plain) &&
         name.size() <= kDigest + kLongestEnding &&
         std::all_of(name.begin() + kDigest + (name.size() > kDigest), name.end(), plain);
}

std::optional<DateTime> momentOf(std::string text) {
  if (text.size() > 10 && text[10] == 'T') text[10] = ' ';
  return DateTime::fromStored(text);
}

// What a field means in a column; a text where it does not mean anything, which the column then refuses.
Value valueOf(const CsvField& field, FieldType type) {
  if (field.quoted || type == FieldType::Text) return unguarded(field.text);
  const auto either = [&](const auto& read) -> Value { return read ? Value(*read) : Value(field.text); };
  switch (type) {
    case FieldType::Integer:
      if (const auto whole = exactInteger(field.text)) return *whole;
      return either(exactNumber(field.text));
    case FieldType::Float:
      return either(exactNumber(field.text));
    case FieldType::DateTime:
      return either(momentOf(field.text));
    default:
      return field.text;
  }
}

}  // namespace

FolderSource::FolderSource(std::string folder)
    : folder_(std::move(folder)), description_(Description::of(folder_)) {
  for (const schema::Table& table : schema::tables())
    if (!description_.find(table.name))
      throw StoreError("« " + folder_ + " » n'est pas entier : il y manque la table « " +
                       std::string(table.name) + " ». Refaites l'export.");
}

void FolderSource::read(RowReceiver& receiver) {
  std::int64_t rows = 0;
  for (const Description::Table& table : description_.tables) rows += table.rows;
  receiver.expect(rows);
  for (const schema::Table& table : schema::tables())
    readTable(table, *description_.find(table.name), receiver);
}

void FolderSource::readTable(const schema::Table& table, const Description::Table& described,
                             RowReceiver& receiver) const {
  const std::string path = fs::path(folder_) / fs::path(described.file).filename();
  CsvReader file(path);
  if (!file.next()) refuseChanged(path);
  Columns columns;
  std::vector<std::optional<std::size_t>> places;  // of each field among the columns that have a place
  std::vector<FieldType> types;
  for (const CsvField& name : file.fields()) {
    const schema::Column* const column = table.find(name.text);
    types.push_back(column ? column->type : FieldType::Text);
    places.push_back(column ? std::optional(columns.size()) : std::nullopt);
    if (column)
      columns.push_back(column);
    else
      receiver.remark("La colonne « " + name.text + " » de « " + path +
                      " » n'a pas de place : elle est laissée de côté.");
  }
  receiver.table(table, columns);
  RowDigest digest;
  std::vector<Value> all(types.size()), known(columns.size());
  while (file.next()) {
    if (file.fields().size() != all.size()) refuseChanged(path);
    for (std::size_t i = 0; i < all.size(); ++i) {
      const CsvField& field = file.fields()[i];
      const bool missing = !field.quoted && field.text.empty();
      const bool isPicture = !field.quoted && field.text.starts_with(kPictureFolder);
      all[i] = missing ? Value() : isPicture ? picture(field.text) : valueOf(field, types[i]);
      if (places[i]) known[*places[i]] = all[i];
    }
    digest.add(all);
    receiver.row(known);
  }
  if (digest.text() != described.digest) refuseChanged(path);
}

Value FolderSource::picture(const std::string& name) const {
  const std::string file = name.substr(std::min(kPictureFolder.size() + 1, name.size()));
  const std::string path = fs::path(folder_) / name;
  if (!isPictureName(file)) refuseChanged(path);
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw StoreError("« " + path + " » manque ou ne peut pas être lu. L'export n'est pas entier.");
  Bytes bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  if (sha256(bytes) != file.substr(0, file.find('.'))) refuseChanged(path);
  return SharedBytes(std::make_shared<const Bytes>(std::move(bytes)));
}

}  // namespace tavoline::tool
