#include "data/value/Text.h"

#include <gtest/gtest.h>

namespace tavoline {
namespace {

TEST(Text, FoldsCaseButKeepsAccents) {
  const struct {
    const char* text;
    const char* folded;
  } cases[] = {
      {"CAFÉ Crème Œuf", "café crème œuf"},
      {"ÀÂÄÇÈÉÊËÎÏÔÖÙÛÜŸÞ ×÷ß", "àâäçèéêëîïôöùûüÿþ ×÷ß"},
      {"ĀĂĐĲĶĹŁŅŊŘŞŤŽſẞ", "āăđĳķĺłņŋřşťžsß"},
      {"ΆΈΊΌΎΏ ΑΡΣς ΤΫ", "άέίόύώ αρσσ τϋ"},
      {"ЀЏ АЯ Ґ Ӂ Ӏ Ԯ", "ѐџ ая ґ ӂ ӏ ԯ"},
      {"قهوة 日本 🍕 İı", "قهوة 日本 🍕 İı"},
      {"\xC3 \xE9t\xE9 \xF0\x9F \xED\xA0\x80 \xC0\x80", "\xC3 \xE9t\xE9 \xF0\x9F \xED\xA0\x80 \xC0\x80"},
  };
  for (const auto& c : cases) EXPECT_EQ(foldCase(c.text), c.folded);
}

TEST(Text, CountsCharacters) {
  EXPECT_EQ(characterCount("été"), 3U);
  EXPECT_EQ(characterCount("🍕قهوة"), 5U);
  EXPECT_EQ(characterCount("\xE9t\xE9\xC3"), 4U);
}

TEST(Text, Like) {
  const struct {
    const char* text;
    const char* pattern;
    bool matches;
  } cases[] = {
      {"", "", true},
      {"", "%", true},
      {"", "_", false},
      {"Café", "café", true},
      {"Café", "CAFÉ", true},
      {"Café", "cafe", false},
      {"Café", "caf_", true},
      {"Café", "caf__", false},
      {"Café", "%É", true},
      {"C0010", "C00_", false},
      {"C001", "C00_", true},
      {"abcabd", "%abd", true},
      {"aaab", "%aab", true},
      {"abc", "a%b%c%", true},
      {"abc", "a%c%b", false},
      {"abc", "%%_%%", true},
      {"50%", "50%", true},
      {"50 pour cent", "50%%t", true},
      {"\xE9t\xE9", "_t_", true},
      {"x\\y[z]*?", "x\\y[z]*?", true},
      {"abc", "*", false},
      {"ab\ncd", "ab%d", true},
  };
  for (const auto& c : cases)
    EXPECT_EQ(matchesLike(c.text, c.pattern), c.matches) << c.text << " like " << c.pattern;
  const std::string longText(3000, 'a');
  EXPECT_FALSE(matchesLike(longText, "%a%a%a%a%a%a%a%a%b")) << "and in a short while";
}

TEST(Text, NamesAndQuotes) {
  EXPECT_TRUE(sameName("ID_Caise", "id_caise"));
  EXPECT_FALSE(sameName("caise", "caisse"));
  EXPECT_FALSE(sameName("É", "é"));
  EXPECT_EQ(foldName("N_Facture"), "n_facture");
  EXPECT_EQ(inQuotes(""), "''");
  EXPECT_EQ(inQuotes("l'été d'Aïn"), "'l''été d''Aïn'");
}

}  // namespace
}  // namespace tavoline
