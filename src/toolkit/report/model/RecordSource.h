#pragma once

#include <cstddef>
#include <string>

#include "data/value/Value.h"

namespace tavoline {
class Dataset;
}

namespace tavoline::report {

/// What the renderer needs of a dataset. Moving it moves the dataset's own current row.
class RecordSource {
 public:
  virtual ~RecordSource() = default;
  virtual void first() = 0;
  virtual void
  next() = 0;  ///< At the last record: eof from now on, and the last record stays the current one.
  virtual bool eof() = 0;
  virtual Value value(const std::string& field) = 0;  ///< Of the current record; null without one.
  virtual std::size_t count() = 0;                    ///< Of all records; may be slow.
};

/// An open dataset of the data module. Never opened, closed, filtered or sorted here.
class DatasetSource : public RecordSource {
 public:
  explicit DatasetSource(Dataset& dataset) : dataset_(dataset) {}
  void first() override;
  void next() override;
  bool eof() override;
  Value value(const std::string& field) override;
  std::size_t count() override;

 private:
  Dataset& dataset_;
};

}  // namespace tavoline::report
