#pragma once

#include <QtCore/QTimer>

#include "toolkit/forms/TForm.h"
#include "ui_MenuU.h"

namespace tavoline {

/// The main screen and the frame of all work screens: the menu bar, the column of buttons RzGroupBar2, the
/// session strip AdvPanel1 and the central area RzPanel4, into which work screens are docked one over the
/// other.
///
/// Label1 ("Active": the table map is on screen), Label2 ("Active": an order is being worked on) and Label3
/// ("NON", never changed) are marks that other screens read and set. It is made before DM, so its bindings
/// come with DM.
class TMenuF : public TForm, public Ui::MenuF {
 public:
  TMenuF();

  QTimer*
      Timer1;  ///< Every 9000 ms, from the start of the process to its end, presses the hidden button `ok`.

  /// Says to the other workstations at which desk this one works, and on the session strip whether one of
  /// them works at the same.
  void AnnounceDesk();

 protected:
  void FormShow() override;
  void CloseCommand() override;

 private:
  // Work screens: docked in RzPanel4, newest on top. False, and nothing done, for a screen that does not
  // exist.
  bool dock(std::string_view instanceName);
  bool embed(std::string_view instanceName);

  // What must hold before a work screen opens.
  bool ordinaryDeskMissing();
  void askForDesk();
  void takeOnlyDesk();

  void AdvSmoothButton4Click();
  void AdvSmoothButton5Click();
  void AdvSmoothButton6Click();
  void AdvSmoothButton3Click();
  void Caise1Click();
  void Actualiser1Click();
  void ChangerUtilisateur1Click();
  void Fermer1Click();
  void okClick();
  void Timer1Timer();

  void wireMenuBar();
  void wireColumn();
  void markDoor(const TForm* top);  // the entry behind which the screen on top lies
};

extern TMenuF* MenuF;

}  // namespace tavoline
