#include "data/sql/Resolver.h"

#include <algorithm>

#include "data/sql/Refusal.h"
#include "data/sql/Types.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline::sql {
namespace {

const char* const kRemedy =
    " Remettez la dernière sauvegarde, ou examinez le fichier par « tavoline-store check ».";

/// The tables of one statement, in the order of its from clause.
class Scope {
 public:
  explicit Scope(const Catalog& catalog) : catalog_(catalog) {}

  const TableInfo& add(const std::string& name) {
    const TableInfo* table = catalog_.find(name);
    if (table == nullptr)
      throw StatementError("La table « " + name + " » manque dans les données." + kRemedy);
    if (std::find(tables_.begin(), tables_.end(), table) != tables_.end())
      refuse("La table « " + name + " » se trouve deux fois dans l'instruction.");
    tables_.push_back(table);
    return *table;
  }

  const std::vector<const TableInfo*>& tables() const { return tables_; }

  ExprPtr find(const Column& column) const {
    const TableInfo* owner = nullptr;
    const ColumnInfo* info = nullptr;
    for (const TableInfo* table : tables_) {
      if (!column.table.empty() && !sameName(column.table, table->name)) continue;
      const ColumnInfo* candidate = table->find(column.name);
      if (candidate == nullptr) continue;
      if (info != nullptr)
        refuse("La colonne « " + column.name + " » se trouve dans plusieurs tables : « " + owner->name +
               " » et « " + table->name + " ».");
      owner = table;
      info = candidate;
    }
    if (info == nullptr) missing(column);
    return make(Column{owner->name, info->name, info->type, false});
  }

 private:
  [[noreturn]] void missing(const Column& column) const {
    const bool known = column.table.empty() ||
                       std::any_of(tables_.begin(), tables_.end(),
                                   [&](const TableInfo* t) { return sameName(t->name, column.table); });
    if (!known) refuse("La table « " + column.table + " » n'est pas parmi celles de l'instruction.");
    const std::string where = column.table.empty() ? "" : " de la table « " + column.table + " »";
    throw StatementError("La colonne « " + column.name + " »" + where + " manque dans les données." +
                         kRemedy);
  }

  const Catalog& catalog_;
  std::vector<const TableInfo*> tables_;
};

bool isSame(const ExprPtr& a, const Column& b) {
  const auto* column = std::get_if<Column>(&a->node);
  return column != nullptr && column->table == b.table && column->name == b.name;
}

class SelectResolution {
 public:
  SelectResolution(const Select& select, const Catalog& catalog) : in_(select), scope_(catalog) {}

  Select run() {
    out_.from = from(in_.from);
    out_.where = where();
    for (const ExprPtr& expr : in_.groupBy) out_.groupBy.push_back(group(expr));
    for (const Item& item : in_.items) add(item);
    for (const Order& order : in_.orderBy) out_.orderBy.push_back({orderTerm(order.expr), order.descending});
    out_.having = in_.having;
    out_.limit = in_.limit;
    out_.updatable =
        in_.items.size() == 1 && !in_.items[0].expr && in_.from->left == nullptr && in_.groupBy.empty();
    checkGroups();
    return std::move(out_);
  }

 private:
  ExprPtr find(const Column& column) const { return scope_.find(column); }
  ColumnFinder finder() const {
    return [this](const Column& column) { return find(column); };
  }

  FromPtr from(const FromPtr& branch) {
    From result;
    if (!branch->left) {
      result.table = scope_.add(branch->table).name;
    } else {
      result.left = from(branch->left);
      result.right = from(branch->right);
      result.on = resolvedCondition(branch->on, finder());
      refuseAggregate(result.on);
    }
    return std::make_shared<const From>(std::move(result));
  }

  ExprPtr where() const {
    ExprPtr condition = resolvedCondition(in_.where, finder());
    refuseAggregate(condition);
    return condition;
  }

  ExprPtr group(const ExprPtr& expr) const {
    const auto* column = std::get_if<Column>(&expr->node);
    if (column == nullptr) refuse("Un regroupement se fait sur une colonne.");
    return find(*column);
  }

