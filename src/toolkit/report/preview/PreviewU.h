#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>
#include <functional>
#include <memory>

#include "toolkit/report/output/Printing.h"
#include "toolkit/report/preview/Build.h"

class QAction;
class QListView;

namespace tavoline {

class PageView;
namespace Ui {
class PreviewPanel;
}

/// Prepared pages with the tools to look at them, print, keep, export and correct them. Stands in a window of
/// its own or in a panel of a screen. A document in the making is shown from its first page on and grows
/// while the user looks.
class PreviewPanel : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewPanel(QWidget* parent = nullptr);
  ~PreviewPanel() override;

  /// Replaces whatever was shown. Which tools there are is the template's choice.
  void open(report::Build build, const report::PrintOptions& options = {});
  const std::shared_ptr<report::Document>& document() const { return build_.document; }
  PageView& pages() const;

  bool building() const { return static_cast<bool>(build_.advance); }
  void stopBuilding();  ///< Keeps the pages made so far.

  void print();
  void load();
  void save();
  void exportAs(const char* suffix);
  void quickExport();
  void copy();
  void applySetup(const report::PageSetup& setup);
  /// Looks for the text in the find bar, from the place of the last hit; a message if it is nowhere.
  void find(bool forward);

  std::function<void()> OnClose;  ///< The close button; it is there only where somebody listens.

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class Outline;

  void wire();
  void wireNavigator();
  void offer(unsigned buttons);
  void handle(QAction* action, std::function<void()> handler);
  void buildSlice();
  void advance();
  void updateProgress();
  void updateState();
  void showFindBar(bool on);
  void setTool(int tool);
  void pageSetup();
  bool hasPages() const { return build_.document && !build_.document->empty(); }
  QString askPath(const QString& title, const QString& filter, const QString& suffix);

  std::unique_ptr<Ui::PreviewPanel> ui_;
  report::Build build_;
  report::PrintOptions options_;
  std::size_t total_ = 0;  // records, once asked for
  QTimer slices_;
  QElapsedTimer buildingFor_, shown_;
  std::unique_ptr<Outline> outline_;
};

}  // namespace tavoline
