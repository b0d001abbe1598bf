#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSet>

class QWidget;

namespace tavoline {

/// Darkens the first screen while a modal screen or box is before it. It covers that screen for the eyes
/// only: presses go through, and no control of it changes.
class Dim : public QObject {
 public:
  static Dim& instance();  ///< Watches from the first call on.

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Dim();
  void update();

  QSet<const QObject*> modal_;  // that are on screen
  QPointer<QWidget> layer_;
};

}  // namespace tavoline
