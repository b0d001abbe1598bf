#pragma once

#include <QtWidgets/QDialog>
#include <functional>

#include "toolkit/report/preview/PreviewU.h"

namespace tavoline {

/// The window in which a document is looked at. Nothing else takes input until it is closed.
class Preview : public QDialog {
  Q_OBJECT

 public:
  Preview(report::Build build, const report::PrintOptions& options, QWidget* parent);

  PreviewPanel& panel() { return *panel_; }

  /// Shows the window and returns when the user has closed it.
  void run();
  /// The window that is open; null for none.
  static Preview* current();
  /// In the place of a user: called with each window, its document complete, which is closed afterwards.
  static std::function<void(Preview&)> observer;

 private:
  PreviewPanel* panel_;
};

}  // namespace tavoline
