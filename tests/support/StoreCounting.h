#pragma once

#include "support/PassingStore.h"

namespace tavoline {

/// Counts what passes between datasets and a store, so that tests can say what a gesture costs.
struct StoreCounts {
  int snapshots = 0, queries = 0, rows = 0, writes = 0;
  int streams = 0;  ///< Begun, and not ended yet.
};

class CountingStore : public test::PassingStore {
 public:
  CountingStore(std::shared_ptr<Store> inner, StoreCounts& counts)
      : PassingStore(std::move(inner)), counts_(counts) {}

  std::shared_ptr<const Snapshot> snapshot() override {
    ++counts_.snapshots;
    return std::make_shared<Version>(inner_->snapshot(), counts_);
  }

 protected:
  void passWrite(const Request&, const std::function<RowId()>& pass) override {
    ++counts_.writes;
    pass();
  }

 private:
  class Counted : public Rows {
   public:
    Counted(std::unique_ptr<Rows> inner, StoreCounts& counts) : inner_(std::move(inner)), counts_(counts) {
      ++counts_.streams;
    }
    ~Counted() override { --counts_.streams; }
    bool next() override {
      const bool more = inner_->next();
      if (more) ++counts_.rows;
      return more;
    }
    Value value(std::size_t column) const override { return inner_->value(column); }

   private:
    std::unique_ptr<Rows> inner_;
    StoreCounts& counts_;
  };

  class Version : public Snapshot {
   public:
    Version(std::shared_ptr<const Snapshot> inner, StoreCounts& counts)
        : inner_(std::move(inner)), counts_(counts) {}
    std::unique_ptr<Rows> query(const sql::Select& select, const sql::Parameters& parameters) const override {
      ++counts_.queries;
      return std::make_unique<Counted>(inner_->query(select, parameters), counts_);
    }
    bool latest() const override { return inner_->latest(); }
    std::optional<ValueRows> queryLittle(const sql::Select& select, const sql::Parameters& parameters,
                                         std::size_t rows) const override {
      return inner_->queryLittle(select, parameters, rows);
    }
    std::int64_t changes(const std::string& table) const override { return inner_->changes(table); }

   private:
    std::shared_ptr<const Snapshot> inner_;
    StoreCounts& counts_;
  };

  StoreCounts& counts_;
};

}  // namespace tavoline
