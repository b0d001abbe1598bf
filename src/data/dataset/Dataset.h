#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/dataset/Field.h"
#include "data/sql/Ast.h"
#include "data/store/Store.h"

namespace tavoline {

class Cursor;
class DataSource;

/// What a listener of a dataset is told. Listeners only note it; they read the dataset when they are asked.
enum class DataEvent {
  Row,    ///< Another row is current, or the values of the current row changed.
  Rows,   ///< The set of visible rows changed: opened, closed, filtered, refreshed, posted, deleted.
  State,  ///< Browse, edit and insert came or went, without another row.
};

enum class DatasetState { Inactive, Browse, Edit, Insert };

/// A named cursor over one statement: a static snapshot, read lazily, with this dataset's own writes laid
/// over it.
///
/// `select * from` one table is updatable; every Post and Delete acts on that table at once. Other statements
/// are read only. Owned by the data module; the current row, the filter and the state are shared by all
/// screens. Operations on a closed dataset throw DatasetError unless said otherwise.
class Dataset {
 public:
  Dataset(std::string name, std::string statement, std::vector<std::string> parameters = {});
  ~Dataset();
  Dataset(const Dataset&) = delete;
  Dataset& operator=(const Dataset&) = delete;

  const std::string& Name() const { return name_; }
  /// The store that every operation works on; must be set before the first Open and outlive the dataset.
  void Connect(std::shared_ptr<Store> store);

  /// Takes the snapshot; reads no row. First row current. No effect when open. Throws StatementError for a
  /// statement that the tables, as they are now, do not bear, StoreError.
  void Open();
  /// Drops the snapshot and any pending change; the filter stays. No effect when closed.
  void Close();
  void Reopen();  ///< Close, then Open.
  bool Active() const;
  void Active(bool open);

  bool Eof();  ///< Past the last row, or no row. In insert state: as it was before Insert.
  bool Bof();  ///< Before the first row, or no row.
  void First();
  void Last();
  void Next();   ///< At the last row: sets Eof and stays.
  void Prior();  ///< At the first row: sets Bof and stays.

  DatasetState State() const { return state_; }
  /// Edit the current row; with no visible row an Insert. No effect in edit or insert state.
  void Edit();
  void Insert();
  /// Writes what was changed, at once and durably; browse state after. No effect in browse state. If the
  /// store refuses, throws and leaves state and values as they were.
  void Post();
  void Cancel();
  /// Deletes the current row at once; the next one, or else the one before, becomes current. In insert state
  /// a Cancel. If the store refuses, throws and leaves state, values and typed text as they were.
  void Delete();
  /// Newer values for the same rows and this position; a pending change is ended first. If the current row
  /// has gone by the hand of another workstation, RowGone is true until the position is moved, and reading a
  /// field, writing one and Delete throw DatasetError: a gesture does not go on with another row.
  void Refresh();
  bool RowGone();

  const std::string& Filter() const { return filterText_; }
  void Filter(std::string text);
  bool Filtered() const { return filtered_; }
  /// A real change on an open dataset first posts a modified row (or cancels an unmodified one), then moves
  /// to the first visible row. The value it already has: nothing. A filter that cannot be read throws and
  /// stays off.
  void Filtered(bool on);
  void FilterBy(std::string text);  ///< Off, text, on.
  /// Whether a filter is on or the statement has a condition, so that rows of the table may be left out.
  bool Narrowed() const;

  /// The statement. Setting it closes the dataset and takes the parameters from the text, null at first. Any
  /// text will do, an empty one too: it is for Open to refuse it. Lines are joined by line ends.
  const std::string& SQL() const { return statement_; }
  void SQL(std::string text);
  const std::string& CommandText() const { return SQL(); }  ///< The same.
  void CommandText(std::string text) { SQL(std::move(text)); }
  sql::Parameters& Parameters() { return parameters_; }
  /// Throws DatasetError for a name that neither the text nor the declaration knows.
  Value& ParamByName(std::string_view name);
  void ExecSQL();  ///< Runs an action statement; durable on return.

