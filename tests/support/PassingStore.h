#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "data/store/Store.h"

namespace tavoline::test {

/// A store that passes everything on to another, every write by way of `passWrite`.
class PassingStore : public Store {
 public:
  explicit PassingStore(std::shared_ptr<Store> inner) : inner_(std::move(inner)) {}

  std::shared_ptr<const Catalog> catalog() const override { return inner_->catalog(); }
  std::shared_ptr<const Snapshot> snapshot() override { return inner_->snapshot(); }
  RowId insert(const std::string& table, const FieldValues& fields) override {
    RowId row = 0;
    passWrite({Request::Insert, table, 0, fields}, [&] { return row = inner_->insert(table, fields); });
    return row;
  }
  void update(const std::string& table, RowId row, const FieldValues& fields) override {
    passWrite({Request::Update, table, row, fields}, [&] { return inner_->update(table, row, fields), row; });
  }
  void erase(const std::string& table, RowId row) override {
    passWrite({Request::Erase, table, row, {}}, [&] { return inner_->erase(table, row), row; });
  }
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override {
    passWrite({Request::Execute, resolved.table, 0, {}},
              [&] { return inner_->execute(resolved, parameters), 0; });
  }
  std::size_t announce(const std::string& occupation) override { return inner_->announce(occupation); }
  void relieveBy(std::weak_ptr<const Reliever> reliever) override { inner_->relieveBy(std::move(reliever)); }
  void idle() override { inner_->idle(); }
  void pause() override { inner_->pause(); }

 protected:
  struct Request {
    enum Kind { Insert, Update, Erase, Execute } kind;
    const std::string& table;
    RowId row;  ///< 0 before an insert, and for all rows.
    const FieldValues& fields;
  };
  /// `pass` does the write and gives its row; it throws what the store throws.
  virtual void passWrite(const Request& write, const std::function<RowId()>& pass) = 0;

  std::shared_ptr<Store> inner_;
};

}  // namespace tavoline::test
