#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_LoginU.h"

namespace tavoline {

/// The login screen. The user types his code, sees his name once the code is whole, and gives his password.
/// What a login leaves behind is the session: DM->operation standing on its row, and the menu enabled by
/// role.
class TLoginF : public TForm, public Ui::LoginF {
 public:
  TLoginF();

 protected:
  void FormShow() override;

 private:
  void RzEdit2Change();
  void RzBitBtn1Click();
  void RzBitBtn2Click();
  void RzBitBtn4Click();
  void RzBitBtn5Click();

  void enterAs(const std::string& role);
  void writeSession();
  bool passwordMatches();
  void showPasswordChange(bool on);
  static void reveals(Button* button, Edit* password);
};

extern TLoginF* LoginF;

}  // namespace tavoline
