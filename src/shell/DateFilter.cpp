#include "shell/DateFilter.h"

#include "data/value/Text.h"
#include "toolkit/controls/DateEdit.h"
#include "toolkit/controls/Label.h"

namespace tavoline {

/// False, with nothing done, while the box holds no whole day.
bool DateFilter::Day::takeApart() const {
  const auto date = box->Date();
  if (!date) return false;
  day->Caption(std::to_string(date->day()));
  month->Caption(std::to_string(date->month()));
  year->Caption(std::to_string(date->year()));
  return true;
}

// The second day follows a first one just given.
void DateFilter::wire() {
  from_.box->OnChange = [this] {
    if (from_.takeApart()) to_.box->Date(*from_.box->Date());
  };
  to_.box->OnChange = [this] { to_.takeApart(); };
}

bool DateFilter::NoneGiven() const {
  return from_.box->Text().empty() && to_.box->Text().empty();
}

bool DateFilter::BothGiven() const {
  return !from_.box->Text().empty() && !to_.box->Text().empty();
}

void DateFilter::Clear() {
  from_.box->Clear();
  to_.box->Clear();
}

DateFilter::Parts DateFilter::Day::parts() const {
  return {day->Caption(), month->Caption(), year->Caption()};
}

std::string DateFilter::Pieces() const {
  return "j>=" + inQuotes(From().day) + "and j<=" + inQuotes(To().day) + "and " + MonthPieces();
}

std::string DateFilter::MonthPieces() const {
  return "M>=" + inQuotes(From().month) + "and M<=" + inQuotes(To().month) +
         "and A=" + inQuotes(From().year) + "and A<=" + inQuotes(To().year);
}

}  // namespace tavoline
