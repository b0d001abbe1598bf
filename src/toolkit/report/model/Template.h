#pragma once

#include <QtCore/QByteArray>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "toolkit/report/model/Expression.h"

class QXmlStreamReader;
class QXmlStreamWriter;

namespace tavoline::report {

/// Positions and sizes are in report units, 96 per inch; paper measures in millimetres.
constexpr double kUnitsPerMm = 3.77953;
/// Font sizes are in points, 72 per inch.
constexpr double kUnitsPerPoint = 96.0 / 72.0;

struct Rect {
  double left = 0, top = 0, width = 0, height = 0;
  double right() const { return left + width; }
  double bottom() const { return top + height; }
};

using Colour = std::uint32_t;  ///< 0xRRGGBB
constexpr Colour kNoColour = 0xFF000000;

enum class ObjectKind { Memo, SysMemo, Picture, BarCode, Line };
enum class HAlign { Left, Right, Center, Block };
enum class VAlign { Top, Center, Bottom };
enum class FrameStyle { Solid, Dot };

/// Sides of a frame, as bits.
enum Side : unsigned { SideLeft = 1, SideRight = 2, SideTop = 4, SideBottom = 8 };
/// Styles of a font, as bits.
enum FontStyle : unsigned { FontBold = 1, FontItalic = 2, FontUnderline = 4 };

/// Where a text or picture comes from that belongs to the installation and not to the template.
enum class EstablishmentPart { None, Name, Address, Foot, Logo };

/// One thing in a band: a text box, a text box for aggregates, a picture, a barcode or a line.
struct Object {
  ObjectKind kind = ObjectKind::Memo;
  std::string name;
  double left = 0, top = 0, width = 0, height = 0;  ///< Within the band.
  bool visible = true;

  MemoText text;
  EstablishmentPart source = EstablishmentPart::None;
  HAlign hAlign = HAlign::Left;
  VAlign vAlign = VAlign::Top;
  bool wordWrap = true;
  std::string displayFormat;  ///< Of numbers, as "%2.2f"; empty for the default text form.
  std::string fontName = "Arial";
  double fontSize = 10;  ///< Points.
  unsigned fontStyle = 0;
  Colour fontColour = 0;

  unsigned frame = 0;  ///< Sides.
  FrameStyle frameStyle = FrameStyle::Solid;
  double frameWidth = 1;
  Colour frameColour = 0;
  bool shadow = false;
  Colour fill = kNoColour;

  FieldName barcode;  ///< What a barcode encodes.
  double zoom = 1;    ///< Width of the narrowest bar, in units.

  /// Whether a placed object carries words: memos their text, barcodes their value.
  bool hasText() const { return kind != ObjectKind::Picture && kind != ObjectKind::Line; }
};

enum class BandKind { Title, MasterData, Summary, PageFooter };

struct Band {
  BandKind kind = BandKind::Title;
  std::string name;
  double top = 0;  ///< Only the order of data bands depends on it.
  double height = 0;
  std::string dataSet;  ///< Of a data band: the report dataset that drives it.
  int source = -1;
  std::vector<Object> objects;  ///< In reading order.
};

/// A page has a fixed height. Measures in millimetres.
struct PageSetup {
  int paperSize = 9;  ///< 9 for A4, 256 for a size of its own.
  double width = 210, height = 297;
  bool landscape = false;  ///< What a printer is told; width and height are those of the page as it is read.
  double marginLeft = 0, marginRight = 0, marginTop = 0, marginBottom = 0;

  double unitWidth() const { return width * kUnitsPerMm; }
  double unitHeight() const { return height * kUnitsPerMm; }
  friend bool operator==(const PageSetup&, const PageSetup&) = default;
};

/// The named door through which a template sees a dataset of the data module.
struct ReportDataset {
  std::string userName;
  std::string dataSet;  ///< Empty: no rows, and fields are empty.
  std::vector<std::pair<std::string, std::string>>
      aliases;  ///< Own name, then the name that expressions use.
};

struct Aggregate {
  FieldName field;
  int band = -1;  ///< Place of the data band in the page.
};

/// What a preview offers, as bits, in the order of its tool bar.
enum PreviewButton : unsigned {
  ButtonPrint = 1,
  ButtonLoad = 2,
  ButtonSave = 4,
  ButtonExport = 8,
  ButtonZoom = 16,
  ButtonFind = 32,
  ButtonOutline = 64,
  ButtonPageSetup = 128,
  ButtonTools = 256,
  ButtonEdit = 512,
  ButtonNavigator = 1024,
  ButtonQuickExport = 2048,
  ButtonCopy = 4096,
  ButtonSelection = 8192,
};
/// What every template offers.
constexpr unsigned kUsualButtons = ButtonCopy - 1;

/// A printed document as data: what its page, bands and objects are and which datasets fill them.
struct Template {
  std::string name;           ///< Unique within its screen: "frxReport1".
  std::string title;          ///< What the document is called in windows and file names.
  std::string establishment;  ///< Which block heads it; empty for the usual one.
  std::string preview;        ///< A preview panel of the owning screen, or empty for a preview of its own.
  double previewZoom = 1;
  unsigned previewButtons = kUsualButtons;
  std::string printer = "Default";
  int printOnSheet = 0;
  bool showDialog = true;

  std::vector<ReportDataset> datasets;
  PageSetup page;
  std::vector<Band> bands;            ///< In printing order: title, data by Top, summary, footer.
  std::vector<Aggregate> aggregates;  ///< Every aggregate that some text shows.

  const Band* band(BandKind kind) const;  ///< The one of its kind; null if there is none.
};

/// Where and why a template cannot be used. Line and column count from 1.
struct TemplateError {
  std::int64_t line = 0, column = 0;
  std::string sentence;  ///< In French.

  std::string text() const;  ///< With its place: "ligne 12, colonne 5 : ...".
};

using TemplateResult = std::variant<std::shared_ptr<const Template>, TemplateError>;

/// Reads and checks a template. Unknown elements, attributes, report datasets, bands and forms of expression
/// are errors, so that a document which loads is one which prints.
TemplateResult readTemplate(const QByteArray& xml);
/// The same inside a larger document: `xml` stands on the start of a TfrxReport, and after it stands on its
/// end.
TemplateResult readTemplate(QXmlStreamReader& xml);
/// The XML from which readTemplate makes the same template again.
void writeTemplate(QXmlStreamWriter& xml, const Template& report);

}  // namespace tavoline::report
