// The fuzz target on mutations of the system's own statements and filters, the same ones in every run.

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "data/DMU.h"
#include "data/value/Errors.h"
#include "fuzz/FuzzDialect.h"
#include "support/StoreFile.h"

namespace tavoline {
namespace {

constexpr int kRuns = 10000;

std::vector<std::string> seeds() {
  const std::vector<std::string> filters = {"n_commande='12'", "login='ab12'and general='NON'",
                                            "table='l''été'", "j>='1'and j<='5'and M>='1'and A=\"2024\"",
                                            "SumOftotal>=1.5 or total<>-2"};
  const test::StoreFile file;
  const TDM dm(file.open());
  std::vector<std::string> all;
  for (const Dataset* dataset : dm.Datasets())
    all.push_back(dataset->SQL() + "\n--\n" + filters[all.size() % filters.size()]);
  all.emplace_back(
      "select first(tcc)*2/[A] as x, last(login) from commande where not (login like 'é%' or tcc is null)");
  return all;
}

class Mutation {
 public:
  explicit Mutation(std::vector<std::string> seeds) : seeds_(std::move(seeds)) {}

  std::string next() {
    std::string text = pick();
    for (std::size_t changes = below(4); changes > 0; --changes) change(text);
    return text;
  }

 private:
  std::size_t below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }
  const std::string& pick() { return seeds_[below(seeds_.size())]; }

  void change(std::string& text) {
    const auto part = [this](const std::string& of, std::size_t most) {
      return of.substr(below(of.size() + 1), below(most));
    };
    const std::size_t at = below(text.size() + 1);
    const std::size_t kind = below(5);
    if (kind == 0) text.erase(at, below(6));
    if (kind == 1) text.insert(at, piece());
    if (kind == 2) text.insert(at, part(text, 40));
    if (kind == 3) text.replace(at, below(12), std::string(1, static_cast<char>(below(256))));
    if (kind == 4) text.insert(at, part(pick(), 60));
  }

  std::string piece() {
    static const std::vector<std::string> pieces = [] {
      std::istringstream all(
          "'|\"|''|(|)|,|.|;|*| and | or | not | is null|=|<>| between 9 and 1| like '%'|:x|[|]|[type]|type.|"
          " first(| sum(| group by | order by | inner join |1e9|9999999999999999999999|-|/0|\n--\n|é|\xC3");
      std::vector<std::string> split = {std::string(1, '\0')};
      for (std::string each; std::getline(all, each, '|');) split.push_back(each);
      return split;
    }();
    return pieces[below(pieces.size())];
  }

  std::vector<std::string> seeds_;
  std::mt19937 random_{20240501};
};

TEST(FuzzSmoke, OnlyErrorsOfTheSystemComeOut) {
  for (const std::string& seed : seeds()) ASSERT_NO_THROW(test::fuzzDialect(seed)) << seed;
  Mutation mutation(seeds());
  for (int i = 0; i < kRuns; ++i) {
    const std::string text = mutation.next();
    ASSERT_NO_THROW(test::fuzzDialect(text)) << text;
  }
}

}  // namespace
}  // namespace tavoline
