#pragma once

#include <QtWidgets/QFrame>
#include <QtWidgets/QLabel>

#include "toolkit/controls/Button.h"

namespace tavoline {

/// An entry of the menu's column: its picture and its caption, or the picture alone while the column is
/// folded; the caption is then its tooltip. A bar at its edge says that its screen is the one on top.
class MenuButton : public Button {
  Q_OBJECT

 public:
  explicit MenuButton(QWidget* parent = nullptr) : Button(parent) {}
  void Fold(bool folded);
  void Here(bool here);
  bool here() const { return here_; }

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintFolded();
  void drawRounded(const QRectF& place, QRgb colour, int radius);

  bool folded_ = false, here_ = false;
};

/// The name of a group of entries. In a folded column a rule stands in its place.
class GroupTitle : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;
  void Fold(bool folded);

  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool folded_ = false;
};

/// The column of the menu's entries. While a screen keeps it disabled it is folded to a strip of pictures,
/// and leaves its room to that screen; nothing in it is hidden or renamed for that.
class MenuColumn : public QFrame {
  Q_OBJECT

 public:
  explicit MenuColumn(QWidget* parent = nullptr);
  /// Marks the entry of the screen on top, and no other one; null for none.
  void Mark(const QWidget* entry);
  bool folded() const { return folded_; }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void fold(bool folded);

  bool folded_ = false;
};

}  // namespace tavoline
