#include "toolkit/report/model/Document.h"

#include <cstdio>

#include "toolkit/report/model/Layout.h"

namespace tavoline::report {

void Page::addText(std::string_view text) {
  words_ += text;
  ends_.push_back(static_cast<std::uint32_t>(words_.size()));
}

std::string_view Page::text(std::size_t index) const {
  const std::size_t start = index == 0 ? 0 : ends_[index - 1];
  return std::string_view(words_).substr(start, ends_[index] - start);
}

void Page::setText(std::size_t index, std::string_view text) {
  const std::size_t start = index == 0 ? 0 : ends_[index - 1];
  const std::size_t before = ends_[index] - start;
  words_.replace(start, before, text);
  for (std::size_t i = index; i < ends_.size(); ++i) {
    ends_[i] = static_cast<std::uint32_t>(ends_[i] + text.size() - before);
  }
}

void Page::shrink() {
  bands_.shrink_to_fit();
  words_.shrink_to_fit();
  ends_.shrink_to_fit();
}

std::size_t textCount(const Band& band) {
  std::size_t count = 0;
  for (const Object& object : band.objects) count += object.visible && object.hasText();
  return count;
}

Document::Document(std::shared_ptr<const Template> report, SharedBytes logo)
    : template_(std::move(report)), setup_(template_->page), logo_(std::move(logo)) {}

void Document::append(Document other) {
  for (Page& page : other.pages_) pages_.push_back(std::move(page));
}

std::vector<Item> Document::items(std::size_t index) const {
  const Page& page = pages_[index];
  const double left = setup_.marginLeft * kUnitsPerMm;
  std::vector<Item> items;
  std::size_t word = 0;
  for (const PlacedBand& placed : page.bands()) {
    const Band& band = template_->bands[placed.band];
    for (const Object& object : band.objects) {
      if (!object.visible) continue;
      Item item{&band,
                &object,
                {left + object.left, placed.top + object.top, object.width, object.height},
                {},
                word};
      if (object.hasText()) item.text = page.text(word++);
      items.push_back(item);
    }
  }
  return items;
}

namespace {

// The bands of a page with the texts that belong to each, cut out of the page.
struct LooseBand {
  std::uint32_t band;
  std::vector<std::string_view> texts;
};

std::vector<LooseBand> loosen(const Template& report, const Page& page) {
  std::vector<LooseBand> bands;
  std::size_t word = 0;
  for (const PlacedBand& placed : page.bands()) {
    LooseBand loose{placed.band, {}};
    const std::size_t count = textCount(report.bands[placed.band]);
    for (std::size_t i = 0; i < count; ++i) loose.texts.push_back(page.text(word++));
    bands.push_back(std::move(loose));
  }
  return bands;
}

void put(Page& page, const LooseBand& loose, double top) {
  page.add({loose.band, static_cast<float>(top)});
  for (std::string_view text : loose.texts) page.addText(text);
}

}  // namespace

bool Document::rearrange(const PageSetup& setup, const Progress& progress) {
  const Band* footer = template_->band(BandKind::PageFooter);
  PageLayout layout(setup, footer ? footer->height : 0);
  std::vector<Page> pages(1);
  LooseBand foot{0, {}};
  const auto finish = [&] {
    if (footer) put(pages.back(), foot, layout.footerTop());
    pages.back().shrink();
  };
  for (std::size_t done = 0; done < pages_.size(); ++done) {
    if (progress && !progress(done, pages_.size())) return false;
    const std::vector<LooseBand> bands = loosen(*template_, pages_[done]);
    for (const LooseBand& loose : bands) {
      const Band& band = template_->bands[loose.band];
      if (&band == footer) continue;
      const PageLayout::Spot spot = layout.place(band.height);
      if (spot.newPage) {
        finish();
        pages.emplace_back();
      }
      if (footer) foot = bands.back();
      put(pages.back(), loose, spot.top);
    }
    if (footer && !bands.empty()) foot = bands.back();
  }
  finish();
  pages_ = std::move(pages);
  setup_ = setup;
  return true;
}

namespace {

const char* kindName(const Band& band) {
  switch (band.kind) {
    case BandKind::Title:
      return "title";
    case BandKind::MasterData:
      return "data";
    case BandKind::Summary:
      return "summary";
    case BandKind::PageFooter:
      return "footer";
  }
  return "";
}

const char* kindName(const Object& object) {
  switch (object.kind) {
    case ObjectKind::Memo:
      return "memo";
    case ObjectKind::SysMemo:
      return "sysmemo";
    case ObjectKind::Picture:
      return "picture";
    case ObjectKind::BarCode:
      return "barcode";
    case ObjectKind::Line:
      return "line";
  }
  return "";
}

std::string rectangle(const Rect& rect) {
  char text[64];
  std::snprintf(text, sizeof text, "%7.2f %7.2f %7.2f x %6.2f", rect.left, rect.top, rect.width, rect.height);
  return text;
}

std::string inQuotes(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '\n') {
      result += "\\n";
    } else {
      result += c;
    }
  }
  return result + "\"";
}

}  // namespace

std::string Document::dump(std::size_t index) const {
  char head[96];
  std::snprintf(head, sizeof head, "page %zu of %zu, %g x %g mm\n", index + 1, pages_.size(), setup_.width,
                setup_.height);
  std::string result = head;
  const std::vector<Item> all = items(index);
  auto item = all.begin();
  for (const PlacedBand& placed : pages_[index].bands()) {
    const Band& band = template_->bands[placed.band];
    char line[96];
    std::snprintf(line, sizeof line, "%s at %.2f, %.2f high\n", kindName(band),
                  static_cast<double>(placed.top), band.height);
    result += line;
    for (const Object& object : band.objects) {
      if (!object.visible) continue;
      result += "  " + rectangle(item->rect) + "  " + kindName(object);
      if (object.hasText()) result += " " + inQuotes(item->text);
      result += "\n";
      ++item;
    }
  }
  return result;
}

std::string Document::dump() const {
  std::string result;
  for (std::size_t i = 0; i < pages_.size(); ++i) result += dump(i);
  return result;
}

}  // namespace tavoline::report
