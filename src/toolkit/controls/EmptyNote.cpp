#include "toolkit/controls/EmptyNote.h"

#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>

namespace tavoline {

namespace {
constexpr int widestHint = 460, air = 14;  // pixels
}

EmptyNote::EmptyNote(QAbstractScrollArea* list)
    : QWidget(list), list_(list), hint_(new QLabel(this)), own_(new Button(this)) {
  setObjectName(QStringLiteral("EmptyNote"));
  hint_->setObjectName(QStringLiteral("EmptyHint"));
  hint_->setProperty("kind", QStringLiteral("hint"));
  hint_->setAlignment(Qt::AlignCenter);
  hint_->setWordWrap(true);
  hint_->setFixedWidth(widestHint);
  own_->setObjectName(QStringLiteral("EmptyDoor"));
  own_->setProperty("kind", QStringLiteral("primary"));
  own_->setMinimumSize(180, 52);
  own_->setFocusPolicy(Qt::TabFocus);  // a tap leaves the focus with what stays
  own_->OnClick = [this] {
    if (door_ && door_->isEnabled()) door_->Click();
  };
  auto* column = new QVBoxLayout(this);
  column->setSpacing(air);
  column->addStretch(2);
  column->addWidget(hint_, 0, Qt::AlignHCenter);
  column->addWidget(own_, 0, Qt::AlignHCenter);
  column->addStretch(3);
}

void EmptyNote::Tell(const QString& hint, Button* door) {
  hint_->setText(hint);
  hint_->ensurePolished();  // its letters are those of the stylesheet
  hint_->setFixedHeight(hint_->heightForWidth(widestHint));
  door_ = door;
  own_->setVisible(door && door->isEnabled());
  if (door) {
    own_->setText(door->text().trimmed());
    own_->setIcon(door->icon());
    own_->setIconSize(door->iconSize());
  }
  setGeometry(list_->viewport()->geometry());
  show();
  raise();
}

}  // namespace tavoline
