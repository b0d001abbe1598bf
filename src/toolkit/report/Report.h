#pragma once

#include <functional>
#include <memory>
#include <string>
#include <variant>

#include "toolkit/report/output/Printing.h"

class QWidget;

namespace tavoline {

namespace report {
struct Build;
}

/// One document of a screen: a template by screen class and name, filled from the open datasets of the data
/// module as the launching screen left them. Never opens, closes, filters or sorts one; their current rows
/// move.
class Report {
 public:
  /// Reads the template `screenClass.name` from the program's resources. `owner` is the screen that holds a
  /// preview panel, where the template names one.
  Report(const char* screenClass, const char* name, QWidget* owner = nullptr);
  ~Report();

  /// Fills the document afresh and shows it; returns when the user closes the preview, or at once where the
  /// document goes to a panel of the screen. Throws what the datasets throw, and Error for a template that
  /// cannot be used.
  void ShowReport(bool ClearLastReport = true);
  void PrepareReport(bool ClearLastReport = true);  ///< As ShowReport, without showing it.
  void Print();                                     ///< Sends the prepared document to the printer.

  report::PrintOptions PrintOptions;
  std::function<void()> OnClosePreview;

  const std::string& Name() const { return name_; }
  /// What was prepared last; null before.
  const std::shared_ptr<report::Document>& pages() const { return document_; }

 private:
  std::shared_ptr<const report::Template> usable() const;
  report::Build build() const;
  void keep(std::shared_ptr<report::Document> document, bool clearLast);

  std::string name_;
  QWidget* owner_;
  report::TemplateResult template_;
  std::shared_ptr<report::Document> document_;
  bool interrupted_ = false;  // the preparation was given up
};

}  // namespace tavoline
