#include <QtCore/QXmlStreamReader>
#include <algorithm>
#include <set>

#include "data/value/Text.h"
#include "toolkit/report/model/Attributes.h"
#include "toolkit/report/model/Template.h"

namespace tavoline::report {

namespace {

// Where an element starts. Thrown with a sentence inside this file only; readTemplate gives it back as a
// value.
struct Place {
  std::int64_t line = 1, column = 1;
};

TemplateError error(const Place& place, const QString& sentence) {
  return TemplateError{place.line, place.column, sentence.toStdString()};
}

struct ReadBand {
  Band band;
  Place place;
  std::vector<Place> objects;
};

class TemplateReader {
 public:
  explicit TemplateReader(QXmlStreamReader& xml) : xml_(xml) {}

  std::shared_ptr<const Template> read() {
    reportPlace_ = here();
    attributes(reportAttributes(), report_);
    forEachChild([this] {
      if (xml_.name() == QLatin1String("TfrxDBDataset")) return readDataset();
      if (xml_.name() == QLatin1String("TfrxReportPage")) return readPage();
      unknownElement("TfrxReport");
    });
    check();
    return std::make_shared<const Template>(std::move(report_));
  }

 private:
  // The reader tells where a token ends; the end of the token before is where this one starts. Behind a text
  // it has already taken the bracket that ended it.
  QXmlStreamReader::TokenType next() {
    before_ = {xml_.lineNumber(), xml_.columnNumber() + (xml_.isCharacters() ? 0 : 1)};
    const auto token = xml_.readNext();
    if (xml_.hasError()) {
      throw error({xml_.lineNumber(), xml_.columnNumber() + 1}, "ce n'est pas du XML bien formé");
    }
    return token;
  }
  Place here() const { return before_; }

  template <class F>
  void forEachChild(F child) {
    while (next() != QXmlStreamReader::EndElement) {
      if (xml_.isStartElement()) {
        child();
      } else if (xml_.isCharacters() && !xml_.isWhitespace()) {
        throw error(here(), "un texte ne se place que dans un TfrxMemoView");
      }
    }
  }

  void endOfElement() {
    const QString name = xml_.name().toString();
    forEachChild([&] { unknownElement(name); });
  }

  [[noreturn]] void unknownElement(const QString& within) {
    throw error(here(),
                "l'élément « " + xml_.name().toString() + " » n'est pas connu dans « " + within + " »");
  }

  template <class T>
  void attributes(const Attributes<T>& known, T& target) {
    for (const QXmlStreamAttribute& given : xml_.attributes()) {
      const auto found = std::find_if(known.begin(), known.end(), [&](const Attribute<T>& attribute) {
        return given.name() == QLatin1String(attribute.name);
      });
      if (found == known.end()) {
        throw error(here(), "l'attribut « " + given.name().toString() + " » n'est pas connu pour « " +
                                xml_.name().toString() + " »");
      }
      if (!found->read(target, given.value().toString())) {
        throw error(here(), "la valeur « " + given.value().toString() + " » ne convient pas à l'attribut « " +
                                given.name().toString() + " »");
      }
    }
  }

  void readDataset() {
    ReportDataset dataset;
    const Place place = here();
    attributes(datasetAttributes(), dataset);
    if (dataset.userName.empty()) throw error(place, "une source de données doit porter un nom (UserName)");
    if (sourceOf(dataset.userName) >= 0) {
      throw error(place,
                  "la source « " + QString::fromStdString(dataset.userName) + " » est déclarée deux fois");
    }
    forEachChild([&] {
      if (xml_.name() != QLatin1String("FieldAlias")) unknownElement("TfrxDBDataset");
      dataset.aliases.emplace_back(required("Field"), required("Alias"));
      endOfElement();
    });
    report_.datasets.push_back(std::move(dataset));
  }

