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
#include <utility>

#include "toolkit/controls/DateEdit.h"
#include "toolkit/controls/Keypad.h"
#include "toolkit/controls/TouchKey.h"
#include "toolkit/forms/Taps.h"

namespace tavoline {

namespace {

constexpr int keyHeight = 54, gap = 6, edge = 8;       // pixels
constexpr int lettersWidth = 960, numbersWidth = 420;  // at most
constexpr QChar kCircumflex(u'^'), kCircumflexAbove(u'\u0302'), kDiaeresisAbove(u'\u0308');
constexpr std::pair<std::u16string_view, std::u16string_view> kRows[] = {
    {u"1234567890", u"!?%&()+=:\""},
    {u"azertyuiop^é", u"AZERTYUIOP¨É"},
    {u"qsdfghjklmùè", u"QSDFGHJKLMÙÈ"},
    {u"wxcvbn'-çà", u"WXCVBN’_ÇÀ"},
};

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
  setAccessibleName(QStringLiteral("Clavier à l'écran"));
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
  shiftKey_ = key(QStringLiteral("⇧"), "Majuscule", Qt::Key_Shift, {});
  shiftKey_->setCheckable(true);
  for (const auto& [plain, shifted] : kRows) {
    auto* row = new QHBoxLayout;
    row->setSpacing(gap);
    if (plain.front() == u'w') row->addWidget(shiftKey_, 2);
    for (std::size_t at = 0; at < plain.size(); ++at)
      row->addWidget(sign(QString(plain[at]), QString(shifted[at])), 1);
    if (plain.front() == u'1')
      row->addWidget(key(QStringLiteral("⌫"), "Effacer", Qt::Key_Backspace, QStringLiteral("\b")), 2);
    rows->addLayout(row);
  }
  auto* foot = new QHBoxLayout;
  foot->setSpacing(gap);
  foot->addWidget(key(QStringLiteral("▼"), "Fermer le clavier", Qt::Key_Escape, {}), 2);
  foot->addWidget(sign(QStringLiteral("@"), QStringLiteral("#"), "Arobase"), 1);
  foot->addWidget(sign(QStringLiteral("/"), QStringLiteral("*"), "Barre oblique"), 1);
  foot->addWidget(sign(QStringLiteral(","), QStringLiteral(";"), "Virgule"), 1);
  foot->addWidget(key(QStringLiteral("espace"), "", Qt::Key_Space, QStringLiteral(" ")), 4);
  foot->addWidget(sign(QStringLiteral("."), QStringLiteral(":"), "Point"), 1);
  foot->addWidget(key(QStringLiteral("Entrée"), "", Qt::Key_Return, QStringLiteral("\r")), 2);
  rows->addLayout(foot);
  return rows;
}

QPushButton* Board::key(const QString& caption, const char* said, int code, const QString& text) {
  auto* button = new TouchKey(caption, this);
  button->setObjectName(QStringLiteral("key") + caption);
  button->setAccessibleName(QString::fromUtf8(said));
  button->setFocusPolicy(Qt::NoFocus);
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
  button->setProperty("kind", caption.size() == 1 ? "key" : "keyWord");
  button->setAutoRepeat(code == Qt::Key_Backspace);
  if (code != 0) connect(button, &QPushButton::clicked, this, [this, code, text] { press(code, text); });
  return button;
}

QPushButton* Board::sign(const QString& plain, const QString& shifted, const char* said) {
  QPushButton* button = key(plain, said, 0, {});
  const Sign sign{button, plain, shifted};
  keys_.push_back(sign);
  connect(button, &QPushButton::clicked, this, [this, sign] { pressSign(sign); });
  if (plain.front() == kCircumflex) (accentKey_ = button)->setCheckable(true);
  return button;
}

void Board::press(int code, const QString& text) {
  if (code == Qt::Key_Shift) return shift(!shifted_);
  if (code == Qt::Key_Escape) return hide();
  accent({});
  Keypad::press(code, text, Qt::NoModifier);
}

/// An accent waits for the letter that it stands on; before a letter that takes none it goes.
void Board::pressSign(const Sign& sign) {
  QString text = shifted_ ? sign.shifted : sign.plain;
  if (sign.key == accentKey_) {
    const QChar above = text.front() == kCircumflex ? kCircumflexAbove : kDiaeresisAbove;
    accent(accent_.isEmpty() ? QString(above) : QString());
    return shift(false);
  }
  const QString accented = QString(text + accent_).normalized(QString::NormalizationForm_C);
  if (accented.size() == 1) text = accented;
  Keypad::press(text.front().toUpper().unicode(), text, Qt::NoModifier);
  accent({});
  shift(false);
}

void Board::shift(bool on) {
  shiftKey_->setChecked(on);
  if (std::exchange(shifted_, on) == on) return;
  // An ampersand shows doubled: a single one would mark a shortcut.
  for (const Sign& sign : keys_)
    sign.key->setText(on ? QString(sign.shifted).replace(u'&', QLatin1String("&&")) : sign.plain);
}

void Board::accent(const QString& accent) {
  accent_ = accent;
  if (accentKey_) accentKey_->setChecked(!accent_.isEmpty());
}

BoardRaiser::BoardRaiser(By by) : by_(by) {
  if (by_ == By::Nothing) return;
  QCoreApplication::instance()->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget*, const QWidget* now) { follow(now); });
}

