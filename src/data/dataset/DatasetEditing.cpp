// The row of a dataset in edit or insert state, its fields, and the controls that hold text for them.

#include <algorithm>

#include "data/dataset/Cursor.h"
#include "data/dataset/DataSource.h"
#include "data/dataset/Dataset.h"
#include "data/dataset/Refusals.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline {

// --- Editing
// ----------------------------------------------------------------------------------------------------

void Dataset::Edit() {
  if (editing()) return;
  Cursor& cursor = open("cette modification");
  if (!cursor.updatable())
    throw DatasetError("Les données de « " + name_ + " » ne peuvent pas être modifiées.");
  if (!cursor.onRow()) return Insert();
  pending_ = cursor.values();
  touched_.assign(pending_.size(), false);
  modified_ = false;
  state_ = DatasetState::Edit;
  notify(DataEvent::State);
}

void Dataset::Insert() {
  Cursor& cursor = open("cet ajout");
  if (!cursor.updatable()) throw DatasetError("Rien ne peut être ajouté à « " + name_ + " ».");
  endPending();
  pending_.assign(columns_.size(), Value());
  touched_.assign(columns_.size(), false);
  modified_ = false;
  state_ = DatasetState::Insert;
  notify(DataEvent::Row);
}

void Dataset::Post() {
  Cursor& cursor = open("cet enregistrement");
  if (!editing()) return;
  giveUpPending();
  Cursor::Written written;
  for (std::size_t i = 0; i < pending_.size(); ++i)
    if (touched_[i]) written.emplace_back(i, pending_[i]);
  if (state_ == DatasetState::Insert) {
    cursor.insert(*store_, written);
    refreshed_.reset();
    eof_ = bof_ = false;
  } else if (!written.empty()) {
    cursor.update(*store_, written);
  }
  leaveEditing();
  notify(DataEvent::Rows);
}

void Dataset::Cancel() {
  if (!editing()) return;
  dropPending();
  leaveEditing();
  notify(DataEvent::Row);
}

void Dataset::Delete() {
  Cursor& cursor = open("cette suppression");
  if (state_ == DatasetState::Insert) return Cancel();
  if (!cursor.onRow()) throw DatasetError("Il n'y a rien à supprimer dans « " + name_ + " ».");
  demandRow();
  cursor.erase(*store_);
  refreshed_.reset();
  dropPending();
  leaveEditing();
  eof_ = bof_ = false;
  notify(DataEvent::Rows);
}

void Dataset::Refresh() {
  Cursor& cursor = open("cette relecture");
  prepare();
  if (!std::ranges::equal(columns_, std::get<sql::Select>(*prepared_).items, {}, &sql::Item::name,
                          &sql::Item::name))
    throw StatementError("Les colonnes de « " + name_ + " » ont changé dans les données. Actualisez.");
  endPending();
  if (!refreshed_) refreshed_ = cursor.standing();
  cursor.refresh(store_->snapshot());
  notify(DataEvent::Rows);
}

bool Dataset::RowGone() {
  if (!refreshed_ || !cursor_ || state_ == DatasetState::Insert) return false;
  return !cursor_->onRow() || cursor_->standing() != refreshed_;
}

void Dataset::demandRow() {
  if (RowGone())
    throw DatasetError(
        "La ligne en cours de « " + name_ +
        " » n'est plus là : un autre poste l'a supprimée ou changée. L'opération s'arrête ici et "
        "n'écrit rien de plus. Quittez l'écran, puis recommencez.");
}

void Dataset::Settle(const std::shared_ptr<const Snapshot>& newest) {
  if (cursor_) cursor_->release(newest);
}

/// Posts a row in which something was written; cancels one in which nothing was.
void Dataset::endPending() {
  if (!editing()) return;
  giveUpPending();
  modified_ ? Post() : Cancel();
}

void Dataset::leaveEditing() {
  if (editing()) state_ = DatasetState::Browse;
  modified_ = false;
  pending_.clear();
  touched_.clear();
}

// --- Fields
// -----------------------------------------------------------------------------------------------------

const std::vector<sql::Item>& Dataset::Columns() const {
  return columns_;
}

int Dataset::ColumnIndex(std::string_view name) const {
  const auto found = columnByName_.find(foldName(name));
  return found == columnByName_.end() ? -1 : static_cast<int>(found->second);
}

std::size_t Dataset::column(std::string_view name) const {
  const int index = ColumnIndex(name);
  if (index < 0) refuseMisuse("« " + name_ + " » n'a pas de champ « " + std::string(name) + " ».");
  return static_cast<std::size_t>(index);
}

Value Dataset::FieldValue(std::string_view name) {
  Cursor& cursor = open("cette lecture");
  const std::size_t index = column(name);
  demandRow();
  if (!editing()) return cursor.onRow() ? cursor.value(index) : Value();
  giveUpPending();
  // A picture is read only when asked for, so an edited row holds the one that was written to it, if any.
  const bool stored =
      state_ == DatasetState::Edit && !touched_[index] && columns_[index].type == FieldType::Blob;
  return stored ? cursor.value(index) : pending_[index];
}

void Dataset::SetFieldValue(std::string_view name, const Value& value) {
  open("cette saisie");
  const std::size_t index = column(name);
  if (!editing())
    refuseMisuse("« " + name_ + " » n'est pas en cours de saisie : le champ « " + std::string(name) +
                 " » ne peut pas être rempli.");
  demandRow();
  pending_[index] = value.as(columns_[index].type);
  touched_[index] = true;
  modified_ = true;
  notify(DataEvent::Row);
}

// --- Partners
// ---------------------------------------------------------------------------------------------------

void Dataset::notify(DataEvent event) {
  if (controlsDisabled_) return;
  for (DataSource* partner : partners_)
    for (DataListener* listener : partner->listeners_) listener->dataEvent(event);
}

void Dataset::giveUpPending() {
  if (askingControls_) return;  // a control that writes its field must not be asked again for it
  askingControls_ = true;
  struct Done {
    bool& flag;
    ~Done() { flag = false; }
  } done{askingControls_};
  for (DataSource* partner : partners_) {
    const auto listeners = partner->listeners_;
    for (DataListener* listener : listeners) listener->giveUpPending();
  }
}

void Dataset::dropPending() {
  for (DataSource* partner : partners_) {
    const auto listeners = partner->listeners_;
    for (DataListener* listener : listeners) listener->dropPending();
  }
}

}  // namespace tavoline
