#include <QtCore/QDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include "toolkit/forms/Messages.h"
#include "toolkit/report/model/DocumentFile.h"
#include "toolkit/report/model/Lines.h"
#include "toolkit/report/preview/Outline.h"
#include "toolkit/report/preview/PageSetupU.h"
#include "toolkit/report/preview/PageView.h"
#include "toolkit/report/preview/PreviewU.h"
#include "ui_PreviewU.h"

namespace tavoline {

void PreviewPanel::print() {
  if (!hasPages()) return;
  report::PrintOptions asked = options_;
  asked.ShowDialog = true;
  ProgressBox box("Impression…", this);
  report::print(*document(), asked, this, box.progress());
}

void PreviewPanel::load() {
  const std::string path =
      Messages::current().openFile("Ouvrir des pages enregistrées", report::kPagesFilter);
  if (path.empty()) return;
  std::shared_ptr<report::Document> pages;
  {
    ProgressBox box("Ouverture…", this);
    pages = report::loadPages(QString::fromStdString(path), box.progress());
  }
  if (pages) open({std::move(pages), {}, {}, {}}, options_);
}

QString PreviewPanel::askPath(const QString& title, const QString& filter, const QString& suffix) {
  const QString name = report::proposedName(*document(), suffix);
  QString path = QString::fromStdString(
      Messages::current().saveFile(title.toStdString(), filter.toStdString(), name.toStdString()));
  if (path.isEmpty() || path.endsWith("." + suffix, Qt::CaseInsensitive)) return path;
  return path + "." + suffix;
}

void PreviewPanel::save() {
  if (!hasPages()) return;
  const QString path = askPath("Enregistrer les pages", report::kPagesFilter, report::kPagesSuffix);
  if (path.isEmpty()) return;
  ProgressBox box("Enregistrement…", this);
  report::savePages(*document(), path, box.progress());
}

void PreviewPanel::exportAs(const char* suffix) {
  if (!hasPages()) return;
  QString filter;
  for (const report::ExportFormat& format : report::exportFormats()) {
    if (qstrcmp(format.suffix, suffix) == 0) filter = QString::fromUtf8(format.filter);
  }
  const QString path = askPath("Exporter le document", filter, QLatin1String(suffix));
  if (path.isEmpty()) return;
  ProgressBox box("Exportation…", this);
  report::exportDocument(*document(), path, box.progress());
}

void PreviewPanel::quickExport() {
  if (!hasPages()) return;
  QString path;
  {
    ProgressBox box("Exportation…", this);
    path = report::quickExport(*document(), box.progress());
  }
  if (path.isEmpty()) return;
  const QString told = "Le document est enregistré dans « " + QDir::toNativeSeparators(path) + " ».";
  ShowMessage(told.toStdString());
}

void PreviewPanel::copy() {
  if (!hasPages()) return;
  QString text = pages().selectedText();
  if (!pages().hasSelection()) {
    for (const auto& line :
         report::readingLines(document()->items(pages().currentPage()), report::Reading::Lines)) {
      QStringList words;
      for (const report::Word& word : line) words += QString::fromStdString(word.text).trimmed();
      text += words.join(u'\t') + u'\n';
    }
  }
  QGuiApplication::clipboard()->setText(text);
}

void PreviewPanel::pageSetup() {
  if (!hasPages()) return;
  PageSetupDialog dialog(document()->setup(), this);
  if (dialog.exec() == QDialog::Accepted) applySetup(dialog.setup());
}

void PreviewPanel::applySetup(const report::PageSetup& setup) {
  ProgressBox box("Mise en page…", this);
  if (!document()->rearrange(setup, box.progress())) return;
  pages().changed();
  outline_->setDocument(document());
  updateState();
}

void PreviewPanel::find(bool forward) {
  if (!hasPages()) return;
  if (!ui_->FindBar->isVisible()) return showFindBar(true);
  const std::string text = ui_->FindText->text().toStdString();
  if (text.empty()) return;
  ProgressBox box("Recherche…", this);
  const report::Finder finder(*document(), text, box.progress());
  report::Hit hit;
  bool found = false;
  if (pages().hit()) {
    hit = *pages().hit();
    found = forward ? finder.next(hit) : finder.previous(hit);
  } else {
    found = finder.first(pages().currentPage(), hit);
  }
  if (found) return pages().showHit(hit);
  if (finder.givenUp()) return;
  pages().clearHit();
  ShowMessage("« " + text + " » ne se trouve pas dans ce document.");
}

}  // namespace tavoline
