#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "data/store/Store.h"

namespace tavoline {

/// Passes everything on to a store, and keeps the writes that it accepted, in order ("update commande
/// J,M,A").
class RecordingStore : public Store {
 public:
  explicit RecordingStore(std::shared_ptr<Store> inner) : inner_(std::move(inner)) {}

  std::vector<std::string> writes;
  std::function<void()> beforeWrite, afterWrite;  ///< After one that was accepted.

  const Catalog& catalog() const override { return inner_->catalog(); }
  std::shared_ptr<const Snapshot> snapshot() override { return inner_->snapshot(); }
  RowId insert(const std::string& table, const FieldValues& fields) override {
    if (beforeWrite) beforeWrite();
    const RowId row = inner_->insert(table, fields);
    accepted("insert " + table + " " + names(fields));
    return row;
  }
  void update(const std::string& table, RowId row, const FieldValues& fields) override {
    if (beforeWrite) beforeWrite();
    inner_->update(table, row, fields);
    accepted("update " + table + " " + names(fields));
  }
  void erase(const std::string& table, RowId row) override {
    if (beforeWrite) beforeWrite();
    inner_->erase(table, row);
    accepted("erase " + table);
  }
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override {
    if (beforeWrite) beforeWrite();
    inner_->execute(resolved, parameters);
    accepted("execute");
  }
  void idle() override { inner_->idle(); }

 private:
  void accepted(std::string write) {
    writes.push_back(std::move(write));
    if (afterWrite) afterWrite();
  }
  static std::string names(const FieldValues& fields) {
    std::string all;
    for (const auto& [name, value] : fields) all += (all.empty() ? "" : ",") + name;
    return all;
  }

  std::shared_ptr<Store> inner_;
};

}  // namespace tavoline
