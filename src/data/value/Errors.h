#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tavoline {

/// The root of every failure that a user may see. what() is a French sentence in UTF-8 that can be
/// read out over the telephone: what happened, to what, what to do. What only helps whoever mends it (the
/// engine's own words, a piece of a statement) stands apart from it, in detail().
class Error : public std::runtime_error {
 public:
  explicit Error(const std::string& sentence, std::string detail = {})
      : std::runtime_error(sentence), detail_(std::move(detail)) {}

  const std::string& detail() const { return detail_; }  ///< Empty where there is none.

 private:
  std::string detail_;
};

/// A text that is no number or date, or a value of the wrong kind, where one is needed.
class ConversionError : public Error {
 public:
  using Error::Error;
};

/// The store refused or could not do what it was asked: busy, full, read-only, duplicate key, missing table.
class StoreError : public Error {
 public:
  using Error::Error;
};

/// An operation that the dataset's state does not allow, or a field that it does not have.
class DatasetError : public Error {
 public:
  using Error::Error;
};

/// A statement or a filter that does not follow the grammar, or names what the catalog does not hold.
class StatementError : public Error {
 public:
  using Error::Error;
};

/// The focus was given to a control that cannot take it: disabled or hidden.
class FocusError : public Error {
 public:
  using Error::Error;
};

}  // namespace tavoline
