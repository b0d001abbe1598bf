#pragma once

#include <string>
#include <vector>

#include "data/store/Store.h"
#include "data/value/Errors.h"

namespace tavoline {

/// Passes everything on to a store, keeps the writes that reached it in order ("update commande J,M,A"), and
/// refuses those after a given number, as a full disk would.
class RecordingStore : public Store {
 public:
  explicit RecordingStore(std::shared_ptr<Store> inner) : inner_(std::move(inner)) {}

  std::vector<std::string> writes;
  int accepted = -1;  ///< Writes that may still pass; below zero for all.

  const Catalog& catalog() const override { return inner_->catalog(); }
  std::shared_ptr<const Snapshot> snapshot() override { return inner_->snapshot(); }
  RowId insert(const std::string& table, const FieldValues& fields) override {
    admit();
    const RowId row = inner_->insert(table, fields);
    writes.push_back("insert " + table + " " + names(fields));
    return row;
  }
  void update(const std::string& table, RowId row, const FieldValues& fields) override {
    admit();
    inner_->update(table, row, fields);
    writes.push_back("update " + table + " " + names(fields));
  }
  void erase(const std::string& table, RowId row) override {
    admit();
    inner_->erase(table, row);
    writes.push_back("erase " + table);
  }
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override {
    admit();
    inner_->execute(resolved, parameters);
    writes.push_back("execute");
  }
  void idle() override { inner_->idle(); }

 private:
  void admit() {
    if (accepted == 0) throw StoreError("Le disque est plein. Libérez de la place, puis recommencez.");
    if (accepted > 0) --accepted;
  }
  static std::string names(const FieldValues& fields) {
    std::string all;
    for (const auto& [name, value] : fields) all += (all.empty() ? "" : ",") + name;
    return all;
  }

  std::shared_ptr<Store> inner_;
};

}  // namespace tavoline
