#pragma once

#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace tavoline {

/// The calm picture behind the work: a cup, its steam and the name of the house, drawn to the size it is
/// given.
class Backdrop : public QWidget {
  Q_OBJECT

 public:
  explicit Backdrop(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap drawing_;
};

}  // namespace tavoline
