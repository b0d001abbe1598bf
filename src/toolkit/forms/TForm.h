#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <functional>
#include <string>

namespace tavoline {

/// What the frame of a window that is not freely sized offers: its close command, or nothing at all.
inline constexpr Qt::WindowFlags kNoFrameButton = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
inline constexpr Qt::WindowFlags kSystemButtonOnly =
    kNoFrameButton | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;

/// A screen: created once at start, hidden and shown until the process ends, keeping what its controls hold.
/// Its objectName is its instance name ("LoginF"). Shown as a window of its own, modally, or docked in a
/// panel.
class TForm : public QWidget {
  Q_OBJECT

 public:
  explicit TForm(const char* instanceName);
  ~TForm() override;

  /// Makes the screen visible and brings it to the front. When it was hidden, its first enabled input takes
  /// the focus with its text selected, then FormShow runs, and what that throws ends the caller. A window is
  /// centred on its display unless it is maximised; it belongs to the first screen and stays in front of it.
  void Show();
  /// As Show, and returns when the screen is closed; meanwhile no other screen takes input.
  void ShowModal();
  /// Hides the screen; FormClose runs first. No effect on a hidden screen.
  void Close();
  /// Shown and not closed since, be it covered by another screen of its panel or not.
  bool Visible() const { return open_; }
  /// No border, filling `panel`, its parent from now on; not shown yet. No effect where it is docked already.
  void Dock(QWidget* panel);

  /// Ties every bound control of the screen to its data source by its `dataSource` and `dataField`
  /// properties. Done by the constructor's end (`Ready`) if DM exists, otherwise once DM exists. Throws
  /// DatasetError for a source that DM does not have.
  void BindControls();

 protected:
  /// To be called last by every screen's constructor, after setupUi and the wiring of handlers.
  void Ready();
  virtual void FormShow() {}
  virtual void FormClose() {}
  /// The window system's close command. Does what the screen's button "Fermer" does, or else Close().
  virtual void CloseCommand();

  void closeEvent(QCloseEvent* event) override;

 private:
  void showWindow();
  void belongToFirst();
  void focusFirstInput();
  void focusSomewhere();
  void conceal();

  bool open_ = false;
  QPointer<QWidget> panel_;  // where it is docked
  std::function<void()> leaveModal_;
};

}  // namespace tavoline
