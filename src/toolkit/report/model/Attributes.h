#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/report/model/Template.h"

namespace tavoline::report {

/// One attribute of an element: how its text is read into T, and written from it. `read` is false for a text
/// that is no such value; `write` gives the null string for the usual value.
template <class T>
struct Attribute {
  const char* name;
  bool (*read)(T& target, const QString& text);
  QString (*write)(const T& source);
};

template <class T>
using Attributes = std::vector<Attribute<T>>;

const Attributes<Template>& reportAttributes();
const Attributes<ReportDataset>& datasetAttributes();
const Attributes<PageSetup>& pageAttributes();
const Attributes<Band>& bandAttributes(BandKind kind);
const Attributes<Object>& objectAttributes(ObjectKind kind);

/// Element names, in both directions; null for none.
const char* elementName(BandKind kind);
const char* elementName(ObjectKind kind);
bool bandKind(QStringView element, BandKind& kind);
bool objectKind(QStringView element, ObjectKind& kind);

}  // namespace tavoline::report