BoardRaiser::By BoardRaiser::told(const QString& when) {
  if (when == QLatin1String("toujours")) return By::Pointer;
  return when == QLatin1String("jamais") ? By::Nothing : By::Finger;
}

bool BoardRaiser::touches(const QEvent& event) const {
  if (event.type() != QEvent::MouseButtonRelease) return false;
  const auto* device = static_cast<const QMouseEvent&>(event).pointingDevice();
  return by_ == By::Pointer || (device && device->type() == QInputDevice::DeviceType::TouchScreen);
}

bool BoardRaiser::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && watched == board_) {
    lower();
    return false;
  }
  if (!watched->isWidgetType() || !touches(*event)) return false;
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
  if (hasKeypad(window) && !input->property("words").toBool()) return lower();
  const bool stands = board_ && board_->parentWidget() == window && board_->signs() == signs;
  if (!stands) {
    lower();
    board_ = new Board(window, signs);
  }
  makeRoom(input);
  board_->show();
}

void BoardRaiser::makeRoom(const QWidget* input) {
  QWidget* window = input->window();
  const QRect display = window->screen()->availableGeometry(), frame = window->frameGeometry();
  const int below = display.bottom() + 1 - board_->height();
  const int under = input->mapToGlobal(QPoint(0, input->height())).y() + edge - below;
  if (window->windowState() & Qt::WindowMaximized)
    return board_->move(board_->x(), under > 0 ? display.top() : below);
  const int whole = qMin(frame.bottom() + 1 - below, frame.top() - display.top());
  const int up = qMax(under, whole);
  if (up <= 0) return;
  if (!moved_) {
    moved_ = window;
    place_ = window->pos();
  }
  window->move(window->pos() - QPoint(0, up));
}

/// The board goes with an input that is left, and stays with one that a key leads to.
void BoardRaiser::follow(const QWidget* focused) {
  if (!board_ || !focused) return;
  if (!isInput(focused) || focused->window() != board_->parentWidget()) return lower();
  Taps::whenLifted(board_, [this] {
    QWidget* input = QApplication::focusWidget();
    if (board_ && isInput(input) && input->window() == board_->parentWidget()) raise(input);
  });
}

void BoardRaiser::lower() {
  if (moved_) moved_->move(place_);
  moved_ = nullptr;
  if (!board_) return;
  board_->deleteLater();
  board_ = nullptr;
}

}  // namespace tavoline
