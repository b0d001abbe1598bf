#include "toolkit/report/output/Export.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <algorithm>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "toolkit/report/output/ExportText.h"
#include "toolkit/report/output/Painter.h"

namespace tavoline::report {

namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr double kPngScale = 2;  // dots to the unit
constexpr char kFolder[] = "impressions";

[[noreturn]] void fail(const QString& path, const QString& detail) {
  const QString sentence =
      "« " + QDir::toNativeSeparators(path) +
      " » ne peut pas être écrit. Choisissez un autre emplacement ou libérez de la place.";
  throw Error(sentence.toStdString(), detail.toStdString());
}

// A file that appears whole or not at all.
class Target {
 public:
  explicit Target(const QString& path) : file_(path) {
    if (!file_.open(QIODevice::WriteOnly)) fail(path, file_.errorString());
  }
  QSaveFile& device() { return file_; }
  void commit() {
    if (!file_.commit()) fail(file_.fileName(), file_.errorString());
  }

 private:
  QSaveFile file_;
};

bool tell(const Progress& progress, std::size_t done, std::size_t total) {
  return !progress || progress(done, total);
}

QPageLayout sheetOf(const PageSetup& setup) {
  QSizeF size(setup.width, setup.height);
  const bool landscape = setup.landscape && size.width() > size.height();
  if (landscape) size.transpose();
  return {QPageSize(size, QPageSize::Millimeter), landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
          QMarginsF()};
}

bool exportPdf(const Document& document, const QString& path, const Progress& progress) {
  Target target(path);
  {
    QPdfWriter writer(&target.device());
    writer.setResolution(kPdfDotsPerInch);
    writer.setTitle(QString::fromStdString(document.report().title));
    writer.setCreator("Tavoline");
    if (!paintSheets(document, writer, 0, document.pageCount() - 1, progress)) return false;
  }
  target.commit();
  return true;
}

QString numbered(const QString& path, std::size_t page, std::size_t pages) {
  if (pages == 1) return path;
  const QFileInfo info(path);
  const int digits = static_cast<int>(QString::number(pages).size());
  return info.dir().filePath(QString("%1-%2.%3")
                                 .arg(info.completeBaseName())
                                 .arg(page + 1, digits, 10, QLatin1Char('0'))
                                 .arg(info.suffix()));
}

void writePicture(const QImage& image, const QString& path) {
  Target target(path);
  if (!image.save(&target.device(), "PNG")) fail(path, target.device().errorString());
  target.commit();
}

bool exportPng(const Document& document, const QString& path, const Progress& progress) {
  const PagePainter pages(document);
  const QSize size =
      (QSizeF(document.setup().unitWidth(), document.setup().unitHeight()) * kPngScale).toSize();
  const std::size_t count = document.pageCount();
  std::size_t written = 0;
  const auto undo = [&] {
    while (written > 0) QFile::remove(numbered(path, --written, count));
  };
  for (std::size_t page = 0; page < count; ++page) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    pages.paint(painter, page, {0, 0}, kPngScale);
    painter.end();
    try {
      writePicture(image, numbered(path, page, count));
    } catch (...) {
      undo();
      throw;
    }
    ++written;
    if (tell(progress, page + 1, count)) continue;
    undo();
    return false;
  }
  return true;
}

using PageWriter = QByteArray (*)(const Document&, std::size_t page);

bool exportText(const Document& document, const QString& path, const Progress& progress,
                const QByteArray& head, PageWriter write, const QByteArray& foot) {
  Target target(path);
  target.device().write(head);
  for (std::size_t page = 0; page < document.pageCount(); ++page) {
    target.device().write(write(document, page));
    if (!tell(progress, page + 1, document.pageCount())) return false;
  }
  target.device().write(foot);
  target.commit();
  return true;
}

}  // namespace

const std::vector<ExportFormat>& exportFormats() {
  static const std::vector<ExportFormat> formats = {{"pdf", "Document PDF (*.pdf)"},
                                                    {"png", "Images PNG (*.png)"},
                                                    {"html", "Page HTML (*.html)"},
                                                    {"csv", "Tableau CSV (*.csv)"},
                                                    {"txt", "Texte (*.txt)"}};
  return formats;
}

