#pragma once

#include <memory>
#include <utility>

#include "data/store/Store.h"

namespace tavoline {

/// How an engine's store asks those who hold its versions to let go.
class Relieving {
 public:
  void by(std::weak_ptr<const Store::Reliever> reliever) { reliever_ = std::move(reliever); }
  /// Does nothing amid another asking: those who let go may ask for snapshots.
  void ask(Store::Relief relief) {
    const auto reliever = reliever_.lock();
    if (!reliever || underWay_) return;
    underWay_ = true;
    (*reliever)(relief);
    underWay_ = false;
  }
  bool underWay() const { return underWay_; }

 private:
  std::weak_ptr<const Store::Reliever> reliever_;
  bool underWay_ = false;
};

}  // namespace tavoline