  void add(const Item& item) {
    if (!item.expr) return addAll();
    Item result;
    result.expr = resolved(item.expr, finder());
    result.type = typeOf(*result.expr).value_or(FieldType::Text);
    result.name = item.name;
    const auto* column = std::get_if<Column>(&result.expr->node);
    if (column != nullptr && sameName(item.name, column->name)) result.name = column->name;
    if (result.name.empty()) result.name = "Expr" + std::to_string(out_.items.size() + 1);
    out_.items.push_back(std::move(result));
  }

  void addAll() {
    for (const TableInfo* table : scope_.tables()) {
      for (const ColumnInfo& column : table->columns)
        out_.items.push_back(
            {make(Column{table->name, column.name, column.type, false}), column.name, column.type});
    }
  }

  /// A result column by its name, or else a column of the tables.
  ExprPtr orderTerm(const ExprPtr& expr) const {
    const auto* column = std::get_if<Column>(&expr->node);
    if (column != nullptr && column->table.empty()) {
      for (const Item& item : out_.items) {
        if (sameName(item.name, column->name)) return item.expr;
      }
    }
    ExprPtr result = resolved(expr, finder());
    if (std::holds_alternative<Literal>(result->node) || std::holds_alternative<Parameter>(result->node))
      refuse("Un tri se fait sur une colonne.");
    return result;
  }

  static void refuseAggregate(const ExprPtr& condition) {
    if (containsAggregate(condition)) refuse("Une condition ne contient pas de fonction d'ensemble.");
  }

  /// In a statement with groups or aggregates, a column outside of an aggregate must be one of the groups.
  void checkGroups() const {
    bool aggregates = !out_.groupBy.empty(), ordered = false;
    const auto note = [&](const ExprPtr& expr) {
      aggregates = aggregates || containsAggregate(expr);
      ordered = ordered || containsFirstOrLast(expr);
    };
    for (const Item& item : out_.items) note(item.expr);
    for (const Order& order : out_.orderBy) note(order.expr);
    if (!aggregates) return;
    if (ordered && !out_.groupBy.empty()) refuse("First et Last ne s'emploient pas avec « group by ».");
    for (const Item& item : out_.items) checkGrouped(item.expr);
    for (const Order& order : out_.orderBy) checkGrouped(order.expr);
  }

  void checkGrouped(const ExprPtr& expr) const {
    if (const auto* column = std::get_if<Column>(&expr->node)) {
      const auto same = [&](const ExprPtr& group) { return isSame(group, *column); };
      if (std::any_of(out_.groupBy.begin(), out_.groupBy.end(), same)) return;
      refuse("La colonne « " + column->name + " » n'est ni regroupée ni dans une fonction d'ensemble.");
    }
    if (const auto* operation = std::get_if<Binary>(&expr->node)) {
      checkGrouped(operation->left);
      checkGrouped(operation->right);
    }
  }

  const Select& in_;
  Scope scope_;
  Select out_;
};

void collectTables(const FromPtr& from, std::vector<std::string>& tables) {
  if (from->left) {
    collectTables(from->left, tables);
    collectTables(from->right, tables);
  } else {
    tables.push_back(from->table);
  }
}

}  // namespace

Select resolve(const Select& select, const Catalog& catalog) {
  return SelectResolution(select, catalog).run();
}

Update resolve(const Update& update, const Catalog& catalog) {
  Scope scope(catalog);
  Update result;
  result.table = scope.add(update.table).name;
  const ColumnFinder find = [&](const Column& column) { return scope.find(column); };
  for (const Update::Assignment& assignment : update.assignments) {
    const Column column = std::get<Column>(scope.find({update.table, assignment.column})->node);
    const ExprPtr value = typedAs(resolved(assignment.value, find), column.type);
    if (containsAggregate(value)) refuse("Une mise à jour ne contient pas de fonction d'ensemble.");
    result.assignments.push_back({column.name, value, column.type});
  }
  result.where = resolvedCondition(update.where, find);
  if (containsAggregate(result.where)) refuse("Une condition ne contient pas de fonction d'ensemble.");
  return result;
}

std::vector<std::string> tablesOf(const Select& select) {
  std::vector<std::string> tables;
  collectTables(select.from, tables);
  return tables;
}

}  // namespace tavoline::sql
