#include "toolkit/forms/MessageBox.h"

#include <QtCore/QEvent>
#include <QtCore/QRegularExpression>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <algorithm>

namespace tavoline {

namespace {

constexpr int usualWidth = 340;  // pixels of the text, at least
constexpr int usualLine = 60;    // letters of a line that reads well
constexpr int around = 100;      // pixels of the display left beside the text
constexpr int smallestText = 10;
constexpr int scanned = 80;  // ms between two signs, at most, that no hand types

int wordWidth(const QString& text, const QFontMetrics& metrics) {
  int width = 0;
  for (const QString& word : text.split(QRegularExpression(QStringLiteral("\\s"))))
    width = std::max(width, metrics.horizontalAdvance(word));
  return width;
}

QSize brokenSize(const QString& text, const QFontMetrics& metrics, int width) {
  const QRect room(0, 0, width, QWIDGETSIZE_MAX);
  return {width, metrics.boundingRect(room, Qt::TextWordWrap, text).height()};
}

// Broken at the length of a line that reads well, or as wide as the display if it would be too high.
QSize textSize(const QString& text, const QFontMetrics& metrics, QSize most) {
  const int natural =
      metrics.boundingRect(QRect(0, 0, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX), 0, text).width() + 2;
  const int pleasant = std::max(usualWidth, metrics.averageCharWidth() * usualLine);
  const int wanted = std::max({usualWidth, std::min(natural, pleasant), wordWidth(text, metrics) + 2});
  const QSize size = brokenSize(text, metrics, std::min(wanted, most.width()));
  return size.height() <= most.height() ? size : brokenSize(text, metrics, most.width());
}

}  // namespace

MessageBox::MessageBox(const QString& title, const QString& text, StandardButtons buttons, QWidget* parent)
    : QMessageBox(NoIcon, title, text, buttons, parent) {
  setTextFormat(Qt::PlainText);
  for (QAbstractButton* button : this->buttons()) button->installEventFilter(this);
}

// Whoever scans on does not look up: the box stays for him to read.
bool MessageBox::isScanned(const QKeyEvent& key) {
  if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)
    return sinceSign_.isValid() && sinceSign_.elapsed() < scanned;
  if (!key.text().isEmpty() && key.text().front().isPrint()) sinceSign_.start();
  return false;
}

bool MessageBox::eventFilter(QObject* button, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !isScanned(*static_cast<QKeyEvent*>(event)))
    return QMessageBox::eventFilter(button, event);
  QApplication::beep();
  return true;
}

// The base class sizes itself by other rules when its layout asks, and once more when it is shown.
bool MessageBox::event(QEvent* event) {
  const bool asks = event->type() == QEvent::LayoutRequest;
  // NOLINTNEXTLINE(bugprone-parent-virtual-call): the rules of the base class are the ones left out here
  const bool done = asks ? QDialog::event(event) : QMessageBox::event(event);
  if (isVisible() && (asks || event->type() == QEvent::Show || event->type() == QEvent::StyleChange)) fit();
  return done;
}

void MessageBox::fit() {
  auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  if (!label || !layout()) return;
  const QMargins edge = label->contentsMargins();
  const QSize air(edge.left() + edge.right(), edge.top() + edge.bottom());
  const QSize most = screen()->availableSize() - QSize(around, 2 * around) - air;
  QFont letters = label->font();
  while (letters.pixelSize() > smallestText &&
         (textSize(text(), QFontMetrics(letters), most).height() > most.height() ||
          wordWidth(text(), QFontMetrics(letters)) > most.width()))
    letters.setPixelSize(letters.pixelSize() - 1);
  if (letters != label->font())
    label->setStyleSheet(QStringLiteral("font-size: %1px").arg(letters.pixelSize()));
  if (!label->wordWrap()) label->setWordWrap(true);
  // A label keeps a little of its width for itself, and may break its text sooner.
  QSize size = textSize(text(), QFontMetrics(letters), most) + air;
  size.rwidth() += QFontMetrics(letters).averageCharWidth();
  size.setHeight(std::max(size.height(), label->heightForWidth(size.width())));
  label->setMinimumSize(size);
  layout()->activate();
  const QPoint grown = QRect(QPoint(), layout()->totalMinimumSize()).center() - rect().center();
  setFixedSize(layout()->totalMinimumSize());
  if (!grown.isNull()) move(pos() - grown);  // it was centred in its former size
}

}  // namespace tavoline