  std::string required(const char* name) {
    const QString value = xml_.attributes().value(QLatin1String(name)).toString();
    if (value.isEmpty()) {
      throw error(here(), "il manque l'attribut « " + QString::fromLatin1(name) + " » à « " +
                              xml_.name().toString() + " »");
    }
    return value.toStdString();
  }

  void readPage() {
    if (pageRead_) throw error(here(), "un document n'a qu'une page (TfrxReportPage)");
    pageRead_ = true;
    const Place place = here();
    attributes(pageAttributes(), report_.page);
    const PageSetup& page = report_.page;
    if (page.width <= page.marginLeft + page.marginRight ||
        page.height <= page.marginTop + page.marginBottom) {
      throw error(place, "les marges ne laissent aucune place sur la page");
    }
    forEachChild([this] {
      BandKind kind{};
      if (!bandKind(xml_.name(), kind)) unknownElement("TfrxReportPage");
      readBand(kind);
    });
  }

  void readBand(BandKind kind) {
    ReadBand read;
    read.place = here();
    read.band.kind = kind;
    attributes(bandAttributes(kind), read.band);
    if (read.band.height < 0) throw error(read.place, "la hauteur d'une bande n'est pas négative");
    forEachChild([&] {
      ObjectKind object{};
      if (!objectKind(xml_.name(), object)) unknownElement(QLatin1String(elementName(kind)));
      read.objects.push_back(here());
      read.band.objects.push_back(readObject(object));
    });
    bands_.push_back(std::move(read));
  }

  Object readObject(ObjectKind kind) {
    Object object;
    object.kind = kind;
    const Place place = here();
    attributes(objectAttributes(kind), object);
    if (object.width < 0 || object.height < 0) throw error(place, "la taille d'un objet n'est pas négative");
    if (kind != ObjectKind::Memo && kind != ObjectKind::SysMemo) {
      endOfElement();
      return object;
    }
    QString text;
    while (next() != QXmlStreamReader::EndElement) {
      if (xml_.isStartElement()) unknownElement(QLatin1String(elementName(kind)));
      if (xml_.isCharacters()) text += xml_.text();
    }
    auto parsed = parseMemoText(text.toStdString());
    if (const auto* wrong = std::get_if<ExpressionError>(&parsed)) {
      throw error(place, QString::fromStdString(wrong->sentence));
    }
    object.text = std::get<MemoText>(std::move(parsed));
    return object;
  }

  int sourceOf(const std::string& userName) const {
    for (std::size_t i = 0; i < report_.datasets.size(); ++i) {
      if (sameName(report_.datasets[i].userName, userName)) return static_cast<int>(i);
    }
    return -1;
  }

  void check() {
    if (!pageRead_) throw error(reportPlace_, "il manque la page (TfrxReportPage)");
    std::stable_sort(bands_.begin(), bands_.end(), [](const ReadBand& a, const ReadBand& b) {
      if (a.band.kind != b.band.kind) return a.band.kind < b.band.kind;
      return a.band.kind == BandKind::MasterData && a.band.top < b.band.top;
    });
    checkBands();
    for (ReadBand& read : bands_) {
      for (std::size_t i = 0; i < read.objects.size(); ++i)
        checkObject(read.objects[i], read.band.objects[i]);
    }
    for (ReadBand& read : bands_) report_.bands.push_back(std::move(read.band));
  }

  void checkBands() {
    std::set<std::string> names;
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      Band& band = bands_[i].band;
      const Place& place = bands_[i].place;
      if (!band.name.empty() && !names.insert(foldName(band.name)).second) {
        throw error(place, "deux bandes se nomment « " + QString::fromStdString(band.name) + " »");
      }
      if (band.kind == BandKind::MasterData) {
        band.source = known(place, band.dataSet);
      } else if (i > 0 && bands_[i - 1].band.kind == band.kind) {
        throw error(place, "la bande « " + QString::fromLatin1(elementName(band.kind)) +
                               " » ne peut exister qu'une fois");
      }
    }
  }