  /// A field of the current row, by name without regard to case: read, or (edit or insert state) written.
  FieldRef operator[](std::string_view name) { return FieldRef(*this, name); }
  FieldRef FieldByName(std::string_view name) { return FieldRef(*this, name); }
  /// Null without a current row. First asks bound controls for pending text in edit or insert state.
  Value FieldValue(std::string_view name);
  void SetFieldValue(std::string_view name, const Value& value);
  bool Modified() const { return modified_; }
  /// Whether this statement changes data and is run by ExecSQL, never opened.
  bool IsAction() const;

  /// Columns of the result; empty while closed.
  const std::vector<sql::Item>& Columns() const;
  int ColumnIndex(std::string_view name) const;  ///< -1 if absent.

  /// Rows by number, for grids, lists and reports; moves nothing. Counting lists the row ids, so only what
  /// needs all rows asks for it. A row waiting in insert state is not counted.
  std::size_t RecordCount();
  /// How many rows are counted yet: all, or of a long table the first thousand, at once. For who shows these
  /// while the rest is counted.
  std::size_t RecordsCounted();
  /// Counts some `records` more, for who does it bit by bit; true when all are counted.
  bool CountOn(std::size_t records);
  Value ValueAt(std::size_t record, std::size_t column);
  int RecordNumber();  ///< Of the current row; -1 for none, one that has gone, or a row in insert state.
  void MoveTo(std::size_t record);
  /// Stands on the first visible row whose field equals the value; false, and no move, if there is none.
  bool Locate(std::string_view field, const Value& value);
  /// The number of that row, and no move; -1 if there is none, or the field cannot hold such a value.
  int RecordOf(std::string_view field, const Value& value);

  void DisableControls() { controlsDisabled_ = true; }
  bool ControlsDisabled() const { return controlsDisabled_; }

  /// Lets go of the version of Open or Refresh without a change of what is shown: what shows the same rows in
  /// `newest` moves there, what is small is kept in memory whole, of all else what was read; what was not
  /// read comes from the version that is newest when somebody asks. Null: no version at all is held
  /// afterwards.
  void Settle(const std::shared_ptr<const Snapshot>& newest);

 private:
  friend class DataSource;

  Cursor& open(const char* operation) const;  // the cursor of an open dataset; throws when closed
  /// Parses and resolves the statement, once per text and definition of the tables.
  void prepare();
  std::size_t column(std::string_view name) const;
  bool editing() const { return state_ == DatasetState::Edit || state_ == DatasetState::Insert; }
  void move(bool (Cursor::*step)(), bool& flag);
  void demandRow();
  void endPending();
  void leaveEditing();
  void giveUpPending();
  void dropPending();
  void notify(DataEvent event);
  void applyFilter(const std::string& text, bool on);

  std::string name_;
  std::string statement_;
  std::vector<std::string> declared_;  // parameters beside those of the text
  sql::Parameters parameters_;
  std::shared_ptr<Store> store_;

  std::optional<sql::Statement> prepared_;
  std::shared_ptr<const Catalog> catalog_;  // that it was resolved against
  std::unique_ptr<Cursor> cursor_;
  std::vector<sql::Item> columns_;
  std::map<std::string, std::size_t, std::less<>> columnByName_;

  DatasetState state_ = DatasetState::Inactive;
  bool eof_ = false, bof_ = false;
  bool modified_ = false;
  std::optional<RowId> refreshed_;  // the row that was current at a Refresh, until the position is moved
  std::vector<Value> pending_;      // the row in edit or insert state
  std::vector<bool> touched_;       // which of its fields were written

  std::string filterText_;
  bool filtered_ = false;

  bool controlsDisabled_ = false;
  bool askingControls_ = false;
  std::vector<DataSource*> partners_;
};

}  // namespace tavoline
