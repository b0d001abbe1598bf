#pragma once

#include <QtWidgets/QPushButton>

namespace tavoline {

/// A key of a board on the glass. Each finger counts for itself: one that comes down before the last one has
/// left presses its key too.
class TouchKey : public QPushButton {
  Q_OBJECT

 public:
  TouchKey(const QString& caption, QWidget* parent);

 protected:
  bool event(QEvent* event) override;
};

}  // namespace tavoline
