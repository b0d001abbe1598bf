#include "toolkit/report/preview/PreviewU.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QToolButton>

#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Names.h"
#include "toolkit/report/preview/Outline.h"
#include "toolkit/report/preview/PageView.h"
#include "ui_PreviewU.h"

namespace tavoline {

namespace {
constexpr int kSlice = 15;         // milliseconds of building between two looks at the user
constexpr int kInterval = 100;     // milliseconds between two looks of the user at the progress
constexpr int kCountAfter = 1000;  // milliseconds of building that make counting the records worth its while
constexpr double kZoomStep = 1.25;
constexpr QSize kTouch(48, 48);
constexpr int kOutlineWidth = 300;

// "Imprimer (Ctrl+P)"
QString withKeys(const QString& text, const QKeySequence& keys) {
  return keys.isEmpty() ? text : text + " (" + keys.toString(QKeySequence::NativeText) + ")";
}

// Where the tools do not all fit, the arrow that shows the others is as wide as a finger too.
class TouchToolBar : public QProxyStyle {
 public:
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    if (metric == PM_ToolBarExtensionExtent) return kTouch.width();
    return QProxyStyle::pixelMetric(metric, option, widget);
  }
};
}  // namespace

PreviewPanel::PreviewPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PreviewPanel>()), outline_(std::make_unique<Outline>()) {
  ui_->setupUi(this);
  ui_->OutlineList->setModel(outline_.get());
  ui_->Body->setStretchFactor(1, 1);
  ui_->Body->setSizes({kOutlineWidth, kOutlineWidth * 3});
  auto* style = new TouchToolBar;
  style->setParent(ui_->Tools);
  ui_->Tools->setStyle(style);
  wire();
  wireNavigator();
  offer(report::kUsualButtons);
  setTool(static_cast<int>(PageView::Tool::Hand));
  connect(&slices_, &QTimer::timeout, this, [this] { buildSlice(); });
  updateState();
}

PreviewPanel::~PreviewPanel() = default;

PageView& PreviewPanel::pages() const {
  return *ui_->Pages;
}

void PreviewPanel::handle(QAction* action, std::function<void()> handler) {
  addAction(action);
  action->setToolTip(withKeys(action->toolTip(), action->shortcut()));
  connect(action, &QAction::triggered, this, [handler = std::move(handler)] { guarded(handler); });
}

void PreviewPanel::wire() {
  handle(ui_->Print, [this] { print(); });
  handle(ui_->Load, [this] { load(); });
  handle(ui_->Save, [this] { save(); });
  handle(ui_->QuickExport, [this] { quickExport(); });
  handle(ui_->ZoomIn, [this] { pages().setZoom(pages().zoom() * kZoomStep); });
  handle(ui_->ZoomOut, [this] { pages().setZoom(pages().zoom() / kZoomStep); });
  handle(ui_->WholePage, [this] { pages().setFit(PageView::Fit::Page); });
  handle(ui_->PageWidth, [this] { pages().setFit(PageView::Fit::Width); });
  handle(ui_->Find, [this] { showFindBar(ui_->Find->isChecked()); });
  handle(ui_->Outline, [this] {
    ui_->OutlineList->setVisible(ui_->Outline->isChecked());
    updateState();
  });
  handle(ui_->PageSetup, [this] { pageSetup(); });
  handle(ui_->Hand, [this] { setTool(static_cast<int>(PageView::Tool::Hand)); });
  handle(ui_->ZoomTool, [this] { setTool(static_cast<int>(PageView::Tool::Zoom)); });
  handle(ui_->Select, [this] { setTool(static_cast<int>(PageView::Tool::Select)); });
  handle(ui_->Edit, [this] { setTool(static_cast<int>(PageView::Tool::Edit)); });
  handle(ui_->Copy, [this] { copy(); });

  connect(ui_->PrintPages, &QPushButton::clicked, ui_->Print, &QAction::trigger);
  ui_->PrintPages->setToolTip(ui_->Print->toolTip());
  // Return prints while the pages have the focus, and not in the search or the number of a page.
  auto* byReturn = new QShortcut(Qt::Key_Return, ui_->Pages);
  byReturn->setContext(Qt::WidgetShortcut);
  connect(byReturn, &QShortcut::activated, ui_->Print, &QAction::trigger);
  auto* more = new QMenu(this);
  more->addActions({ui_->Load, ui_->Save, ui_->Outline, ui_->PageSetup});
  more->addSeparator();
  more->addActions({ui_->Hand, ui_->ZoomTool, ui_->Select, ui_->Edit, ui_->Copy});
  ui_->MoreTools->setMenu(more);

  auto* formats = new QMenu(this);
  for (const report::ExportFormat& format : report::exportFormats()) {
    const char* suffix = format.suffix;
    connect(formats->addAction(QString::fromUtf8(format.filter)), &QAction::triggered, this,
            [this, suffix] { guarded([&] { exportAs(suffix); }); });
  }
  ui_->Export->setMenu(formats);
  addAction(ui_->Export);
  ui_->Export->setToolTip(withKeys(ui_->Export->text(), ui_->Export->shortcut()));
  if (auto* button = qobject_cast<QToolButton*>(ui_->Tools->widgetForAction(ui_->Export))) {
    button->setPopupMode(QToolButton::InstantPopup);
    connect(ui_->Export, &QAction::triggered, button, &QToolButton::showMenu);
  }
  for (QToolButton* button : ui_->Tools->findChildren<QToolButton*>()) button->setMinimumSize(kTouch);

  connect(ui_->FindText, &QLineEdit::returnPressed, this, [this] { guarded([this] { find(true); }); });
  connect(ui_->FindNext, &QToolButton::clicked, this, [this] { guarded([this] { find(true); }); });
  connect(ui_->FindPrevious, &QToolButton::clicked, this, [this] { guarded([this] { find(false); }); });
  connect(ui_->ProgressCancel, &QPushButton::clicked, this, [this] { stopBuilding(); });
  connect(ui_->ClosePreview, &QPushButton::clicked, this, [this] {
    if (OnClose) guarded(OnClose);
  });
}

