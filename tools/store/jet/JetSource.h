#pragma once

#include <string>

#include "tools/store/exchange/Rows.h"

namespace tavoline::tool::jet {

/// The seventeen tables of a Jet 4 file, read in a process of its own with limits of memory and time. The
/// file is never changed.
class JetSource : public RowSource {
 public:
  /// Throws StoreError unless the file's head is that of a Jet 4 file.
  explicit JetSource(std::string path);

  void read(RowReceiver& receiver) override;
  bool wrapsPictures() const override { return true; }

 private:
  std::string path_;
};

}  // namespace tavoline::tool::jet
