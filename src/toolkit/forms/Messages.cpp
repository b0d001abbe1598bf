#include "toolkit/forms/Messages.h"

#include <QtGui/QImageReader>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFileIconProvider>
#include <QtWidgets/QPushButton>
#include <ranges>

#include "toolkit/forms/Forms.h"
#include "toolkit/forms/MessageBox.h"
#include "toolkit/forms/TForm.h"

namespace tavoline {

namespace {

QString qt(std::string_view text) {
  return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// What a box stands before: never nothing, or it could come up behind a screen that it blocks, since another
// program may have the focus meanwhile.
QWidget* front() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  for (TForm* form : Forms::all() | std::views::reverse)
    if (form->isWindow() && form->isVisible()) return form;
  return nullptr;
}

void showBox(const std::string& text, const std::string& detail) {
  MessageBox box(QStringLiteral("Tavoline"), qt(text), QMessageBox::Ok, front());
  if (!detail.empty()) box.setDetailedText(qt(detail));
  box.setDefaultButton(QMessageBox::Ok);
  box.exec();
}

bool askBox(const std::string& text, const std::string& title) {
  MessageBox box(qt(title), qt(text), QMessageBox::Yes | QMessageBox::No, front());
  box.button(QMessageBox::Yes)->setText(QStringLiteral("Oui"));
  box.button(QMessageBox::No)->setText(QStringLiteral("Non"));
  box.setDefaultButton(QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

// A picture stands for itself in the list of files, decoded at the size at which it is shown.
class Thumbnails : public QFileIconProvider {
 public:
  static constexpr QSize size{48, 48};

  QIcon icon(const QFileInfo& file) const override {
    constexpr qint64 largest = 8 << 20;  // bytes that are decoded for a look
    if (!file.isFile() || file.size() > largest) return QFileIconProvider::icon(file);
    QImageReader reader(file.filePath());
    if (reader.canRead()) reader.setScaledSize(reader.size().scaled(size, Qt::KeepAspectRatio));
    const QImage picture = reader.read();
    return picture.isNull() ? QFileIconProvider::icon(file) : QIcon(QPixmap::fromImage(picture));
  }
};

std::string askPicture() {
  Thumbnails thumbnails;
  QFileDialog box(front(), QStringLiteral("Choisir une image"), {},
                  QStringLiteral("Images (*.png *.jpg *.jpeg *.bmp)"));
  box.setFileMode(QFileDialog::ExistingFile);
  box.setIconProvider(&thumbnails);
  for (auto* files : box.findChildren<QAbstractItemView*>()) files->setIconSize(Thumbnails::size);
  if (box.exec() != QDialog::Accepted) return {};
  return box.selectedFiles().value(0).toStdString();
}

// The suffix is the dialog's own business: only then it asks before it writes over a file.
std::string askSave(const std::string& title, const std::string& filter, const std::string& name) {
  QFileDialog box(front(), qt(title), {}, qt(filter));
  box.setAcceptMode(QFileDialog::AcceptSave);
  box.setDefaultSuffix(qt(filter).section(QStringLiteral("*."), 1).section(u')', 0, 0));
  box.selectFile(qt(name));
  if (box.exec() != QDialog::Accepted) return {};
  return box.selectedFiles().value(0).toStdString();
}

std::string askOpen(const std::string& title, const std::string& filter) {
  return QFileDialog::getOpenFileName(front(), qt(title), {}, qt(filter)).toStdString();
}

}  // namespace

Messages Messages::real() {
  return {showBox, askBox, askPicture, askSave, askOpen};
}

Messages& Messages::current() {
  static Messages messages = real();
  return messages;
}

void ShowMessage(std::string_view text, std::string_view detail) {
  Messages::current().show(std::string(text), std::string(detail));
}

bool Confirm(std::string_view text, std::string_view title) {
  return Messages::current().confirm(std::string(text), std::string(title));
}

bool ConfirmDeletion() {
  return Confirm("voulez-vous vraiment supprimer");
}

}  // namespace tavoline
