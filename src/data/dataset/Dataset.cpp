#include "data/dataset/Dataset.h"

#include <algorithm>

#include "data/dataset/Cursor.h"
#include "data/dataset/DataSource.h"
#include "data/dataset/Refusals.h"
#include "data/sql/Lexer.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline {

Dataset::Dataset(std::string name, std::string statement, std::vector<std::string> parameters)
    : name_(std::move(name)), statement_(std::move(statement)), declared_(std::move(parameters)) {}

Dataset::~Dataset() = default;

void Dataset::Connect(std::shared_ptr<Store> store) {
  Close();
  store_ = std::move(store);
  prepared_.reset();
}

// --- Opening
// ----------------------------------------------------------------------------------------------------

void Dataset::prepare() {
  if (!store_) refuseMisuse("« " + name_ + " » n'est relié à aucune base de données.");
  auto catalog = store_->catalog();
  if (prepared_ && catalog == catalog_) return;
  if (trimmed(statement_).empty())
    refuseMisuse("« " + name_ + " » n'a pas d'instruction : il n'y a rien à lire ni à exécuter.");
  const sql::Statement parsed = sql::parseStatement(statement_);
  if (const auto* select = std::get_if<sql::Select>(&parsed))
    prepared_ = sql::resolve(*select, *catalog);
  else
    prepared_ = sql::resolve(std::get<sql::Update>(parsed), *catalog);
  catalog_ = std::move(catalog);
}

void Dataset::Open() {
  if (Active()) return;
  prepare();
  const auto* select = std::get_if<sql::Select>(&*prepared_);
  if (!select) refuseMisuse("« " + name_ + " » est une action : elle s'exécute et ne s'ouvre pas.");
  auto cursor = makeCursor({*select, parameters_, HeldVersion(*store_), catalog_});
  if (filtered_) cursor->filter(sql::parseFilter(filterText_));
  cursor_ = std::move(cursor);
  columns_ = select->items;
  columnByName_.clear();
  for (std::size_t i = 0; i < columns_.size(); ++i) columnByName_.emplace(foldName(columns_[i].name), i);
  state_ = DatasetState::Browse;
  eof_ = bof_ = false;
  notify(DataEvent::Rows);
}

void Dataset::Close() {
  if (!Active()) return;
  dropPending();
  leaveEditing();
  state_ = DatasetState::Inactive;
  refreshed_.reset();
  cursor_.reset();
  columns_.clear();
  columnByName_.clear();
  notify(DataEvent::Rows);
}

void Dataset::Reopen() {
  Close();
  Open();
}

bool Dataset::Active() const {
  return state_ != DatasetState::Inactive;
}

void Dataset::Active(bool open) {
  open ? Open() : Close();
}

bool Dataset::IsAction() const {
  return std::holds_alternative<sql::Update>(sql::parseStatement(statement_));
}

Cursor& Dataset::open(const char* operation) const {
  if (!cursor_) refuseClosed("« " + name_ + " » est fermé : " + operation + " est impossible.");
  return *cursor_;
}

bool Dataset::Narrowed() const {
  const auto* select = prepared_ ? std::get_if<sql::Select>(&*prepared_) : nullptr;
  return filtered_ || (select && select->where);
}

void Dataset::SQL(std::string text) {
  Close();
  statement_ = std::move(text);
  prepared_.reset();
  declared_.clear();
  parameters_ = {};
}

Value& Dataset::ParamByName(std::string_view name) {
  const auto known = [&](const std::string& p) { return sameName(p, name); };
  if (std::none_of(declared_.begin(), declared_.end(), known) &&
      std::ranges::none_of(sql::parametersIn(statement_), known))
    refuseMisuse("« " + name_ + " » n'a pas de paramètre « " + std::string(name) + " ».");
  return parameters_[std::string(name)];
}

void Dataset::ExecSQL() {
  prepare();
  const auto* update = std::get_if<sql::Update>(&*prepared_);
  if (!update) refuseMisuse("« " + name_ + " » ne modifie rien : il s'ouvre et ne s'exécute pas.");
  store_->execute(*update, parameters_);
}

// --- Moving
// -----------------------------------------------------------------------------------------------------

bool Dataset::Eof() {
  return eof_ || !open("cette lecture").onRow();
}

bool Dataset::Bof() {
  return bof_ || !open("cette lecture").onRow();
}

void Dataset::move(bool (Cursor::*step)(), bool& flag) {
  Cursor& cursor = open("ce déplacement");
  endPending();
  const bool moved = (cursor.*step)();
  refreshed_.reset();
  eof_ = bof_ = false;
  flag = !moved;
  notify(DataEvent::Row);
}

void Dataset::First() {
  move(&Cursor::first, eof_);
}

void Dataset::Last() {
  move(&Cursor::last, eof_);
}

void Dataset::Next() {
  move(&Cursor::next, eof_);
}

void Dataset::Prior() {
  move(&Cursor::prior, bof_);
}

void Dataset::MoveTo(std::size_t record) {
  Cursor& cursor = open("ce déplacement");
  endPending();
  if (!cursor.moveTo(record)) return;
  refreshed_.reset();
  eof_ = bof_ = false;
  notify(DataEvent::Row);
}

bool Dataset::Locate(std::string_view field, const Value& value) {
  Cursor& cursor = open("cette recherche");
  const std::size_t index = column(field);
  const Value wanted = value.as(columns_[index].type);
  endPending();
  if (!cursor.locate(index, wanted)) return false;
  refreshed_.reset();
  eof_ = bof_ = false;
  notify(DataEvent::Row);
  return true;
}

int Dataset::RecordOf(std::string_view field, const Value& value) try {
  Cursor& cursor = open("cette recherche");
  const std::size_t index = column(field);
  return cursor.recordOf(index, value.as(columns_[index].type));
} catch (const ConversionError&) {
  return -1;
}

std::size_t Dataset::RecordCount() {
  return open("cette lecture").count();
}

std::size_t Dataset::RecordsCounted() {
  return open("cette lecture").counted();
}

bool Dataset::CountOn(std::size_t records) {
  return open("cette lecture").countOn(records);
}

Value Dataset::ValueAt(std::size_t record, std::size_t index) {
  return open("cette lecture").valueAt(record, index);
}

int Dataset::RecordNumber() {
  return state_ == DatasetState::Insert || RowGone() ? -1 : open("cette lecture").record();
}

// --- Filter
// -----------------------------------------------------------------------------------------------------

/// What cannot be read is refused before anything ends: the row in edit or insert state stays as it is.
void Dataset::applyFilter(const std::string& text, bool on) {
  if (!cursor_) return;
  const sql::ExprPtr filter = on ? sql::parseFilter(text) : nullptr;
  if (editing()) sql::resolveFilter(filter, columns_);
  endPending();
  cursor_->filter(filter);
  refreshed_.reset();
  eof_ = bof_ = false;
}

void Dataset::Filter(std::string text) {
  if (filtered_) applyFilter(text, true);
  filterText_ = std::move(text);
  if (filtered_) notify(DataEvent::Rows);
}

void Dataset::Filtered(bool on) {
  if (on == filtered_) return;
  applyFilter(filterText_, on);
  filtered_ = on;
  notify(DataEvent::Rows);
}

void Dataset::FilterBy(std::string text) {
  Filtered(false);
  Filter(std::move(text));
  Filtered(true);
}

}  // namespace tavoline
