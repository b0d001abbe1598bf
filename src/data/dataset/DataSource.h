#pragma once

#include <string>
#include <vector>

#include "data/dataset/Dataset.h"

namespace tavoline {

/// What a bound control is to its dataset. Calls come on the one thread, in the middle of dataset operations:
/// dataEvent may only take note, giveUpPending may write the field it is bound to.
class DataListener {
 public:
  virtual void dataEvent(DataEvent event) = 0;
  virtual void giveUpPending() {
  }  ///< Write typed text into the dataset now. May throw; the operation then ends.
  virtual void dropPending() {}  ///< Typed text is void: the row was cancelled or closed.

 protected:
  ~DataListener() = default;
};

/// A partner: the display source that bound controls are attached to. Bound for life to one dataset, which
/// must outlive it.
class DataSource {
 public:
  DataSource(std::string name, Dataset& dataset);
  ~DataSource();
  DataSource(const DataSource&) = delete;
  DataSource& operator=(const DataSource&) = delete;

  const std::string& Name() const { return name_; }
  Dataset& dataset() const { return dataset_; }
  void add(DataListener* listener);
  void remove(DataListener* listener);

 private:
  friend class Dataset;
  std::string name_;
  Dataset& dataset_;
  std::vector<DataListener*> listeners_;
};

}  // namespace tavoline
