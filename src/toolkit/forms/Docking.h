#pragma once

#include <QtCore/QObject>
#include <functional>
#include <vector>

class QWidget;

namespace tavoline {

class TForm;

/// The screens docked in one panel, one over the other. Only the top one is really visible: the ones it
/// covers cost no repaint, pull no data and take no part in the Tab order, though for their users they are
/// still open.
class Docking : public QObject {
 public:
  static Docking* of(QWidget* panel);  ///< Made with the first question; lives as long as the panel.

  std::function<void(const TForm*)> OnTop;  ///< Another screen is on top; null for none.

  void open(TForm* form);   ///< On top of the others.
  void close(TForm* form);  ///< The one beneath it comes to light.

 protected:
  bool eventFilter(QObject* panel, QEvent* event) override;

 private:
  explicit Docking(QWidget* panel);
  void showTop();

  std::vector<TForm*> open_;  // the top one last
};

}  // namespace tavoline
