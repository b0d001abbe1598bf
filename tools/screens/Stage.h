#pragma once

#include <QtGui/QImage>
#include <QtWidgets/QWidget>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// The program on a display of its own, played by the names of its controls.
class Stage {
 public:
  Stage(QSize display, QString folder) : display_(display), folder_(std::move(folder)) {}

  void tap(std::string_view formAndControl);  ///< A button: "LoginF.RzBitBtn2".
  void choose(std::string_view entry);        ///< An entry of the menu bar: "ListedesTable1".
  void type(std::string_view formAndControl, std::string_view text);
  /// Saves what is seen, as NAME.png. Throws std::runtime_error if it cannot be written.
  void keep(const std::string& name) const { keep(name, seen()); }
  void keep(const std::string& name, const QImage& picture) const;
  /// Runs `act` once a modal screen is open: the tap that opens it returns only when it is closed.
  static void whenModal(std::function<void(QWidget& modal)> act);
  QImage seen() const;  ///< What a user sees: the menu, and the windows over it.

  /// A named control. Throws std::runtime_error if it is absent.
  template <class T = QWidget>
  T& control(std::string_view formAndControl) {
    return dynamic_cast<T&>(find(formAndControl));
  }
  static bool exists(std::string_view form);
  void settle();

 private:
  QObject& find(std::string_view formAndControl);
  QSize display_;
  QString folder_;
};

}  // namespace tavoline
