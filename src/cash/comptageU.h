#pragma once

#include <vector>

#include "toolkit/forms/TForm.h"
#include "ui_comptageU.h"

namespace tavoline {

/// Adds up the drawer. A box holds the amount of money of its note or coin, and not how many of them there
/// are: the total is the plain sum of the boxes. They keep what they hold from one count to the next.
class TcomptageF : public TForm, public Ui::comptageF {
  Q_OBJECT

 public:
  TcomptageF();

 protected:
  void FormShow() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Edit1Change();
  void AdvSmoothButton1Click();
  void RzBitBtn7Click();
  void showPictures();

  std::vector<Edit*> boxes_;
};

extern TcomptageF* comptageF;

}  // namespace tavoline
