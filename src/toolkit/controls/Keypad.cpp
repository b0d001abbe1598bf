#include "toolkit/controls/Keypad.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

#include "toolkit/controls/TouchKey.h"

namespace tavoline {

namespace {

struct Key {
  const char* caption;
  int code;
  int row, column, rows = 1, columns = 1;
  const char* said = "";  // what a screen reader says for it; otherwise the caption
};

constexpr Key keys[] = {
    {"Back", Qt::Key_Backspace, 0, 0, 1, 1, "Effacer"},
    {"/", Qt::Key_Slash, 0, 1, 1, 1, "Divisé par"},
    {"*", Qt::Key_Asterisk, 0, 2, 1, 1, "Fois"},
    {"-", Qt::Key_Minus, 0, 3, 1, 1, "Moins"},
    {"7", Qt::Key_7, 1, 0},
    {"8", Qt::Key_8, 1, 1},
    {"9", Qt::Key_9, 1, 2},
    {"+", Qt::Key_Plus, 1, 3, 2, 1, "Plus"},
    {"4", Qt::Key_4, 2, 0},
    {"5", Qt::Key_5, 2, 1},
    {"6", Qt::Key_6, 2, 2},
    {"1", Qt::Key_1, 3, 0},
    {"2", Qt::Key_2, 3, 1},
    {"3", Qt::Key_3, 3, 2},
    {"Enter", Qt::Key_Return, 3, 3, 2, 1, "Entrée"},
    {"0", Qt::Key_0, 4, 0, 1, 2},
    {".", Qt::Key_Period, 4, 2, 1, 1, "Virgule"},
};

QString textOf(const Key& key) {
  if (key.code == Qt::Key_Backspace) return QStringLiteral("\b");
  if (key.code == Qt::Key_Return) return QStringLiteral("\r");
  return QString::fromUtf8(key.caption);
}

}  // namespace

void Keypad::press(int code, const QString& text, Qt::KeyboardModifiers modifiers) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    // The press may move the focus; the release belongs to where it is then.
    QWidget* target = QApplication::focusWidget();
    if (!target) return;
    QKeyEvent event(type, code, modifiers, text);
    QCoreApplication::sendEvent(target, &event);
  }
}

Keypad::Keypad(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::NoFocus);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  for (const Key& key : keys) {
    auto* button = new TouchKey(QString::fromUtf8(key.caption), this);
    button->setObjectName(QStringLiteral("key") + QString::fromUtf8(key.caption));
    button->setAccessibleName(QString::fromUtf8(key.said));
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    button->setAutoRepeat(key.code == Qt::Key_Backspace);
    const bool editing = key.code == Qt::Key_Backspace || key.code == Qt::Key_Return;
    connect(button, &QPushButton::clicked, this, [code = key.code, text = textOf(key), editing] {
      press(code, text, editing ? Qt::NoModifier : Qt::KeypadModifier);
    });
    grid->addWidget(button, key.row, key.column, key.rows, key.columns);
  }
  setCompact(false);
}

void Keypad::setCompact(bool compact) {
  compact_ = compact;
  layout()->setSpacing(compact ? 0 : 6);
  for (auto* button : findChildren<QPushButton*>()) {
    const QString kind = compact ? QStringLiteral("keySmall") : QStringLiteral("key");
    button->setProperty("kind", button->text().size() == 1 ? kind : QString(kind % QLatin1String("Word")));
    button->setMinimumSize(compact ? QSize(1, 1) : QSize(52, 48));
    button->style()->unpolish(button);
    button->style()->polish(button);
  }
}

}  // namespace tavoline
