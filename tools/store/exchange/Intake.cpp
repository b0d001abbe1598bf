#include "tools/store/exchange/Intake.h"

#include <algorithm>

#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "tools/store/exchange/Fitting.h"
#include "tools/store/exchange/Pictures.h"

namespace tavoline::tool {
namespace {

// The amounts whose sums are told.
constexpr std::pair<std::string_view, std::string_view> kSummed[] = {
    {"commande", "tcc"}, {"depence", "montant_dep"}, {"facture_achat", "TCC"}, {"caisse", "solde"}};

std::vector<std::string_view> columnNames(const schema::Table& table) {
  std::vector<std::string_view> names;
  names.reserve(table.columns.size());
  for (const schema::Column& column : table.columns) names.push_back(column.name);
  return names;
}

std::size_t placeOf(const schema::Table& table, std::string_view column) {
  return static_cast<std::size_t>(table.find(column) - table.columns.data());
}

void addTo(double& sum, const Value& amount) {
  if (amount.isNumber()) sum += amount.toFloat();
}

}  // namespace

Intake::Intake(Filler* filler, ImportReport& report, Manner manner)
    : filler_(filler), report_(report), manner_(manner) {
  for (const auto& [table, column] : kSummed) report_.sums.push_back({table, column, 0, 0});
}

void Intake::table(const schema::Table& table, const Columns& columns) {
  closeTable();
  table_ = &table;
  progress_.at(std::string(table.name));
  report_.tables.push_back({table.name, 0, 0, {}});
  row_.assign(table.columns.size(), {});
  absent_.clear();
  for (const schema::Column& column : table.columns) absent_.push_back(defaultOf(column));
  places_.clear();
  for (const schema::Column* column : columns) places_.push_back(placeOf(table, column->name));
  if (filler_) inserter_.emplace(filler_->inserter(table.name, columnNames(table)));
  keys_.reset();
  if (!table.key.empty()) {
    keys_.emplace();
    keyPlace_ = placeOf(table, table.key);
  }
  digest_.emplace();
}

void Intake::row(std::vector<Value>& values) {
  progress_.step();
  ImportReport::Table& counted = report_.tables.back();
  ++counted.read;
  row_ = absent_;
  for (std::size_t i = 0; i < places_.size(); ++i) row_[places_[i]] = std::move(values[i]);
  for (ImportReport::Sum& sum : report_.sums)
    if (sum.table == table_->name) addTo(sum.read, row_[placeOf(*table_, sum.column)]);
  if (const auto reason = whyRefused()) return refuse(*reason);
  if (inserter_) inserter_->add(row_);
  digest_->add(row_);
  ++counted.written;
  if (filler_) return;
  for (ImportReport::Sum& sum : report_.sums)
    if (sum.table == table_->name) addTo(sum.written, row_[placeOf(*table_, sum.column)]);
}

std::optional<std::string> Intake::whyRefused() {
  for (std::size_t i = 0; i < row_.size(); ++i) {
    const schema::Column& column = table_->columns[i];
    if (auto reason = fit(row_[i], column)) return reason;
    if (manner_.freesPictures && column.type == FieldType::Blob && !row_[i].isNull())
      row_[i] = freed(row_[i], column);
  }
  if (keys_ && !keys_->add(row_[keyPlace_]))
    return "cette valeur de « " + std::string(table_->key) + " » est déjà celle d'une autre ligne";
  return std::nullopt;
}

Value Intake::freed(const Value& picture, const schema::Column& column) {
  const SharedBytes bytes = picture.toBytes();
  if (bytes->empty()) return picture;
  Unwrapped inside = pictureWithin(*bytes);
  if (inside.kind == Unwrapped::Kind::Picture) return picture;
  const std::string name = nameOfRow() + ", « " + std::string(column.name) + " » : ";
  if (inside.kind == Unwrapped::Kind::Unknown) {
    report_.wrapped.add(name + inside.what);
    return picture;
  }
  report_.freed.add(name + inside.what);
  return SharedBytes(std::make_shared<const Bytes>(std::move(inside.picture)));
}

std::string Intake::nameOfRow() const {
  const std::string name(table_->name);
  if (!table_->key.empty() && !row_[keyPlace_].isNull())
    return name + ", " + std::string(table_->key) + '=' + row_[keyPlace_].text();
  return name + ", ligne " + std::to_string(report_.tables.back().read) + " (" +
         std::string(table_->columns.front().name) + '=' + row_.front().text() + ')';
}

void Intake::refuse(const std::string& reason) {
  const std::string sentence = nameOfRow() + " : " + reason;
  if (manner_.strict)
    throw StoreError("L'import s'est arrêté à la première ligne refusée, et rien n'a été écrit. " + sentence +
                     '.');
  report_.refused.add(sentence);
}

void Intake::closeTable() {
  if (table_) report_.tables.back().digest = digest_->text();
  inserter_.reset();
  table_ = nullptr;
}

void Intake::requireAllTables() const {
  for (const schema::Table& table : schema::tables())
    if (std::none_of(report_.tables.begin(), report_.tables.end(),
                     [&](const ImportReport::Table& counted) { return counted.name == table.name; }))
      throw StoreError("La table « " + std::string(table.name) + " » n'est pas arrivée.");
}

void Intake::finish() {
  closeTable();
  requireAllTables();
  if (!filler_) return;
  progress_.at("relecture");
  for (ImportReport::Table& counted : report_.tables) readBack(counted);
}

void Intake::readBack(ImportReport::Table& counted) {
  const schema::Table& table = schema::table(counted.name);
  std::int64_t rows = 0;
  RowDigest digest;
  filler_->readBack(table.name, columnNames(table), [&](std::span<const Value> row) {
    ++rows;
    digest.add(row);
    for (ImportReport::Sum& sum : report_.sums)
      if (sum.table == table.name) addTo(sum.written, row[placeOf(table, sum.column)]);
  });
  if (rows != counted.written || digest.text() != counted.digest)
    throw StoreError("La table « " + std::string(counted.name) +
                     " » relue n'est pas celle qui a été écrite. Vérifiez le disque, puis recommencez.");
}

}  // namespace tavoline::tool
