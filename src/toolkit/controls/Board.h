#pragma once

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class QLayout;
class QPushButton;

namespace tavoline {

/// The letters of an AZERTY keyboard, or a numeric keypad, along the lower edge of the display. Each key is
/// sent to the control that has the focus; the board never takes it. Objects are named "key" + caption.
class Board : public QWidget {
  Q_OBJECT

 public:
  enum class Signs { Letters, Numbers };
  /// Belongs to `window`, so that a modal one does not lock it.
  Board(QWidget* window, Signs signs);
  Signs signs() const { return signs_; }

 private:
  QLayout* letters();
  QPushButton* key(const QString& caption, int code, const QString& text);
  void press(int code, const QString& text);
  void shift(bool on);

  Signs signs_;
  bool shifted_ = false;
};

/// Raises the board when a finger touches an input: letters for words, a keypad for figures where the window
/// has none of its own. A mouse and a keyboard never raise it. A window whose input would lie beneath it is
/// moved up meanwhile; over one that fills the display the board comes down from above. An input of a list
/// that drops down opens the list instead.
class BoardRaiser : public QObject {
  Q_OBJECT

 public:
  BoardRaiser();  ///< To be made once, behind the application.
  Board* board() const { return board_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void raise(QWidget* input);
  void lower();

  QPointer<Board> board_;
  QPointer<QWidget> moved_;  // the window that made room
  QPoint place_;             // where it stood
};

}  // namespace tavoline
