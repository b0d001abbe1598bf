#pragma once

#include <string>

#include "tools/store/Publishing.h"
#include "tools/store/exchange/Report.h"
#include "tools/store/exchange/Rows.h"

namespace tavoline::tool {

struct ImportManner {
  bool strict = false;  ///< The first refused row ends it.
  bool trial = false;   ///< Reads and tells, writes nothing.
  Access access = {};   ///< To the store and the report.
};

/// Makes the store `target` of what stands under `path`: a Jet 4 file, or a folder that `export` wrote. The
/// store gets its name once all its rows have been read back from it; the report stands beside it then (of a
/// store on a server, in the working folder). `path` is never changed. Throws StoreError, and then leaves
/// nothing.
ImportReport importStore(const std::string& path, const std::string& target, const ImportManner& manner);

/// The same from any source; `path` is what sentences call it. Writes no report file.
ImportReport importRows(RowSource& source, const std::string& path, const std::string& target,
                        const ImportManner& manner);

}  // namespace tavoline::tool
