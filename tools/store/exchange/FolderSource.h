#pragma once

#include <string>

#include "tools/store/exchange/Description.h"
#include "tools/store/exchange/Rows.h"

namespace tavoline::tool {

/// The tables of a folder that `exportStore` wrote. Whatever is not as it was written there is refused.
class FolderSource : public RowSource {
 public:
  /// Throws StoreError for a folder whose description is missing or cannot be read, or where a table is
  /// missing.
  explicit FolderSource(std::string folder);

  void read(RowReceiver& receiver) override;
  bool wrapsPictures() const override { return false; }

 private:
  void readTable(const schema::Table& table, const Description::Table& described,
                 RowReceiver& receiver) const;
  Value picture(const std::string& name) const;

  std::string folder_;
  Description description_;
};

}  // namespace tavoline::tool
