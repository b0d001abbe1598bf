// The fuzz target on splices of the system's own statements and filters, the same ones in every run.

#include <gtest/gtest.h>

#include <random>
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

/// Pieces of the seeds, put together anew.
class Splices {
 public:
  std::string next() {
    std::string text = part(80);
    for (std::size_t parts = below(4); parts > 0; --parts) text.insert(below(text.size() + 1), part(40));
    if (below(2) == 0 && !text.empty()) text[below(text.size())] = static_cast<char>(below(256));
    return text;
  }

 private:
  std::size_t below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }
  std::string part(std::size_t most) {
    const std::string& of = seeds_[below(seeds_.size())];
    return below(4) == 0 ? of : of.substr(below(of.size()), below(most));
  }

  const std::vector<std::string> seeds_ = seeds();
  std::mt19937 random_{20240501};
};

TEST(FuzzSmoke, OnlyErrorsOfTheSystemComeOut) {
  for (const std::string& seed : seeds()) ASSERT_NO_THROW(test::fuzzDialect(seed)) << seed;
  Splices splices;
  for (int i = 0; i < kRuns; ++i) {
    const std::string text = splices.next();
    ASSERT_NO_THROW(test::fuzzDialect(text)) << text;
  }
}

}  // namespace
}  // namespace tavoline
