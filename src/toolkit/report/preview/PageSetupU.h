#pragma once

#include <QtWidgets/QDialog>
#include <memory>

#include "toolkit/report/model/Template.h"

namespace tavoline {

namespace Ui {
class PageSetupDialog;
}

/// Asks for the paper of a prepared document: a known one, or width, height and margins in millimetres.
class PageSetupDialog : public QDialog {
  Q_OBJECT

 public:
  PageSetupDialog(const report::PageSetup& setup, QWidget* parent);
  ~PageSetupDialog() override;

  report::PageSetup setup() const;
  void setSetup(const report::PageSetup& setup);

 private:
  void paperChosen(int index);
  void measured();  // the list of papers follows the measures
  bool leavesRoom() const;

  std::unique_ptr<Ui::PageSetupDialog> ui_;
  bool setting_ = false;
};

}  // namespace tavoline
