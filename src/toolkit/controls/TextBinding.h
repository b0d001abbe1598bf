#pragma once

#include "toolkit/controls/Binding.h"

namespace tavoline {

/// The tie of an input to its field. The first key puts the dataset into edit state; the typed text waits in
/// the control, and is given up when the dataset asks for it or when the focus leaves. A cancelled or closed
/// row drops it.
class TextBinding : public Binding {
 protected:
  using Binding::Binding;

  virtual QString shownText() const = 0;
  virtual void showText(const QString& text) = 0;  ///< Fires nothing.

  /// After each change by the user. If the dataset refuses the edit, shows the field again and throws.
  void textTyped();
  /// A change by code: shown, and written into the field at once. Throws, and shows the field again, if that
  /// fails.
  void writeText(const QString& text);
  /// The focus left: gives up the text; what the field holds is shown in its own form from now on. Throws.
  void leave();
  /// The typed text that waits, or else the field's text as it is now.
  QString upToDateText();

  void pull() override;
  void giveUpPending() override;
  void dropPending() override;

 private:
  void write(const QString& text);
  void settle();

  bool waiting_ = false;   // typed text that is not in the dataset
  bool starting_ = false;  // between the first key and the dataset's edit state
  Value before_;           // the field's value when the typing began
  QString givenText_;      // given up while the focus stays: shown as typed as long as the field holds
  Value givenValue_;       // this
};

}  // namespace tavoline
