#pragma once

#include <QtWidgets/QFrame>
#include <functional>
#include <vector>

#include "toolkit/controls/Button.h"

namespace tavoline {

/// The way from an empty store to the first order: each step with the door to its screen and a mark once it
/// is done. It stands over the picture behind the work until an order has been taken, then never again.
class FirstSteps : public QFrame {
  Q_OBJECT

 public:
  explicit FirstSteps(QWidget* parent = nullptr);

  /// Opens the screen of a step, by the name of the menu's entry; whether the user may.
  std::function<void(const QString& entry)> OnChoose;
  std::function<bool(const QString& entry)> OnAllowed;
  /// Asks the store which steps are done, once the running gesture is over. Nothing is asked again once an
  /// order has been taken.
  void Look();

 protected:
  void changeEvent(QEvent* event) override;  // a login enables it

 private:
  void look();

  std::vector<Button*> doors_;
  bool begun_ = false;
};

}  // namespace tavoline
