#pragma once

#include <map>
#include <string>
#include <vector>

#include "toolkit/report/model/RecordSource.h"

namespace tavoline::report {

/// Records made in the test, with a cursor that behaves as a dataset's: past the last record, the last one
/// stays.
class Rows : public RecordSource {
 public:
  using Record = std::map<std::string, Value>;
  using Records = std::vector<Record>;
  explicit Rows(Records records) : records_(std::move(records)) {}

  void first() override { at_ = 0, past_ = records_.empty(); }
  void next() override {
    if (at_ + 1 < records_.size()) {
      ++at_;
    } else {
      past_ = true;
    }
  }
  bool eof() override { return past_; }
  Value value(const std::string& field) override {
    if (records_.empty()) return {};
    const auto found = records_[at_].find(field);
    return found == records_[at_].end() ? Value() : found->second;
  }
  std::size_t count() override { return records_.size(); }
  void standOn(std::size_t record) { at_ = record, past_ = false; }
  std::size_t position() const { return at_; }

 private:
  Records records_;
  std::size_t at_ = 0;
  bool past_ = false;
};

}  // namespace tavoline::report
