#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include "toolkit/controls/Button.h"

class QAbstractScrollArea;
class QLabel;

namespace tavoline {

/// What an empty list says in its free area: what to do, and a button that presses the list's own one.
class EmptyNote : public QWidget {
 public:
  explicit EmptyNote(QAbstractScrollArea* list);
  /// Covers the free area of the list. Without a door, or with one that cannot be pressed, no button.
  void Tell(const QString& hint, Button* door);

 private:
  QAbstractScrollArea* list_;
  QLabel* hint_;
  Button* own_;
  QPointer<Button> door_;
};

}  // namespace tavoline