void PreviewPanel::wireNavigator() {
  const auto last = [this] { return hasPages() ? build_.document->pageCount() - 1 : 0; };
  const auto go = [this](std::size_t page) { pages().goTo(page); };
  const auto key = [this](const QKeySequence& keys, QWidget* button, auto action) {
    if (button) button->setToolTip(withKeys(button->toolTip(), keys));
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
  };
  const auto first = [go] { go(0); };
  const auto toLast = [go, last] { go(last()); };
  connect(ui_->FirstPage, &QToolButton::clicked, this, first);
  connect(ui_->LastPage, &QToolButton::clicked, this, toLast);
  const auto next = [this, go, last] { go(std::min(pages().currentPage() + 1, last())); };
  const auto prior = [this, go] { go(pages().currentPage() - (pages().currentPage() == 0 ? 0 : 1)); };
  connect(ui_->NextPage, &QToolButton::clicked, this, next);
  connect(ui_->PriorPage, &QToolButton::clicked, this, prior);
  key(Qt::CTRL | Qt::Key_Home, ui_->FirstPage, first);
  key(Qt::CTRL | Qt::Key_End, ui_->LastPage, toLast);
  key(Qt::CTRL | Qt::Key_PageUp, ui_->PriorPage, prior);
  key(Qt::CTRL | Qt::Key_PageDown, ui_->NextPage, next);
  key(Qt::Key_F3, ui_->FindNext, [this] { guarded([this] { find(true); }); });
  key(Qt::SHIFT | Qt::Key_F3, ui_->FindPrevious, [this] { guarded([this] { find(false); }); });
  key(Qt::CTRL | Qt::Key_A, nullptr, [this] {
    if (pages().tool() == PageView::Tool::Select) pages().selectAll();
  });
  connect(ui_->PageNumber, &QSpinBox::valueChanged, this,
          [go](int page) { go(static_cast<std::size_t>(page - 1)); });
  connect(ui_->OutlineList, &QListView::clicked, this,
          [go](const QModelIndex& index) { go(static_cast<std::size_t>(index.row())); });
  connect(ui_->OutlineList, &QListView::activated, this,
          [go](const QModelIndex& index) { go(static_cast<std::size_t>(index.row())); });
  pages().OnScrolled = [this] { updateState(); };
  if (auto* rest = ui_->Tools->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button")))
    rest->setToolTip(ui_->MoreTools->toolTip());
  ui_->Pages->setAccessibleName(QStringLiteral("Pages du document"));
  nameControls(*this);
}

void PreviewPanel::offer(unsigned buttons) {
  const std::pair<QAction*, unsigned> tools[] = {{ui_->Print, report::ButtonPrint},
                                                 {ui_->Load, report::ButtonLoad},
                                                 {ui_->Save, report::ButtonSave},
                                                 {ui_->Export, report::ButtonExport},
                                                 {ui_->QuickExport, report::ButtonQuickExport},
                                                 {ui_->ZoomIn, report::ButtonZoom},
                                                 {ui_->ZoomOut, report::ButtonZoom},
                                                 {ui_->WholePage, report::ButtonZoom},
                                                 {ui_->PageWidth, report::ButtonZoom},
                                                 {ui_->Find, report::ButtonFind},
                                                 {ui_->Outline, report::ButtonOutline},
                                                 {ui_->PageSetup, report::ButtonPageSetup},
                                                 {ui_->Hand, report::ButtonTools},
                                                 {ui_->ZoomTool, report::ButtonTools},
                                                 {ui_->Select, report::ButtonSelection},
                                                 {ui_->Edit, report::ButtonEdit},
                                                 {ui_->Copy, report::ButtonCopy}};
  for (const auto& [action, button] : tools) action->setVisible(buttons & button);
  ui_->PrintPages->setVisible(buttons & report::ButtonPrint);
  ui_->Navigator->setVisible(buttons & report::ButtonNavigator);
}

void PreviewPanel::open(report::Build build, const report::PrintOptions& options) {
  slices_.stop();
  build_ = std::move(build);
  options_ = options;
  total_ = 0;
  buildingFor_.start();
  shown_.start();
  offer(build_.document->report().previewButtons);
  outline_->setDocument(build_.document);
  pages().setDocument(build_.document);
  pages().setZoom(build_.document->report().previewZoom);
  pages().goTo(0);
  setTool(static_cast<int>(PageView::Tool::Hand));
  if (building()) slices_.start(0);
  updateProgress();
  updateState();
}

// A slice that fails is the last one, already while its failure is told.
void PreviewPanel::buildSlice() {
  guarded([this] {
    try {
      advance();
    } catch (...) {
      stopBuilding();
      throw;
    }
  });
}

void PreviewPanel::advance() {
  QElapsedTimer slice;
  slice.start();
  bool more = true;
  while (more && slice.elapsed() < kSlice) more = build_.advance();
  if (!more) {
    build_.advance = nullptr;
    slices_.stop();
  } else if (shown_.elapsed() < kInterval && build_.document->pageCount() > 1) {
    return;
  }
  shown_.restart();
  outline_->grown();
  pages().grown();
  updateProgress();
  updateState();
}

void PreviewPanel::stopBuilding() {
  slices_.stop();
  if (!building()) return;
  build_.advance = nullptr;
  build_.interrupted = true;
  outline_->grown();
  pages().grown();
  updateProgress();
  updateState();
}

void PreviewPanel::updateProgress() {
  ui_->ProgressBar->setVisible(building());
  if (!building()) return;
  if (total_ == 0 && buildingFor_.elapsed() > kCountAfter) total_ = build_.total();
  ui_->ProgressText->setText(QString("Préparation du document : %1 pages").arg(build_.document->pageCount()));
  ui_->ProgressDone->setRange(0, total_ == 0 ? 0 : 1000);
  if (total_ != 0) ui_->ProgressDone->setValue(static_cast<int>(build_.done() * 1000 / total_));
}

void PreviewPanel::updateState() {
  const bool ready = hasPages() && !building();
  for (QAction* action : {ui_->Print, ui_->Save, ui_->Export, ui_->QuickExport, ui_->PageSetup, ui_->Edit})
    action->setEnabled(ready);
  ui_->PrintPages->setEnabled(ready);
  ui_->Load->setEnabled(!building());
  for (QAction* action : {ui_->Find, ui_->Copy, ui_->Select}) action->setEnabled(hasPages());
  const std::size_t count = hasPages() ? build_.document->pageCount() : 0;
  const std::size_t page = pages().currentPage();
  const QSignalBlocker quiet(ui_->PageNumber);
  ui_->PageNumber->setMaximum(std::max<int>(1, static_cast<int>(count)));
  ui_->PageNumber->setValue(static_cast<int>(page) + 1);
  if (ui_->Outline->isChecked())
    ui_->OutlineList->setCurrentIndex(outline_->index(static_cast<int>(page), 0));
  ui_->PageTotal->setText(QString("/ %1").arg(count) + (build_.interrupted ? " (interrompu)" : ""));
  ui_->FirstPage->setEnabled(page > 0);
  ui_->PriorPage->setEnabled(page > 0);
  ui_->NextPage->setEnabled(page + 1 < count);
  ui_->LastPage->setEnabled(page + 1 < count);
  ui_->ZoomText->setText(QString("%1 %").arg(qRound(pages().zoom() * 100)));
}

void PreviewPanel::setTool(int tool) {
  pages().setTool(static_cast<PageView::Tool>(tool));
  QAction* const tools[] = {ui_->Hand, ui_->ZoomTool, ui_->Select, ui_->Edit};
  for (int i = 0; i < 4; ++i) tools[i]->setChecked(i == tool);
}

void PreviewPanel::showFindBar(bool on) {
  ui_->Find->setChecked(on);
  ui_->FindBar->setVisible(on);
  if (on) {
    ui_->FindText->setFocus();
    ui_->FindText->selectAll();
  } else {
    pages().clearHit();
    pages().setFocus();
  }
}

void PreviewPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  ui_->ClosePreview->setVisible(static_cast<bool>(OnClose));
}

void PreviewPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && ui_->FindBar->isVisible()) return showFindBar(false);
  QWidget::keyPressEvent(event);
}

}  // namespace tavoline
