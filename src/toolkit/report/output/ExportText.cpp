#include "toolkit/report/output/ExportText.h"

#include <QtCore/QString>
#include <algorithm>

#include "data/value/Figures.h"
#include "toolkit/report/model/Code128.h"
#include "toolkit/report/model/Lines.h"
#include "toolkit/report/output/FittedWords.h"

namespace tavoline::report {

namespace {

constexpr char kPngStart[] = "iVBOR";    // of a PNG in base 64
constexpr double kCharacterWidth = 6.0;  // units that one character of a text export stands for

QByteArray number(double value) {
  return QByteArray::number(value, 'f', 2);
}

QByteArray cssColour(Colour colour) {
  return "#" + QByteArray::number(colour & 0xFFFFFFU, 16).rightJustified(6, '0');
}

// Characters that steer a terminal, turn the direction of writing round or have no place in a document of
// this kind, not even escaped, are replaced.
QString readable(std::string_view text) {
  QString words = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  for (QChar& letter : words) {
    const char16_t code = letter.unicode();
    const bool blank = code == u'\n' || code == u'\t' || code == u'\r';
    const bool control = (code < 0x20 && !blank) || (code >= 0x7F && code < 0xA0) || code >= 0xFFFE;
    const bool turns = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    if (control || turns) letter = QChar::ReplacementCharacter;
  }
  return words;
}

// What a spreadsheet would run in place of showing it; a number with its sign is one.
bool beginsFormula(std::string_view text) {
  const std::string_view signs = "=+-@\t\r";
  return !text.empty() && signs.find(text.front()) != signs.npos && !isFigure(text);
}

// A spreadsheet that opens the page takes an element for a cell; the blank in front has no width.
QByteArray escaped(std::string_view text) {
  return (beginsFormula(text) ? "&#8203;" : "") + readable(text).toHtmlEscaped().toUtf8();
}

// The style of words too long for their line: they go on below and get smaller, as they do in print. A little
// smaller still, for the letters of another system.
QByteArray fitted(const Item& item) {
  constexpr double kOtherLetters = 0.95;
  const Object& object = *item.object;
  const FittedWords words = fitWords(QString::fromUtf8(item.text), object, item.rect.width, item.rect.height);
  if (words.size >= 1 && (words.lines.size() < 2 || object.wordWrap)) return {};
  return " style=\"font-size:" + number(object.fontSize * words.size * kOtherLetters) +
         "pt;white-space:pre-wrap\"";
}

// The style of a figure too long for its place, which is told smaller and not cut.
QByteArray smaller(const Item& item) {
  constexpr double kWidestDigit = 0.62;  // of the font's height
  constexpr double kPadding = 6;         // units at both sides
  const double most =
      (item.rect.width - kPadding) / (static_cast<double>(item.text.size()) * kWidestDigit * kUnitsPerPoint);
  if (!item.object->hasText()) return {};
  if (!isFigure(item.text)) return fitted(item);
  if (most >= item.object->fontSize) return {};
  return " style=\"font-size:" + number(most) + "pt\"";
}

QByteArray frameStyle(const Object& object) {
  const QByteArray line = QByteArray(object.frameStyle == FrameStyle::Dot ? " dotted " : " solid ") +
                          cssColour(object.frameColour);
  const QByteArray width = number(std::max(1.0, object.frameWidth)) + "px";
  QByteArray style;
  if (object.frame & SideLeft) style += "border-left:" + width + line + ";";
  if (object.frame & SideRight) style += "border-right:" + width + line + ";";
  if (object.frame & SideTop) style += "border-top:" + width + line + ";";
  if (object.frame & SideBottom) style += "border-bottom:" + width + line + ";";
  if (object.fill != kNoColour) style += "background:" + cssColour(object.fill) + ";";
  if (object.shadow) style += "box-shadow:4px 4px 0 " + cssColour(object.frameColour) + ";";
  return style;
}

QByteArray fontStyle(const Object& object) {
  static constexpr const char* kHorizontal[] = {"flex-start", "flex-end", "center", "flex-start"};
  static constexpr const char* kAlign[] = {"left", "right", "center", "justify"};
  static constexpr const char* kVertical[] = {"flex-start", "center", "flex-end"};
  QByteArray style =
      "font-size:" + number(object.fontSize) + "pt;color:" + cssColour(object.fontColour) + ";";
  if ((object.fontStyle & FontBold) || object.fontName == "Arial Black") style += "font-weight:bold;";
  if (object.fontStyle & FontItalic) style += "font-style:italic;";
  if (object.fontStyle & FontUnderline) style += "text-decoration:underline;";
  style += QByteArray("text-align:") + kAlign[static_cast<int>(object.hAlign)] + ";";
  style += QByteArray("justify-content:") + kHorizontal[static_cast<int>(object.hAlign)] + ";";
  style += QByteArray("align-items:") + kVertical[static_cast<int>(object.vAlign)] + ";";
  return style + (object.wordWrap ? "white-space:pre-wrap;" : "white-space:pre;");
}

// What a page says of an object is its words; where it stands in its band and how it looks is told once, for
// a class that bears the places of both in the template.
QByteArray className(std::size_t band, std::size_t object) {
  return "b" + QByteArray::number(static_cast<qulonglong>(band)) + "o" +
         QByteArray::number(static_cast<qulonglong>(object));
}

QByteArray rule(const Object& object) {
  QByteArray style = "left:" + number(object.left) + "px;top:" + number(object.top) +
                     "px;width:" + number(object.width) + "px;height:" + number(object.height) + "px;";
  const bool memo = object.kind == ObjectKind::Memo || object.kind == ObjectKind::SysMemo;
  if (memo || object.kind == ObjectKind::Line) style += frameStyle(object);
  if (object.kind == ObjectKind::Picture) style += "object-fit:contain;";
  return memo ? style + "display:flex;padding:0 3px;line-height:1.15;" + fontStyle(object) : style;
}

QByteArray rules(const Template& report) {
  QByteArray text;
  for (std::size_t band = 0; band < report.bands.size(); ++band) {
    const std::vector<Object>& objects = report.bands[band].objects;
    for (std::size_t i = 0; i < objects.size(); ++i) {
      if (objects[i].visible) text += "." + className(band, i) + " { " + rule(objects[i]) + " }\n";
    }
  }
  return text;
}

QByteArray barcode(const Item& item, const QByteArray& name) {
  const std::vector<bool> modules = code128(item.text);
  const double room = item.rect.width / (static_cast<double>(modules.size()) + 20);
  const double module = std::min(item.object->zoom, room);
  double left = (item.rect.width - module * static_cast<double>(modules.size())) / 2;
  QByteArray bars;
  for (const bool bar : modules) {
    if (bar) {
      bars += "<i style=\"left:" + number(left) + "px;width:" + number(module) + "px\"></i>";
    }
    left += module;
  }
  return "<div class=\"bars " + name + "\" title=\"" + escaped(item.text) + "\">" + bars + "</div>\n";
}

QByteArray picture(const Document& document, const QByteArray& name) {
  if (!document.logo()) return {};
  const Bytes& bytes = *document.logo();
  const QByteArray data =
      QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()))
          .toBase64();
  return "<img alt=\"\" class=\"" + name +
         "\" src=\"data:" + (data.startsWith(kPngStart) ? "image/png" : "image/jpeg") + ";base64," + data +
         "\"/>\n";
}

