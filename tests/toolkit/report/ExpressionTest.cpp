#include "toolkit/report/model/Expression.h"

#include <gtest/gtest.h>

namespace tavoline::report {
namespace {

TEST(Expression, theFiveFormsAreReadAndNoOther) {
  struct Case {
    const char* text;
    const char* again;  // as it is written back; null for a text that is refused
  };
  const Case cases[] = {
      {"Table : ", "Table : "},
      {"", ""},
      {"[ds1.\"qte\"]", "[ds1.\"qte\"]"},
      {"[(<ds1.\"TVA\">)] DA", "[ds1.\"TVA\"] DA"},
      {"[SUM(<ds1.\"total\">)] DA", "[SUM(<ds1.\"total\">)] DA"},
      {"[SUM(<ds1.\"N° x\">,MasterData1)]", "[SUM(<ds1.\"N° x\">,MasterData1)]"},
      {"[SUM(<a.\"x\">) + SUM(<b.\"y\">, Band)]", "[SUM(<a.\"x\">)+SUM(<b.\"y\">,Band)]"},
      {"a [ds1.\"x\"] b [ds1.\"y\"]", "a [ds1.\"x\"] b [ds1.\"y\"]"},
      {"[ds1.\"qte\"", nullptr},
      {"[Page#]", nullptr},
      {"[<ds1.\"TVA\">]", nullptr},
      {"[(<ds1.\"TVA\">)*2]", nullptr},
      {"[ds1.\"\"]", nullptr},
      {"[SUM(ds1.\"x\")]", nullptr},
      {"[SUM(<ds1.\"x\">)-SUM(<ds1.\"y\">)]", nullptr},
      {"[SUM(<ds1.\"x\">,)]", nullptr},
      {"[COUNT(<ds1.\"x\">)]", nullptr},
      {"[]", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const auto result = parseMemoText(c.text);
    ASSERT_EQ(std::holds_alternative<MemoText>(result), c.again != nullptr);
    if (c.again) {
      EXPECT_EQ(writeMemoText(std::get<MemoText>(result)), c.again);
    } else {
      EXPECT_NE(std::get<ExpressionError>(result).sentence.find('['), std::string::npos);
    }
  }
}

TEST(Expression, aBarcodeNamesOneField) {
  EXPECT_EQ(std::get<FieldName>(parseFieldExpression("<ds1.\"n_commande\">")).field, "n_commande");
  for (const char* wrong : {"ds1.\"n\"", "<ds1.\"n\">x", "", "<ds1.n>"}) {
    EXPECT_TRUE(std::holds_alternative<ExpressionError>(parseFieldExpression(wrong))) << wrong;
  }
}

}  // namespace
}  // namespace tavoline::report
