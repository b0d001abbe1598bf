#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_BestU.h"

namespace tavoline {

/// Sales by category and by article, within the statistics screen, which drives it through its two buttons.
/// Each line of an order counts with the order's whole total; nothing is ranked.
class TBestF : public TForm, public Ui::BestF {
  Q_OBJECT

 public:
  TBestF();

  void nClick();        ///< The current month.
  void Button1Click();  ///< Draws the rows as they are filtered.
};

extern TBestF* BestF;

}  // namespace tavoline
