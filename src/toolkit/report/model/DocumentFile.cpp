#include "toolkit/report/model/DocumentFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

#include "data/value/Errors.h"
#include "toolkit/report/model/Attributes.h"

namespace tavoline::report {

namespace {

constexpr char kRoot[] = "TavolinePages";
constexpr char kVersion[] = "1";
constexpr char kCannotWrite[] =
    "ne peut pas être écrit. Choisissez un autre emplacement ou libérez de la place.";

// A sheet of a square metre, or a band of paper as long as three; a picture of it takes 230 MB.
constexpr double kLongest = 3000 * kUnitsPerMm;  // units
constexpr double kLargest = 1'000'000;           // mm²

bool isPrintable(const PageSetup& setup) {
  const auto isMargin = [&](double margin) { return margin >= 0 && margin <= setup.width; };
  return setup.width > 0 && setup.height > 0 && setup.width * kUnitsPerMm <= kLongest &&
         setup.height * kUnitsPerMm <= kLongest && setup.width * setup.height <= kLargest &&
         isMargin(setup.marginLeft) && isMargin(setup.marginRight);
}

Error failure(const QString& path, const QString& what, const QString& detail = {}) {
  const QString sentence = "Le fichier « " + QDir::toNativeSeparators(path) + " » " + what;
  return Error(sentence.toStdString(), detail.toStdString());
}

// Characters that XML has no way to write; a stray one in a comment typed long ago must not spoil the file.
QString writable(std::string_view text) {
  QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  for (QChar& c : result) {
    if (c.unicode() < 0x20 && c != u'\n' && c != u'\t') c = QChar::ReplacementCharacter;
  }
  return result;
}

void writeSetup(QXmlStreamWriter& xml, const PageSetup& setup) {
  xml.writeStartElement("Setup");
  for (const auto& attribute : pageAttributes()) {
    const QString value = attribute.write(setup);
    if (!value.isNull()) xml.writeAttribute(QLatin1String(attribute.name), value);
  }
  xml.writeEndElement();
}

void writeLogo(QXmlStreamWriter& xml, const Bytes& logo) {
  const QByteArray bytes(reinterpret_cast<const char*>(logo.data()), static_cast<qsizetype>(logo.size()));
  xml.writeTextElement("Logo", QString::fromLatin1(bytes.toBase64()));
}

void writePage(QXmlStreamWriter& xml, const Template& report, const Page& page) {
  xml.writeStartElement("Page");
  std::size_t word = 0;
  for (const PlacedBand& placed : page.bands()) {
    xml.writeStartElement("Band");
    xml.writeAttribute("Index", QString::number(placed.band));
    xml.writeAttribute("Top", QString::number(static_cast<double>(placed.top), 'g', 9));
    for (std::size_t i = textCount(report.bands[placed.band]); i > 0; --i) {
      xml.writeTextElement("Text", writable(page.text(word++)));
    }
    xml.writeEndElement();
  }
  xml.writeEndElement();
}

class PagesReader {
 public:
  PagesReader(QFile& file, const Progress& progress)
      : file_(file), progress_(progress), xml_(&file), path_(file.fileName()) {}

  std::shared_ptr<Document> read() {
    if (!xml_.readNextStartElement() || xml_.name() != QLatin1String(kRoot)) {
      throw failure(
          path_, "ne contient pas de pages préparées : choisissez un fichier enregistré depuis un aperçu.");
    }
    if (xml_.attributes().value("Version") != QLatin1String(kVersion)) {
      throw failure(path_, "vient d'une autre version du programme et ne peut pas être lu ici.");
    }
    while (xml_.readNextStartElement()) {
      readPart();
      if (progress_ && !progress_(position(), size())) return nullptr;
    }
    if (xml_.hasError()) damaged();
    if (!document_ || document_->empty()) damaged();
    return document_;
  }

 private:
  [[noreturn]] void damaged() {
    throw failure(path_, QString("est abîmé (ligne %1, colonne %2) : enregistrez de nouveau le document.")
                             .arg(xml_.lineNumber())
                             .arg(xml_.columnNumber() + 1));
  }
  std::size_t position() const { return static_cast<std::size_t>(file_.pos()); }
  std::size_t size() const { return static_cast<std::size_t>(file_.size()) + 1; }  // there is an end to read
  void expect(bool good) {
    if (!good) damaged();
  }

  void readPart() {
    if (xml_.name() == QLatin1String("TfrxReport")) {
      TemplateResult result = readTemplate(xml_);
      expect(std::holds_alternative<std::shared_ptr<const Template>>(result));
      report_ = std::get<std::shared_ptr<const Template>>(result);
    } else if (xml_.name() == QLatin1String("Setup")) {
      readSetup();
    } else if (xml_.name() == QLatin1String("Logo")) {
      const QByteArray bytes = QByteArray::fromBase64(xml_.readElementText().toLatin1());
      logo_ = std::make_shared<const Bytes>(bytes.begin(), bytes.end());
    } else {
      expect(xml_.name() == QLatin1String("Page") && report_);
      readPage();
    }
  }

  void readSetup() {
    for (const QXmlStreamAttribute& given : xml_.attributes()) {
      bool known = false;
      for (const auto& attribute : pageAttributes()) {
        if (given.name() == QLatin1String(attribute.name))
          known = attribute.read(setup_, given.value().toString());
      }
      expect(known);
    }
    expect(isPrintable(setup_));
    xml_.skipCurrentElement();
  }

  void readPage() {
    if (!document_) {
      document_ = std::make_shared<Document>(report_, logo_);
      document_->setSetup(setup_);
    }
    Page page;
    while (xml_.readNextStartElement()) {
      expect(xml_.name() == QLatin1String("Band"));
      bool index = false, top = false;
      const uint band = xml_.attributes().value("Index").toUInt(&index);
      const float at = xml_.attributes().value("Top").toFloat(&top);
      expect(index && top && band < report_->bands.size() && std::abs(at) <= kLongest);
      page.add({band, at});
      std::size_t texts = 0;
      while (xml_.readNextStartElement()) {
        expect(xml_.name() == QLatin1String("Text"));
        page.addText(xml_.readElementText().toStdString());
        ++texts;
      }
      expect(!xml_.hasError() && texts == textCount(report_->bands[band]));
    }
    page.shrink();
    document_->add(std::move(page));
  }

  QFile& file_;
  const Progress& progress_;
  QXmlStreamReader xml_;
  QString path_;
  std::shared_ptr<const Template> report_;
  PageSetup setup_;
  SharedBytes logo_;
  std::shared_ptr<Document> document_;
};

}  // namespace

bool savePages(const Document& document, const QString& path, const Progress& progress) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) throw failure(path, kCannotWrite, file.errorString());
  QXmlStreamWriter xml(&file);
  xml.writeStartDocument();
  xml.writeStartElement(kRoot);
  xml.writeAttribute("Version", kVersion);
  writeTemplate(xml, document.report());
  writeSetup(xml, document.setup());
  if (document.logo()) writeLogo(xml, *document.logo());
  for (std::size_t page = 0; page < document.pageCount(); ++page) {
    writePage(xml, document.report(), document.page(page));
    if (progress && !progress(page + 1, document.pageCount())) return false;
  }
  xml.writeEndDocument();
  if (xml.hasError() || !file.commit()) throw failure(path, kCannotWrite, file.errorString());
  return true;
}

std::shared_ptr<Document> loadPages(const QString& path, const Progress& progress) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw failure(path, "ne peut pas être lu.", file.errorString());
  return PagesReader(file, progress).read();
}

}  // namespace tavoline::report
