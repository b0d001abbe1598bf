#pragma once

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <vector>

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
  struct Sign {
    QPushButton* key;
    QString plain, shifted;
  };

  QLayout* letters();
  QPushButton* key(const QString& caption, const char* said, int code, const QString& text);
  QPushButton* sign(const QString& plain, const QString& shifted, const char* said = "");
  void press(int code, const QString& text);
  void pressSign(const Sign& sign);
  void shift(bool on);
  void accent(const QString& accent);

  Signs signs_;
  std::vector<Sign> keys_;
  bool shifted_ = false;
  QString accent_;  // waits for its letter; empty for none
  QPushButton *shiftKey_ = nullptr, *accentKey_ = nullptr;
};

/// Raises the board when a finger touches an input: letters for words, a keypad for figures where the window
/// has none of its own. A keyboard never raises it, nor a mouse unless that is told. A window that would lie
/// beneath it is moved up meanwhile, whole where the display has the room; over one that fills the display
/// the board comes down from above. An input of a list that drops down opens the list instead.
class BoardRaiser : public QObject {
  Q_OBJECT

 public:
  enum class By { Nothing, Finger, Pointer };
  explicit BoardRaiser(By by = By::Finger);  ///< To be made once, behind the application.
  /// By what an installation says: "toujours" for mice as well, "jamais", anything else for fingers.
  static By told(const QString& when);
  Board* board() const { return board_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool touches(const QEvent& event) const;
  void raise(QWidget* input);
  void makeRoom(const QWidget* input);
  void follow(const QWidget* focused);
  void lower();

  By by_;
  QPointer<Board> board_;
  QPointer<QWidget> moved_;  // the window that made room
  QPoint place_;             // where it stood
};

}  // namespace tavoline
