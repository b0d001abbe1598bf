#include "toolkit/controls/Board.h"

#include <QtCore/QTimer>
#include <QtGui/QMouseEvent>
#include <QtGui/QPointingDevice>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <string_view>

#include "toolkit/controls/DateEdit.h"
#include "toolkit/controls/Keypad.h"

namespace tavoline {

namespace {

constexpr int keyHeight = 54, gap = 6, edge = 8;       // pixels
constexpr int lettersWidth = 960, numbersWidth = 420;  // at most
constexpr std::u16string_view kRows[] = {u"1234567890", u"azertyuiopé", u"qsdfghjklmè", u"wxcvbn'-çà"};

bool isInput(const QWidget* widget) {
  if (const auto* line = qobject_cast<const QLineEdit*>(widget))
    return line->isEnabled() && !line->isReadOnly();
  const auto* text = qobject_cast<const QPlainTextEdit*>(widget);
  return text && text->isEnabled() && !text->isReadOnly();
}

bool takesFigures(const QWidget* input) {
  const auto* line = qobject_cast<const QLineEdit*>(input);
  return line && (line->property("numberDue").toBool() || line->alignment() & Qt::AlignRight ||
                  qobject_cast<const DateEdit*>(line));
}

bool hasKeypad(const QWidget* window) {
  for (const Keypad* keypad : window->findChildren<Keypad*>())
    if (keypad->isVisible() && keypad->window() == window) return true;
  return false;
}

}  // namespace

Board::Board(QWidget* window, Signs signs)
    : QWidget(window, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus), signs_(signs) {
  setObjectName(QStringLiteral("Board"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_StyledBackground);
  setProperty("kind", "window");
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(edge, edge, edge, edge);
  rows->setSpacing(gap);
  if (signs == Signs::Letters)
    rows->addLayout(letters());
  else
    rows->addWidget(new Keypad);
  const QRect display = window->screen()->availableGeometry();
  const int widest = signs == Signs::Letters ? lettersWidth : numbersWidth;
  setFixedSize(qMin(display.width(), widest), 5 * (keyHeight + gap) - gap + 2 * edge);
  move(display.center().x() - width() / 2, display.bottom() + 1 - height());
}

QLayout* Board::letters() {
  auto* rows = new QVBoxLayout;
  rows->setSpacing(gap);
  for (const std::u16string_view& signs : kRows) {
    auto* row = new QHBoxLayout;
    row->setSpacing(gap);
    if (&signs == &kRows[3]) row->addWidget(key(QStringLiteral("⇧"), Qt::Key_Shift, {}));
    for (const QChar sign : signs) row->addWidget(key(sign, 0, sign));
    if (&signs == &kRows[0])
      row->addWidget(key(QStringLiteral("⌫"), Qt::Key_Backspace, QStringLiteral("\b")));
    rows->addLayout(row);
  }
  auto* foot = new QHBoxLayout;
  foot->setSpacing(gap);
  foot->addWidget(key(QStringLiteral("▼"), Qt::Key_Escape, {}), 2);
  for (const char* sign : {"@", "/", ","})
    foot->addWidget(key(QString::fromLatin1(sign), 0, QString::fromLatin1(sign)), 1);
  foot->addWidget(key(QStringLiteral("espace"), Qt::Key_Space, QStringLiteral(" ")), 5);
  foot->addWidget(key(QStringLiteral("."), 0, QStringLiteral(".")), 1);
  foot->addWidget(key(QStringLiteral("Entrée"), Qt::Key_Return, QStringLiteral("\r")), 2);
  rows->addLayout(foot);
  return rows;
}

QPushButton* Board::key(const QString& caption, int code, const QString& text) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QStringLiteral("key") + caption);
  button->setFocusPolicy(Qt::NoFocus);
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
  button->setProperty("kind", caption.size() == 1 ? "key" : "keyWord");
  button->setAutoRepeat(code == Qt::Key_Backspace);
  connect(button, &QPushButton::clicked, this, [this, code, text] { press(code, text); });
  return button;
}

void Board::press(int code, const QString& text) {
  if (code == Qt::Key_Shift) return shift(!shifted_);
  if (code == Qt::Key_Escape) return hide();
  const QString sign = shifted_ ? text.toUpper() : text;
  Keypad::press(code != 0 ? code : sign.front().toUpper().unicode(), sign, Qt::NoModifier);
  if (shifted_) shift(false);
}

void Board::shift(bool on) {
  shifted_ = on;
  for (auto* button : findChildren<QPushButton*>())
    if (button->text().size() == 1) button->setText(on ? button->text().toUpper() : button->text().toLower());
}

BoardRaiser::BoardRaiser() {
  QCoreApplication::instance()->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) {
    if (board_ && now && (!isInput(now) || now->window() != board_->parentWidget())) lower();
  });
}

bool BoardRaiser::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && watched == board_) {
    lower();
    return false;
  }
  if (event->type() != QEvent::MouseButtonRelease || !watched->isWidgetType()) return false;
  const auto* device = static_cast<QMouseEvent*>(event)->pointingDevice();
  if (!device || device->type() != QInputDevice::DeviceType::TouchScreen) return false;
  auto* widget = static_cast<QWidget*>(watched);
  if (auto* text = qobject_cast<QPlainTextEdit*>(widget->parentWidget())) widget = text;
  if (auto* list = qobject_cast<QComboBox*>(widget->parentWidget())) {
    QTimer::singleShot(0, list, [list] { list->showPopup(); });
  } else if (isInput(widget)) {
    raise(widget);
  }
  return false;
}

void BoardRaiser::raise(QWidget* input) {
  QWidget* window = input->window();
  const auto signs = takesFigures(input) ? Board::Signs::Numbers : Board::Signs::Letters;
  if (hasKeypad(window) && !input->property("words").toBool()) return;
  if (board_ && board_->parentWidget() == window && board_->signs() == signs) return;
  lower();
  board_ = new Board(window, signs);
  const int under = input->mapToGlobal(QPoint(0, input->height())).y() + edge - board_->y();
  if (under > 0 && window->windowState() & Qt::WindowMaximized) {
    board_->move(board_->x(), window->screen()->availableGeometry().top());
  } else if (under > 0) {
    moved_ = window;
    place_ = window->pos();
    window->move(place_ - QPoint(0, under));
  }
  board_->show();
}

void BoardRaiser::lower() {
  if (moved_) moved_->move(place_);
  moved_ = nullptr;
  if (!board_) return;
  board_->deleteLater();
  board_ = nullptr;
}

}  // namespace tavoline
