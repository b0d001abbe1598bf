#pragma once

#include <QtGui/QImage>
#include <QtWidgets/QWidget>
#include <string_view>

namespace tavoline {

/// The program on a display of its own, played by the names of its controls.
class Stage {
 public:
  explicit Stage(QSize display) : display_(display) {}

  void tap(std::string_view formAndControl);  ///< A button: "LoginF.RzBitBtn2".
  void choose(std::string_view entry);        ///< An entry of the menu bar: "ListedesTable1".
  void type(std::string_view formAndControl, std::string_view text);
  QImage seen() const;  ///< What a user sees: the menu, and the windows over it.

  /// A named control. Throws std::runtime_error if it is absent.
  template <class T = QWidget>
  T& control(std::string_view formAndControl) {
    return dynamic_cast<T&>(find(formAndControl));
  }
  static bool exists(std::string_view form);

 private:
  QObject& find(std::string_view formAndControl);
  void settle();
  QSize display_;
};

}  // namespace tavoline
