#include "toolkit/report/model/RecordSource.h"

#include "data/dataset/Dataset.h"

namespace tavoline::report {

void DatasetSource::first() {
  dataset_.First();
}
void DatasetSource::next() {
  dataset_.Next();
}
bool DatasetSource::eof() {
  return dataset_.Eof();
}
Value DatasetSource::value(const std::string& field) {
  return dataset_.FieldValue(field);
}
std::size_t DatasetSource::count() {
  return dataset_.RecordCount();
}

}  // namespace tavoline::report