  int known(const Place& place, const std::string& userName) const {
    const int source = sourceOf(userName);
    if (source >= 0) return source;
    throw error(place,
                "la source de données « " + QString::fromStdString(userName) + " » n'est pas déclarée");
  }

  void checkObject(const Place& place, Object& object) {
    if (object.kind == ObjectKind::BarCode) {
      if (object.barcode.field.empty())
        throw error(place, "un code à barres demande une valeur (Expression)");
      resolve(place, object.barcode);
    }
    if (object.kind == ObjectKind::Picture && object.source != EstablishmentPart::Logo) {
      throw error(place, "une image montre le logo de l'établissement (Source=\"logo\")");
    }
    for (auto& piece : object.text) {
      auto* expression = std::get_if<Expression>(&piece);
      if (!expression) continue;
      if (auto* field = std::get_if<FieldName>(expression)) {
        resolve(place, *field);
      } else {
        for (SumTerm& term : std::get<std::vector<SumTerm>>(*expression)) resolve(place, term);
      }
    }
  }

  void resolve(const Place& place, FieldName& name) const {
    name.source = known(place, name.dataset);
    for (const auto& [own, alias] : report_.datasets[static_cast<std::size_t>(name.source)].aliases) {
      if (!sameName(alias, name.field)) continue;
      name.field = own;
      return;
    }
  }

  void resolve(const Place& place, SumTerm& term) {
    resolve(place, term.field);
    Aggregate wanted{term.field, bandOf(place, term)};
    for (std::size_t i = 0; i < report_.aggregates.size() && term.aggregate < 0; ++i) {
      const Aggregate& known = report_.aggregates[i];
      if (known.band == wanted.band && known.field == wanted.field) term.aggregate = static_cast<int>(i);
    }
    if (term.aggregate >= 0) return;
    term.aggregate = static_cast<int>(report_.aggregates.size());
    report_.aggregates.push_back(std::move(wanted));
  }

  int bandOf(const Place& place, const SumTerm& term) const {
    for (std::size_t i = 0; i < bands_.size(); ++i) {
      const Band& band = bands_[i].band;
      if (band.kind != BandKind::MasterData) continue;
      if (term.band.empty() ? band.source == term.field.source : sameName(band.name, term.band)) {
        return static_cast<int>(i);
      }
    }
    if (term.band.empty()) {
      throw error(place, "aucune bande de données ne parcourt « " +
                             QString::fromStdString(term.field.dataset) +
                             " », la somme n'a rien à additionner");
    }
    throw error(place, "la bande de données « " + QString::fromStdString(term.band) + " » n'existe pas");
  }

  QXmlStreamReader& xml_;
  Template report_;
  std::vector<ReadBand> bands_;
  Place before_, reportPlace_;
  bool pageRead_ = false;
};

}  // namespace

TemplateResult readTemplate(QXmlStreamReader& xml) {
  try {
    return TemplateReader(xml).read();
  } catch (const TemplateError& wrong) {
    return wrong;
  }
}

TemplateResult readTemplate(const QByteArray& text) {
  QXmlStreamReader xml(text);
  xml.readNextStartElement();
  if (xml.hasError() || xml.name() != QLatin1String("TfrxReport")) {
    const QString sentence = xml.hasError() ? QString("ce n'est pas du XML bien formé")
                                            : QString("ce n'est pas un modèle de document (TfrxReport)");
    return error({xml.lineNumber(), xml.columnNumber() + 1}, sentence);
  }
  TemplateResult result = readTemplate(xml);
  while (!xml.atEnd() && !xml.hasError()) xml.readNext();
  if (!xml.hasError() || std::holds_alternative<TemplateError>(result)) return result;
  return error({xml.lineNumber(), xml.columnNumber() + 1}, "ce n'est pas du XML bien formé");
}

}  // namespace tavoline::report
