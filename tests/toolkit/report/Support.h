#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "toolkit/report/Rows.h"
#include "toolkit/report/model/Renderer.h"

namespace tavoline::report {

inline std::shared_ptr<const Template> templateOf(const std::string& xml) {
  TemplateResult result = readTemplate(QByteArray::fromStdString(xml));
  if (const auto* wrong = std::get_if<TemplateError>(&result)) {
    ADD_FAILURE() << wrong->text();
    return nullptr;
  }
  return std::get<std::shared_ptr<const Template>>(result);
}

inline Document rendered(const std::shared_ptr<const Template>& report, std::vector<RecordSource*> sources,
                         const EstablishmentBlock& block = {}) {
  Renderer renderer(report, std::move(sources), block);
  renderer.finish();
  return std::move(*renderer.document());
}

/// The words on a page, in printing order, those of kind `band` only if one is given.
inline std::vector<std::string> words(const Document& document, std::size_t page,
                                      const BandKind* band = nullptr) {
  std::vector<std::string> result;
  for (const Item& item : document.items(page)) {
    if (band && item.band->kind != *band) continue;
    if (item.object->hasText()) result.emplace_back(item.text);
  }
  return result;
}
inline std::vector<std::string> words(const Document& document, std::size_t page, BandKind band) {
  return words(document, page, &band);
}

}  // namespace tavoline::report