bool exportDocument(const Document& document, const QString& path, const Progress& progress) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == QLatin1String("png")) return exportPng(document, path, progress);
  if (suffix == QLatin1String("html"))
    return exportText(document, path, progress, htmlHead(document), htmlPage, htmlFoot());
  if (suffix == QLatin1String("csv"))
    return exportText(document, path, progress, "\xEF\xBB\xBF", csvPage, {});
  if (suffix == QLatin1String("txt")) return exportText(document, path, progress, {}, textPage, {});
  return exportPdf(document, path, progress);
}

bool paintSheets(const Document& document, QPagedPaintDevice& device, std::size_t from, std::size_t to,
                 const Progress& progress) {
  device.setPageLayout(sheetOf(document.setup()));
  const PagePainter pages(document);
  QPainter painter;
  if (!painter.begin(&device))
    throw Error("L'impression ne peut pas commencer : l'imprimante ou le fichier ne répond pas.");
  const double scale = device.logicalDpiX() / 96.0;
  for (std::size_t page = from; page <= to; ++page) {
    if (page != from && !device.newPage()) {
      throw Error(
          "L'impression s'est arrêtée : l'imprimante ne répond plus. Vérifiez-la, puis imprimez de nouveau.");
    }
    pages.paint(painter, page, {0, 0}, scale);
    if (!tell(progress, page - from + 1, to - from + 1)) return false;
  }
  if (!painter.end())
    throw Error("Le document n'a pas pu être mené à sa fin : l'imprimante ou le fichier ne répond plus.");
  return true;
}

namespace {

// Other workstations print in the same second into the same folder: a name is theirs whose empty file it is.
QString takeName(const QDir& folder, const QString& proposed) {
  const QFileInfo first(proposed);
  for (int again = 1;; ++again) {
    const QString name =
        again == 1 ? proposed
                   : QString("%1 (%2).%3").arg(first.completeBaseName()).arg(again).arg(first.suffix());
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) return file.fileName();
    if (!file.exists()) fail(file.fileName(), file.errorString());
  }
}

// The number of an order or an invoice is what its barcode holds. As a part of a file's name, with a blank
// before it; empty for a document without one.
QString numberOf(const Document& document) {
  if (document.empty()) return {};
  for (const Item& item : document.items(0)) {
    if (item.object->kind != ObjectKind::BarCode || item.text.empty()) continue;
    QString number = QString::fromUtf8(item.text.data(), qsizetype(item.text.size())).trimmed().left(40);
    for (QChar& sign : number)
      if (!sign.isLetterOrNumber() && sign != u' ' && sign != u'-') sign = u'-';
    return u' ' + number;
  }
  return {};
}

}  // namespace

QString proposedName(const Document& document, const QString& suffix) {
  const DateTime now = Clock::now();
  const std::string& title = document.report().title;
  return QString("%1%2 %3-%4-%5 %6h%7m%8.")
             .arg(QString::fromStdString(title.empty() ? document.report().name : title), numberOf(document))
             .arg(now.year(), 4, 10, QLatin1Char('0'))
             .arg(now.month(), 2, 10, QLatin1Char('0'))
             .arg(now.day(), 2, 10, QLatin1Char('0'))
             .arg(now.hour(), 2, 10, QLatin1Char('0'))
             .arg(now.minute(), 2, 10, QLatin1Char('0'))
             .arg(now.second(), 2, 10, QLatin1Char('0')) +
         suffix;
}

QString quickExport(const Document& document, const Progress& progress) {
  if (!QDir::current().mkpath(kFolder)) fail(QDir::current().filePath(kFolder), {});
  const QDir folder(QDir::current().filePath(kFolder));
  QString path = takeName(folder, proposedName(document, "pdf"));
  try {
    if (exportDocument(document, path, progress)) return path;
  } catch (...) {
    QFile::remove(path);
    throw;
  }
  QFile::remove(path);
  return {};
}

}  // namespace tavoline::report