QByteArray element(const Document& document, const Item& item, const QByteArray& name) {
  switch (item.object->kind) {
    case ObjectKind::BarCode:
      return barcode(item, name);
    case ObjectKind::Picture:
      return picture(document, name);
    case ObjectKind::Line:
    case ObjectKind::Memo:
    case ObjectKind::SysMemo:
      break;
  }
  return "<div class=\"" + name + "\"" + smaller(item) + ">" + escaped(item.text) + "</div>\n";
}

QByteArray csvField(const std::string& text) {
  QByteArray words = (beginsFormula(text) ? "'" : "") + readable(text).toUtf8();
  if (words.indexOf(';') < 0 && words.indexOf('"') < 0 && words.indexOf('\n') < 0 && words.indexOf('\r') < 0)
    return words;
  return "\"" + words.replace("\"", "\"\"") + "\"";
}

// Where a word begins on a line of characters, so that what is aligned on paper is aligned in the text.
qsizetype column(const Word& word, qsizetype length) {
  const double left = word.rect.left / kCharacterWidth;
  const double spare = word.rect.width / kCharacterWidth - static_cast<double>(length);
  switch (word.hAlign) {
    case HAlign::Right:
      return static_cast<qsizetype>(left + spare);
    case HAlign::Center:
      return static_cast<qsizetype>(left + spare / 2);
    case HAlign::Left:
    case HAlign::Block:
      break;
  }
  return static_cast<qsizetype>(left);
}

}  // namespace

