#include "data/store/StoreContract.h"
#include "tools/store/Sqlite.h"

namespace tavoline::test {

namespace {

class SqliteUnderTest : public StoreUnderTest {
 public:
  std::shared_ptr<Store> open() override { return file_.open(); }
  void hold(const std::string& /*table*/) override {
    holder_ = std::make_unique<tool::Database>(file_.path().string(), tool::Database::Mode::Create);
    holder_->execute("BEGIN IMMEDIATE");
  }
  void release() override { holder_.reset(); }

 private:
  StoreFile file_;
  std::unique_ptr<tool::Database> holder_;
};

}  // namespace

std::vector<StoreKind> storeKinds() {
  return {{"Sqlite", [] { return std::make_unique<SqliteUnderTest>(); }}};
}

INSTANTIATE_TEST_SUITE_P(Engines, StoreContract, testing::ValuesIn(storeKinds()),
                         [](const auto& engine) { return engine.param.name; });

}  // namespace tavoline::test
