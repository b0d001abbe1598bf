#pragma once

#include <memory>
#include <string>

namespace tavoline::bench {

/// The gestures of a tap on Qt's own table models, over the store of the working directory: a refresh or a
/// reopening is a `select()`, a filter is the model's own, a write is `submitAll()`. A model that has to
/// stand on a row fetches up to that row, since it has no other way there.
class QtModels {
 public:
  QtModels();
  ~QtModels();
  QtModels(const QtModels&) = delete;
  QtModels& operator=(const QtModels&) = delete;

  /// The first tap of an article in the newest order of the store, on the table `table`.
  void tap(const std::string& designation, const std::string& table);

 private:
  struct Models;
  std::unique_ptr<Models> models_;
};

}  // namespace tavoline::bench
