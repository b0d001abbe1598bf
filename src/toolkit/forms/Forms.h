#pragma once

#include <string>
#include <string_view>

#include "toolkit/forms/TForm.h"

namespace tavoline {

/// The screens by name, for who must reach up without an include: the menu docks a screen of a room above it,
/// the timer presses the map's redraw. A screen that does not exist (yet) is simply absent.
class Forms {
 public:
  static void add(TForm* form);  ///< By objectName; done by TForm.
  static void remove(TForm* form);
  static TForm* find(std::string_view instanceName);  ///< Without regard to case; null if absent.
  static const std::vector<TForm*>& all();            ///< In order of creation.

  static void Show(std::string_view instanceName);  ///< No effect for an absent screen.
  static void ShowModal(std::string_view instanceName);
  static void Close(std::string_view instanceName);
  static void BindControls();  ///< Every screen made before DM.

  /// A named control of a screen itself, and not of another one that is docked in it; null if either is
  /// absent.
  template <class T = QWidget>
  static T* control(std::string_view instanceName, const char* objectName) {
    TForm* form = find(instanceName);
    if (!form) return nullptr;
    for (T* found : form->findChildren<T*>(QString::fromUtf8(objectName))) {
      if (screenOf(found) == form) return found;
    }
    return nullptr;
  }

 private:
  static const TForm* screenOf(const QObject* control);
};

}  // namespace tavoline
