#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tavoline::report {

/// A field seen through one of the template's report datasets, by the names that the template uses.
struct FieldName {
  std::string dataset;  ///< UserName of the report dataset.
  std::string field;    ///< As written; after the check on load, the field's own name.
  int source = -1;      ///< Place of the dataset in the template's table; set by the check on load.

  friend bool operator==(const FieldName&, const FieldName&) = default;
};

/// `SUM(<dataset."field">,Band)`; without a band, over the data band of that dataset.
struct SumTerm {
  FieldName field;
  std::string band;
  int aggregate = -1;  ///< Place in the template's list of aggregates; set by the check on load.

  friend bool operator==(const SumTerm&, const SumTerm&) = default;
};

/// A field, or the arithmetic sum of one or more aggregates. There is no other computation in a template.
using Expression = std::variant<FieldName, std::vector<SumTerm>>;

/// A memo's text: literal pieces, and expressions where square brackets stand.
using MemoText = std::vector<std::variant<std::string, Expression>>;

/// Why a text is no memo text: a French sentence that quotes the expression at fault.
struct ExpressionError {
  std::string sentence;
};

std::variant<MemoText, ExpressionError> parseMemoText(std::string_view text);
/// `<dataset."field">` and nothing else: the form in which a barcode names its value.
std::variant<FieldName, ExpressionError> parseFieldExpression(std::string_view text);

/// The text from which parseMemoText makes `text` again.
std::string writeMemoText(const MemoText& text);
std::string writeFieldExpression(const FieldName& field);

}  // namespace tavoline::report
