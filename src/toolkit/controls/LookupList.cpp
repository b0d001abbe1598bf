#include "toolkit/controls/LookupList.h"

#include "data/DMU.h"
#include "data/value/Errors.h"

namespace tavoline {

Dataset* LookupList::dataset() const {
  DataSource* source = DM && !listSource.isEmpty() ? DM->Source(listSource.toStdString()) : nullptr;
  return source ? &source->dataset() : nullptr;
}

std::size_t LookupList::count() const {
  Dataset* rows = dataset();
  return rows && rows->Active() ? rows->RecordCount() : 0;
}

Value LookupList::at(std::size_t row, const QString& field) const {
  Dataset* rows = dataset();
  const int column = rows->ColumnIndex(field.trimmed().toStdString());
  return column < 0 ? Value() : rows->ValueAt(row, std::size_t(column));
}

Value LookupList::key(std::size_t row) const {
  return at(row, keyField);
}

QString LookupList::text(std::size_t row) const {
  QStringList parts;
  for (const QString& field : listFields.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
    parts << QString::fromStdString(at(row, field).text());
  }
  return parts.join(QStringLiteral(" · "));
}

int LookupList::rowOf(const Value& wanted) const {
  Dataset* rows = dataset();
  const std::string field = keyField.trimmed().toStdString();
  if (wanted.isNull() || !rows || !rows->Active() || rows->ColumnIndex(field) < 0) return -1;
  return rows->RecordOf(field, wanted);
}

void LookupList::choose(std::size_t row) const {
  dataset()->MoveTo(row);
}

void LookupRows::reread() {
  beginResetModel();
  count_ = int(list_.count());
  endResetModel();
}

QVariant LookupRows::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
  try {
    return list_.text(std::size_t(index.row()));
  } catch (const Error& error) {
    return QString::fromUtf8(error.what());  // in the place of the text: nothing may be thrown through a view
  }
}

}  // namespace tavoline
