#include "toolkit/report/model/Attributes.h"

#include <cmath>

namespace tavoline::report {

namespace {

template <class E>
struct Spelled {
  const char* word;
  E value;
};

constexpr std::array<Spelled<HAlign>, 4> kHAligns{{{"haLeft", HAlign::Left},
                                                   {"haRight", HAlign::Right},
                                                   {"haCenter", HAlign::Center},
                                                   {"haBlock", HAlign::Block}}};
constexpr std::array<Spelled<VAlign>, 3> kVAligns{
    {{"vaTop", VAlign::Top}, {"vaCenter", VAlign::Center}, {"vaBottom", VAlign::Bottom}}};
constexpr std::array<Spelled<FrameStyle>, 2> kFrameStyles{
    {{"fsSolid", FrameStyle::Solid}, {"fsDot", FrameStyle::Dot}}};
constexpr std::array<Spelled<EstablishmentPart>, 5> kParts{{{"", EstablishmentPart::None},
                                                            {"name", EstablishmentPart::Name},
                                                            {"address", EstablishmentPart::Address},
                                                            {"foot", EstablishmentPart::Foot},
                                                            {"logo", EstablishmentPart::Logo}}};
constexpr std::array<Spelled<bool>, 2> kOrientations{{{"poPortrait", false}, {"poLandscape", true}}};
constexpr std::array<Spelled<bool>, 2> kFlags{{{"false", false}, {"true", true}}};

constexpr std::array<Spelled<unsigned>, 4> kSides{
    {{"ftLeft", SideLeft}, {"ftRight", SideRight}, {"ftTop", SideTop}, {"ftBottom", SideBottom}}};
constexpr std::array<Spelled<unsigned>, 3> kFontStyles{
    {{"fsBold", FontBold}, {"fsItalic", FontItalic}, {"fsUnderline", FontUnderline}}};
constexpr std::array<Spelled<unsigned>, 14> kButtons{{{"print", ButtonPrint},
                                                      {"load", ButtonLoad},
                                                      {"save", ButtonSave},
                                                      {"export", ButtonExport},
                                                      {"zoom", ButtonZoom},
                                                      {"find", ButtonFind},
                                                      {"outline", ButtonOutline},
                                                      {"pageSetup", ButtonPageSetup},
                                                      {"tools", ButtonTools},
                                                      {"edit", ButtonEdit},
                                                      {"navigator", ButtonNavigator},
                                                      {"quickExport", ButtonQuickExport},
                                                      {"copy", ButtonCopy},
                                                      {"selection", ButtonSelection}}};

template <class T, double T::*M>
Attribute<T> number(const char* name) {
  return {
      name,
      [](T& target, const QString& text) {
        bool read = false;
        target.*M = text.toDouble(&read);
        return read && std::isfinite(target.*M);
      },
      [](const T& source) { return source.*M == T{}.*M ? QString() : QString::number(source.*M, 'g', 15); }};
}

template <class T, int T::*M>
Attribute<T> integer(const char* name) {
  return {name,
          [](T& target, const QString& text) {
            bool read = false;
            target.*M = text.toInt(&read);
            return read;
          },
          [](const T& source) { return source.*M == T{}.*M ? QString() : QString::number(source.*M); }};
}

template <class T, std::string T::*M>
Attribute<T> text(const char* name) {
  return {
      name,
      [](T& target, const QString& text) {
        target.*M = text.toStdString();
        return true;
      },
      [](const T& source) { return source.*M == T{}.*M ? QString() : QString::fromStdString(source.*M); }};
}

template <class T, auto M, const auto& Words>
Attribute<T> word(const char* name) {
  return {name,
          [](T& target, const QString& text) {
            for (const auto& entry : Words) {
              if (text != QLatin1String(entry.word)) continue;
              target.*M = entry.value;
              return true;
            }
            return false;
          },
          [](const T& source) {
            if (source.*M == T{}.*M) return QString();
            for (const auto& entry : Words) {
              if (entry.value == source.*M) return QString::fromLatin1(entry.word);
            }
            return QString();
          }};
}

template <class T, unsigned T::*M, const auto& Words>
Attribute<T> words(const char* name) {
  return {name,
          [](T& target, const QString& text) {
            target.*M = 0;
            for (const QString& part : text.split(u' ', Qt::SkipEmptyParts)) {
              unsigned bit = 0;
              for (const auto& entry : Words) {
                if (part == QLatin1String(entry.word)) bit = entry.value;
              }
              if (bit == 0) return false;
              target.*M |= bit;
            }
            return true;
          },
          [](const T& source) {
            if (source.*M == T{}.*M) return QString();
            QStringList parts;
            for (const auto& entry : Words) {
              if (source.*M & entry.value) parts += QString::fromLatin1(entry.word);
            }
            return parts.join(u' ');
          }};
}

template <class T, Colour T::*M>
Attribute<T> colour(const char* name) {
  return {name,
          [](T& target, const QString& text) {
            bool read = false;
            const uint value = text.mid(1).toUInt(&read, 16);
            target.*M = value;
            return read && text.size() == 7 && text.startsWith(u'#');
          },
          [](const T& source) {
            if (source.*M == T{}.*M) return QString();
            return QString::fromLatin1("#%1").arg(source.*M, 6, 16, QLatin1Char('0'));
          }};
}

// An attribute with one permitted value: it says what holds for every document here.
template <class T, const char* Value>
Attribute<T> fixed(const char* name) {
  return {name, [](T&, const QString& text) { return text == QLatin1String(Value); },
          [](const T&) { return QString::fromLatin1(Value); }};
}
constexpr char kCode128[] = "bcCode128";
constexpr char kNo[] = "false";
constexpr char kZero[] = "0";
constexpr char kRatio[] = "2";

Attribute<Object> barcodeExpression() {
  return {"Expression",
          [](Object& target, const QString& text) {
            auto field = parseFieldExpression(text.toStdString());
            if (const auto* name = std::get_if<FieldName>(&field)) target.barcode = *name;
            return std::holds_alternative<FieldName>(field);
          },
          [](const Object& source) { return QString::fromStdString(writeFieldExpression(source.barcode)); }};
}

template <class T>
Attributes<T> joined(Attributes<T> first, const Attributes<T>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

Attributes<Object> placeAttributes() {
  return {text<Object, &Object::name>("Name"),       number<Object, &Object::left>("Left"),
          number<Object, &Object::top>("Top"),       number<Object, &Object::width>("Width"),
          number<Object, &Object::height>("Height"), word<Object, &Object::visible, kFlags>("Visible")};
}

Attributes<Object> frameAttributes() {
  return {words<Object, &Object::frame, kSides>("Frame.Typ"),
          word<Object, &Object::frameStyle, kFrameStyles>("Frame.Style"),
          number<Object, &Object::frameWidth>("Frame.Width"),
          colour<Object, &Object::frameColour>("Frame.Color")};
}

Attributes<Object> memoAttributes() {
  return {word<Object, &Object::source, kParts>("Source"),
          word<Object, &Object::hAlign, kHAligns>("HAlign"),
          word<Object, &Object::vAlign, kVAligns>("VAlign"),
          word<Object, &Object::wordWrap, kFlags>("WordWrap"),
          word<Object, &Object::shadow, kFlags>("Frame.DropShadow"),
          colour<Object, &Object::fill>("Fill.BackColor"),
          text<Object, &Object::displayFormat>("DisplayFormat"),
          text<Object, &Object::fontName>("Font.Name"),
          number<Object, &Object::fontSize>("Font.Size"),
          words<Object, &Object::fontStyle, kFontStyles>("Font.Style"),
          colour<Object, &Object::fontColour>("Font.Color")};
}

}  // namespace

const Attributes<Template>& reportAttributes() {
  static const Attributes<Template> table = {
      text<Template, &Template::name>("Name"),
      text<Template, &Template::title>("Title"),
      text<Template, &Template::establishment>("Establishment"),
      text<Template, &Template::preview>("Preview"),
      number<Template, &Template::previewZoom>("PreviewOptions.Zoom"),
      words<Template, &Template::previewButtons, kButtons>("PreviewOptions.Buttons"),
      text<Template, &Template::printer>("PrintOptions.Printer"),
      integer<Template, &Template::printOnSheet>("PrintOptions.PrintOnSheet"),
      word<Template, &Template::showDialog, kFlags>("PrintOptions.ShowDialog")};
  return table;
}

const Attributes<ReportDataset>& datasetAttributes() {
  static const Attributes<ReportDataset> table = {text<ReportDataset, &ReportDataset::userName>("UserName"),
                                                  text<ReportDataset, &ReportDataset::dataSet>("DataSet"),
                                                  fixed<ReportDataset, kNo>("CloseDataSource"),
                                                  fixed<ReportDataset, kNo>("BCDToCurrency")};
  return table;
}

const Attributes<PageSetup>& pageAttributes() {
  static const Attributes<PageSetup> table = {
      integer<PageSetup, &PageSetup::paperSize>("PaperSize"),
      number<PageSetup, &PageSetup::width>("PaperWidth"),
      number<PageSetup, &PageSetup::height>("PaperHeight"),
      word<PageSetup, &PageSetup::landscape, kOrientations>("Orientation"),
      number<PageSetup, &PageSetup::marginLeft>("LeftMargin"),
      number<PageSetup, &PageSetup::marginRight>("RightMargin"),
      number<PageSetup, &PageSetup::marginTop>("TopMargin"),
      number<PageSetup, &PageSetup::marginBottom>("BottomMargin")};
  return table;
}

const Attributes<Band>& bandAttributes(BandKind kind) {
  static const Attributes<Band> common = {text<Band, &Band::name>("Name"), number<Band, &Band::top>("Top"),
                                          number<Band, &Band::height>("Height")};
  static const Attributes<Band> data =
      joined(common, {text<Band, &Band::dataSet>("DataSet"), fixed<Band, kZero>("RowCount")});
  return kind == BandKind::MasterData ? data : common;
}

const Attributes<Object>& objectAttributes(ObjectKind kind) {
  static const Attributes<Object> memo =
      joined(joined(placeAttributes(), frameAttributes()), memoAttributes());
  static const Attributes<Object> picture =
      joined(joined(placeAttributes(), frameAttributes()), {word<Object, &Object::source, kParts>("Source")});
  static const Attributes<Object> line = joined(placeAttributes(), frameAttributes());
  static const Attributes<Object> barcode =
      joined(placeAttributes(), {fixed<Object, kCode128>("BarType"), barcodeExpression(),
                                 fixed<Object, kNo>("ShowText"), fixed<Object, kRatio>("WideBarRatio"),
                                 fixed<Object, kZero>("Rotation"), number<Object, &Object::zoom>("Zoom")});
  switch (kind) {
    case ObjectKind::Picture:
      return picture;
    case ObjectKind::Line:
      return line;
    case ObjectKind::BarCode:
      return barcode;
    case ObjectKind::Memo:
    case ObjectKind::SysMemo:
      break;
  }
  return memo;
}

namespace {

constexpr std::array<Spelled<BandKind>, 4> kBands{{{"TfrxReportTitle", BandKind::Title},
                                                   {"TfrxMasterData", BandKind::MasterData},
                                                   {"TfrxReportSummary", BandKind::Summary},
                                                   {"TfrxPageFooter", BandKind::PageFooter}}};
constexpr std::array<Spelled<ObjectKind>, 5> kObjects{{{"TfrxMemoView", ObjectKind::Memo},
                                                       {"TfrxSysMemoView", ObjectKind::SysMemo},
                                                       {"TfrxPictureView", ObjectKind::Picture},
                                                       {"TfrxBarCodeView", ObjectKind::BarCode},
                                                       {"TfrxLineView", ObjectKind::Line}}};

template <class E, std::size_t N>
bool valueOf(const std::array<Spelled<E>, N>& words, QStringView element, E& value) {
  for (const auto& entry : words) {
    if (element != QLatin1String(entry.word)) continue;
    value = entry.value;
    return true;
  }
  return false;
}

template <class E, std::size_t N>
const char* wordOf(const std::array<Spelled<E>, N>& words, E value) {
  for (const auto& entry : words) {
    if (entry.value == value) return entry.word;
  }
  return nullptr;
}

}  // namespace

const char* elementName(BandKind kind) {
  return wordOf(kBands, kind);
}
const char* elementName(ObjectKind kind) {
  return wordOf(kObjects, kind);
}
bool bandKind(QStringView element, BandKind& kind) {
  return valueOf(kBands, element, kind);
}
bool objectKind(QStringView element, ObjectKind& kind) {
  return valueOf(kObjects, element, kind);
}

}  // namespace tavoline::report
