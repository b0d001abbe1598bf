#include "toolkit/report/model/Template.h"

#include <QtCore/QXmlStreamWriter>

#include "toolkit/report/model/Attributes.h"

namespace tavoline::report {

namespace {

template <class T>
void writeAttributes(QXmlStreamWriter& xml, const Attributes<T>& attributes, const T& source) {
  for (const Attribute<T>& attribute : attributes) {
    const QString value = attribute.write(source);
    if (!value.isNull()) xml.writeAttribute(QLatin1String(attribute.name), value);
  }
}

void writeDataset(QXmlStreamWriter& xml, const ReportDataset& dataset) {
  xml.writeStartElement("TfrxDBDataset");
  writeAttributes(xml, datasetAttributes(), dataset);
  for (const auto& [own, alias] : dataset.aliases) {
    xml.writeEmptyElement("FieldAlias");
    xml.writeAttribute("Field", QString::fromStdString(own));
    xml.writeAttribute("Alias", QString::fromStdString(alias));
  }
  xml.writeEndElement();
}

void writeBand(QXmlStreamWriter& xml, const Band& band) {
  xml.writeStartElement(QLatin1String(elementName(band.kind)));
  writeAttributes(xml, bandAttributes(band.kind), band);
  for (const Object& object : band.objects) {
    xml.writeStartElement(QLatin1String(elementName(object.kind)));
    writeAttributes(xml, objectAttributes(object.kind), object);
    if (!object.text.empty()) xml.writeCharacters(QString::fromStdString(writeMemoText(object.text)));
    xml.writeEndElement();
  }
  xml.writeEndElement();
}

}  // namespace

const Band* Template::band(BandKind kind) const {
  for (const Band& band : bands) {
    if (band.kind == kind) return &band;
  }
  return nullptr;
}

std::string TemplateError::text() const {
  return "ligne " + std::to_string(line) + ", colonne " + std::to_string(column) + " : " + sentence;
}

void writeTemplate(QXmlStreamWriter& xml, const Template& report) {
  xml.writeStartElement("TfrxReport");
  writeAttributes(xml, reportAttributes(), report);
  for (const ReportDataset& dataset : report.datasets) writeDataset(xml, dataset);
  xml.writeStartElement("TfrxReportPage");
  writeAttributes(xml, pageAttributes(), report.page);
  for (const Band& band : report.bands) writeBand(xml, band);
  xml.writeEndElement();
  xml.writeEndElement();
}

}  // namespace tavoline::report
