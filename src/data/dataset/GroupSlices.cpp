#include "data/dataset/GroupSlices.h"

#include <algorithm>
#include <utility>

#include "data/sql/Types.h"

namespace tavoline {

namespace {

constexpr std::int64_t kMostSlices = 12;

class GroupSlices : public Rows {
 public:
  GroupSlices(HeldVersion snapshot, sql::Select select, sql::Parameters parameters, std::int64_t from,
              std::int64_t to)
      : snapshot_(std::move(snapshot)),
        select_(std::move(select)),
        parameters_(std::move(parameters)),
        condition_(select_.where),
        at_(from),
        to_(to) {}

  bool next() override {
    while (!slice_ || !slice_->next()) {
      slice_.reset();
      if (at_ > to_) return false;
      select_.where = sql::conjunction(condition_, sql::binary(sql::Op::Equal, select_.groupBy.front(),
                                                               sql::make(sql::Literal{Value(at_++)})));
      slice_ = snapshot_->query(select_, parameters_);
    }
    return true;
  }
  Value value(std::size_t column) const override { return slice_->value(column); }

 private:
  const HeldVersion snapshot_;
  sql::Select select_;
  const sql::Parameters parameters_;
  const sql::ExprPtr condition_;
  std::int64_t at_;
  const std::int64_t to_;
  std::unique_ptr<Rows> slice_;
};

}  // namespace

std::unique_ptr<Rows> inSlices(const HeldVersion& snapshot, const sql::Select& select,
                               const sql::Parameters& parameters) {
  if (select.groupBy.empty() || !select.where || !select.from->left) return nullptr;
  const auto* group = std::get_if<sql::Column>(&select.groupBy.front()->node);
  if (group == nullptr || group->type != FieldType::Integer) return nullptr;
  std::optional<std::int64_t> from, to;
  sql::eachTerm(select.where, [&](const sql::ExprPtr& term) {
    const auto* comparison = std::get_if<sql::Binary>(&term->node);
    if (comparison == nullptr) return;
    const auto* column = std::get_if<sql::Column>(&comparison->left->node);
    const auto* bound = std::get_if<sql::Literal>(&comparison->right->node);
    if (column == nullptr || bound == nullptr || !bound->value.isInteger()) return;
    if (column->table != group->table || column->name != group->name) return;
    if (comparison->op == sql::Op::GreaterEqual) from = bound->value.toInteger();
    if (comparison->op == sql::Op::LessEqual) to = bound->value.toInteger();
  });
  if (!from || !to || *to <= *from || *to - *from >= kMostSlices) return nullptr;
  return std::make_unique<GroupSlices>(snapshot, select, parameters, *from, *to);
}

}  // namespace tavoline