QByteArray htmlHead(const Document& document) {
  const QByteArray title = escaped(document.report().title);
  return "<!DOCTYPE html>\n<html lang=\"fr\" xmlns=\"http://www.w3.org/1999/xhtml\">\n<head>\n<meta "
         "charset=\"utf-8\"/>\n"
         "<title>" +
         title +
         "</title>\n<style>\n"
         "body { margin: 0; background: #d8d4cc; font-family: Arial, 'Liberation Sans', sans-serif; }\n"
         ".page { position: relative; margin: 16px auto; background: white; overflow: hidden; break-after: "
         "page; }\n"
         ".page * { position: absolute; box-sizing: border-box; overflow: hidden; }\n"
         ".page .band { left: " +
         number(document.setup().marginLeft * kUnitsPerMm) +
         "px; overflow: visible; }\n"
         ".bars i { top: 0; bottom: 0; background: black; }\n"
         "@media print { body { background: none; } .page { margin: 0; } }\n"
         "@page { margin: 0; size: " +
         number(document.setup().width) + "mm " + number(document.setup().height) + "mm; }\n" +
         rules(document.report()) + "</style>\n</head>\n<body>\n";
}

QByteArray htmlPage(const Document& document, std::size_t page) {
  QByteArray html = "<section class=\"page\" style=\"width:" + number(document.setup().unitWidth()) +
                    "px;height:" + number(document.setup().unitHeight()) + "px\">\n";
  const std::vector<Item> items = document.items(page);
  auto item = items.begin();
  for (const PlacedBand& placed : document.page(page).bands()) {
    const std::vector<Object>& objects = document.report().bands[placed.band].objects;
    html += "<div class=\"band\" style=\"top:" + number(static_cast<double>(placed.top)) + "px\">\n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
      if (objects[i].visible) html += element(document, *item++, className(placed.band, i));
    }
    html += "</div>\n";
  }
  return html + "</section>\n";
}

QByteArray htmlFoot() {
  return "</body>\n</html>\n";
}

QByteArray csvPage(const Document& document, std::size_t page) {
  QByteArray csv;
  for (const auto& cells : readingLines(document.items(page), Reading::Cells)) {
    QByteArray record;
    for (const Word& word : cells) {
      if (&word != &cells.front()) record += ";";
      record += csvField(word.text);
    }
    csv += record + "\r\n";
  }
  return csv;
}

QByteArray textPage(const Document& document, std::size_t page) {
  QString text;
  for (const auto& words : readingLines(document.items(page), Reading::Lines)) {
    QString line;
    for (const Word& word : words) {
      const QString part = QString::fromStdString(word.text).replace(u'\n', u' ');
      const qsizetype start = std::max(column(word, part.size()), line.isEmpty() ? 0 : line.size() + 1);
      line = line.leftJustified(start) + part;
    }
    text += line + u'\n';
  }
  return text.toUtf8() + "\f\n";
}

}  // namespace tavoline::report
