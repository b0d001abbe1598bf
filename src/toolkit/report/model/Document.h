#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/value/Value.h"
#include "toolkit/report/model/Template.h"

namespace tavoline::report {

/// Told after each page of a long action; false to give up.
using Progress = std::function<bool(std::size_t done, std::size_t total)>;

/// A band on a page.
struct PlacedBand {
  std::uint32_t band = 0;  ///< Place in the template.
  float top = 0;           ///< Units from the top of the paper.
};

/// An object on a page, put together from the template and the page's words. Valid while the document is
/// unchanged.
struct Item {
  const Band* band = nullptr;
  const Object* object = nullptr;
  Rect rect;              ///< On the paper, in units.
  std::string_view text;  ///< Of memos, and the value of a barcode; UTF-8.
  std::size_t word = 0;   ///< Place of the text among the page's texts.
};

/// One prepared page: its bands in order, and their texts packed, so that thousands of pages stay small.
class Page {
 public:
  void add(PlacedBand band) { bands_.push_back(band); }
  void addText(std::string_view text);

  const std::vector<PlacedBand>& bands() const { return bands_; }
  std::size_t textCount() const { return ends_.size(); }
  std::string_view text(std::size_t index) const;
  std::string_view words() const { return words_; }  ///< All texts, one behind the other.
  void setText(std::size_t index, std::string_view text);
  void shrink();  ///< Gives back what was only needed while the page was filled.

 private:
  std::vector<PlacedBand> bands_;
  std::string words_;
  std::vector<std::uint32_t> ends_;  // of each text within words_
};

/// A prepared document: what a template became, independent of the datasets that filled it.
class Document {
 public:
  Document() = default;
  Document(std::shared_ptr<const Template> report, SharedBytes logo);

  bool empty() const { return pages_.empty(); }
  std::size_t pageCount() const { return pages_.size(); }
  const Page& page(std::size_t index) const { return pages_[index]; }
  void add(Page page) { pages_.push_back(std::move(page)); }
  /// Appends the pages of a document of the same template.
  void append(Document other);

  const Template& report() const { return *template_; }
  const std::shared_ptr<const Template>& sharedReport() const { return template_; }
  const PageSetup& setup() const { return setup_; }
  const SharedBytes& logo() const { return logo_; }  ///< As stored in its file; null for none.

  /// What stands on a page, in printing order; objects that are not visible do not stand anywhere.
  std::vector<Item> items(std::size_t page) const;
  void setText(std::size_t page, std::size_t word, std::string_view text) {
    pages_[page].setText(word, text);
  }
  /// Lays the same bands out on another paper. Page footers stay with the bands they stood under. False when
  /// `progress` gave up: the pages stay as they are.
  bool rearrange(const PageSetup& setup, const Progress& progress = {});
  void setSetup(const PageSetup& setup) { setup_ = setup; }  ///< For pages that were laid out so already.

  /// The page as text: paper, bands, and each object with its rectangle and its words.
  std::string dump(std::size_t page) const;
  std::string dump() const;

 private:
  std::shared_ptr<const Template> template_;
  PageSetup setup_;
  SharedBytes logo_;
  std::vector<Page> pages_;
};

/// Number of texts that a band leaves on a page: its visible objects that carry words.
std::size_t textCount(const Band& band);

}  // namespace tavoline::report
