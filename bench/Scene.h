#pragma once

#include <string>

namespace tavoline::bench {

/// The day with as many orders in a small store as in a large one; no other order is of its year.
constexpr struct { int year = 2040, month = 6, day = 15, orders = 150; } kBusyDay;

/// A private copy of a generated store, named BDD.mdb in a folder of its own. Removed with the scene.
class Scene {
 public:
  /// `data` holds the generated stores, one folder per size, as bench/run leaves them.
  Scene(const std::string& data, int orders);
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  const std::string& folder() const { return folder_; }
  int orders() const { return orders_; }
  /// Makes the folder the working directory, where a workstation looks for its store, and the store ready for
  /// work: every table free, every article in stock, the busy day's orders in their places.
  void enter() const;

 private:
  std::string folder_;
  int orders_;
};

}  // namespace tavoline::bench
