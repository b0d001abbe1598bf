#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "data/dataset/DataSource.h"
#include "data/dataset/Dataset.h"

namespace tavoline {

/// The one data module: the connection, the named datasets in the order in which they open, and their partners.
/// No logic. Created second at start, lives until the process ends.
class TDM {
 public:
  static const char ConnectionString[];  ///< As every installation has it; file and password come from it.

  TDM();  ///< Opens the store that ConnectionString names, then every dataset but the actions. Throws.
  explicit TDM(std::shared_ptr<Store> store);
  ~TDM();
  TDM(const TDM&) = delete;
  TDM& operator=(const TDM&) = delete;

  DataSource* Source(std::string_view name) const;  ///< A partner by name without regard to case; null if absent.
  Dataset* Find(std::string_view name) const;       ///< A dataset by its exact name; null if absent.
  void Idle();  ///< When the user does nothing: renews snapshots and lets the store fold its log.
  Store& store() const { return *store_; }

#include "data/DMU.datasets.inc"

 private:
  std::shared_ptr<Store> store_;
};

extern TDM* DM;  ///< Null before it is created.

}  // namespace tavoline
