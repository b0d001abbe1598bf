#include "data/dataset/DataSource.h"

namespace tavoline {

DataSource::DataSource(std::string name, Dataset& dataset) : name_(std::move(name)), dataset_(dataset) {
  dataset.partners_.push_back(this);
}

DataSource::~DataSource() {
  std::erase(dataset_.partners_, this);
}

void DataSource::add(DataListener* listener) {
  listeners_.push_back(listener);
}

void DataSource::remove(DataListener* listener) {
  std::erase(listeners_, listener);
}

}  // namespace tavoline
