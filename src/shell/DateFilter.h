#pragma once

#include <string>

namespace tavoline {

class DateEdit;
class Label;

/// The gesture "from day to day" of a list: two date boxes, whose days are taken apart into six hidden labels
/// as they change, and the pieces of a filter on J, M and A made from these labels. The three bounds hold
/// each for itself, so from the 20th of one month to the 10th of the next shows nothing.
class DateFilter {
 public:
  /// Takes over the date boxes of a screen that names its controls RzDateTimeEdit1 and 2 and Label99 to
  /// Label8888. To be called behind setupUi; the screen outlives this.
  template <class Screen>
  void Wire(Screen& screen) {
    from_ = {screen.RzDateTimeEdit1, screen.Label99, screen.Label999, screen.Label9999};
    to_ = {screen.RzDateTimeEdit2, screen.Label88, screen.Label888, screen.Label8888};
    wire();
  }

  bool NoneGiven() const;
  bool BothGiven() const;
  void Clear();  ///< Empties both boxes; the labels keep what they hold.
  /// The condition, as far as the labels go; to be followed by "and ..." without a blank.
  std::string Pieces() const;
  std::string MonthPieces() const;  ///< The same without the days.

  struct Parts {
    std::string day, month, year;
  };
  Parts From() const { return from_.parts(); }
  Parts To() const { return to_.parts(); }

 private:
  struct Day {
    DateEdit* box = nullptr;
    Label *day = nullptr, *month = nullptr, *year = nullptr;
    bool takeApart() const;
    Parts parts() const;
  };
  void wire();

  Day from_, to_;
};

}  // namespace tavoline
