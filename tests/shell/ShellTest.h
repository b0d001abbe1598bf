#pragma once

#include <memory>
#include <string>
#include <vector>

#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "support/Workstation.h"

namespace tavoline {

/// A workstation with the screens of the shell. The accounts are "boss" (Admin, password "1"), "kara"
/// (KeyUser, "2") and "omar" (User, "3"), in this order.
class ShellTest : public testing::Test {
 protected:
  ShellTest();

  void open();  ///< Starts as the process does, and shows the menu.
  void type(QWidget* input, const std::string& keys);
  void logIn(const std::string& login,
             const std::string& password);  ///< As another user if one is logged in.
  /// Does something that shows this box and no other; with null, no box.
  void saying(const char* message, const std::function<void()>& action);

  Workstation at;
};

/// A screen of another room, which only notes what happens to it.
class OtherScreen : public TForm {
 public:
  explicit OtherScreen(const char* name) : TForm(name) { Ready(); }
  std::function<void()> onShow;
  int shown = 0, closed = 0;

 protected:
  void FormShow() override {
    ++shown;
    if (onShow) onShow();
  }
  void FormClose() override { ++closed; }
};

}  // namespace tavoline
