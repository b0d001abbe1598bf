#include "toolkit/report/model/Code128.h"

#include <zint.h>

#include <memory>

namespace tavoline::report {

std::vector<bool> code128(std::string_view value) {
  if (value.empty()) return {};
  const std::unique_ptr<zint_symbol, void (*)(zint_symbol*)> symbol(ZBarcode_Create(), ZBarcode_Delete);
  if (!symbol) return {};
  symbol->symbology = BARCODE_CODE128;
  symbol->input_mode = UNICODE_MODE;
  const auto* source = reinterpret_cast<const unsigned char*>(value.data());
  if (ZBarcode_Encode(symbol.get(), source, static_cast<int>(value.size())) >= ZINT_ERROR) return {};
  std::vector<bool> modules(static_cast<std::size_t>(symbol->width));
  for (std::size_t i = 0; i < modules.size(); ++i)
    modules[i] = (symbol->encoded_data[0][i / 8] >> (i % 8)) & 1;
  return modules;
}

}  // namespace tavoline::report
