#pragma once

namespace tavoline {

/// A control that is tied to a dataset of the data module. Screens are made before and after the module, so
/// the tie is a step of its own: TForm asks every such child for it once DM exists.
class Bindable {
 public:
  /// Throws DatasetError for a data source that DM does not have. No effect on a control without one.
  virtual void bind() = 0;

 protected:
  ~Bindable() = default;
};

}  // namespace tavoline
