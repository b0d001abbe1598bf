#pragma once

#include <QtCore/QHash>
#include <QtWidgets/QWidget>
#include <cstddef>
#include <functional>
#include <vector>

class QAction;

namespace tavoline::bench {

/// Counts what is painted, widget by widget.
class Paints : public QObject {
 public:
  Paints();
  ~Paints() override;
  int of(const QWidget* widget) const { return counts_.value(widget, 0); }
  void forget() { counts_.clear(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QHash<const QObject*, int> counts_;
};

/// The whole program on a display without glass: every screen made, as at its start, and played by mouse
/// presses. Its store is the one of the working directory. One at a time.
class Glass {
 public:
  /// Starts the program, up to the login screen painted. Throws std::runtime_error with its box if it
  /// refuses.
  Glass();
  ~Glass();
  Glass(const Glass&) = delete;
  Glass& operator=(const Glass&) = delete;

  void logIn();         ///< As the first account of the store, up to the map.
  void takeTable();     ///< The next free one; the order screen stands then, with a category's tiles.
  void saveOrder();     ///< "Enregistrer": the order waits on its table, and the map is back.
  std::size_t tiles();  ///< How many articles are in sight.
  void lower(std::size_t tile);  ///< A finger goes down on a tile, which shows it.
  void lift();                   ///< The finger goes up: the click, with everything that its handler does.
  void paint();                  ///< Until the ticket's lines are on the display.
  void rest();                   ///< Until nothing is left to be painted. Throws if a box was shown.
  int linePaints() const;        ///< How often the ticket's lines were painted since `lower`.

  /// A press of a control, or the choice of an entry of the menu bar, until `shown` is painted.
  void press(QWidget* control, const QWidget* shown);
  void choose(QAction* entry, const QWidget* shown);

  void openHistory();   ///< "Historique des commandes", until its grid is painted.
  void closeHistory();  ///< And back to the map.
  /// A press of a control of the history, or another gesture on it, until its grid is painted.
  void pressInHistory(QWidget* control);
  void inHistory(const std::function<void()>& gesture);
  void countHistory();  ///< Waits until the grid's scroll bar reaches to its last row.
  /// The journal of what the history shows, until its preview is complete, painted and closed again.
  void printJournal();

 private:
  void paint(const QWidget* widget);

  Paints paints_;
  QWidget* under_ = nullptr;  // the finger
};

/// A gesture that is measured: what stands before it, what is timed, and what ends it.
struct Gesture {
  const char* name;
  std::function<void(Glass&)> before, gesture, after;
};

}  // namespace tavoline::bench
