#include "toolkit/report/model/Renderer.h"

#include "data/value/Regional.h"

namespace tavoline::report {

namespace {

// Records read at most between two returns to the caller: a band that prints nothing fills no page.
constexpr std::size_t kRecordsAtOnce = 256;

double footerHeight(const Template& report) {
  const Band* footer = report.band(BandKind::PageFooter);
  return footer ? footer->height : 0;
}

bool isEmpty(const Value& value) {
  return value.isNull() || (value.isText() && value.text().empty());
}

}  // namespace

Renderer::Renderer(std::shared_ptr<const Template> report, std::vector<RecordSource*> sources,
                   const EstablishmentBlock& establishment)
    : template_(std::move(report)),
      sources_(std::move(sources)),
      establishment_(establishment),
      layout_(template_->page, footerHeight(*template_)),
      document_(std::make_shared<Document>(template_, establishment.logo)),
      sums_(template_->aggregates.size(), 0.0) {
  sources_.resize(template_->datasets.size(), nullptr);
}

bool Renderer::advance() {
  const std::size_t pages = document_->pageCount();
  const std::size_t records = recordsRead_;
  while (step_ != Step::Done && document_->pageCount() == pages && recordsRead_ - records < kRecordsAtOnce)
    step();
  return step_ != Step::Done;
}

void Renderer::finish() {
  while (advance()) {
  }
}

std::size_t Renderer::recordCount() {
  std::size_t count = 0;
  for (const Band& band : template_->bands) {
    if (band.source >= 0 && source(band.source)) count += source(band.source)->count();
  }
  return count;
}

void Renderer::step() {
  switch (step_) {
    case Step::Title:
      rewind();
      if (template_->band(BandKind::Title)) print(0);
      step_ = Step::StartBand;
      return;
    case Step::StartBand:
      return startBand();
    case Step::Records:
      return printRecord();
    case Step::Summary:
      for (std::size_t i = 0; i < template_->bands.size(); ++i) {
        if (template_->bands[i].kind == BandKind::Summary) print(i);
      }
      finishPage();
      step_ = Step::Done;
      return;
    case Step::Done:
      return;
  }
}

// The title reads first records, wherever the datasets of the data bands stood before.
void Renderer::rewind() {
  for (const Band& band : template_->bands) {
    if (band.source >= 0 && source(band.source)) source(band.source)->first();
  }
}

void Renderer::startBand() {
  while (band_ < template_->bands.size() && template_->bands[band_].kind != BandKind::MasterData) ++band_;
  if (band_ == template_->bands.size()) {
    step_ = Step::Summary;
    return;
  }
  RecordSource* rows = source(template_->bands[band_].source);
  if (!rows) {
    ++band_;
    return;
  }
  rows->first();
  step_ = Step::Records;
}

void Renderer::printRecord() {
  RecordSource& rows = *source(template_->bands[band_].source);
  if (rows.eof()) {
    ++band_;
    step_ = Step::StartBand;
    return;
  }
  collect();
  print(band_);
  ++recordsRead_;
  rows.next();
}

void Renderer::collect() {
  for (std::size_t i = 0; i < sums_.size(); ++i) {
    const Aggregate& aggregate = template_->aggregates[i];
    if (aggregate.band != static_cast<int>(band_) || !source(aggregate.field.source)) continue;
    const Value value = source(aggregate.field.source)->value(aggregate.field.field);
    if (!isEmpty(value)) sums_[i] += value.toFloat();
  }
}

void Renderer::print(std::size_t index) {
  const Band& band = template_->bands[index];
  const PageLayout::Spot spot = layout_.place(band.height);
  if (spot.newPage) finishPage();
  bool placed = false;
  for (const Object& object : band.objects) {
    if (!object.visible) continue;
    if (!placed) page_.add({static_cast<std::uint32_t>(index), static_cast<float>(spot.top)});
    placed = true;
    if (object.hasText()) page_.addText(textOf(object));
  }
}

void Renderer::finishPage() {
  for (std::size_t i = 0; i < template_->bands.size(); ++i) {
    const Band& band = template_->bands[i];
    if (band.kind != BandKind::PageFooter) continue;
    page_.add({static_cast<std::uint32_t>(i), static_cast<float>(layout_.footerTop())});
    for (const Object& object : band.objects) {
      if (object.visible && object.hasText()) page_.addText(textOf(object));
    }
  }
  page_.shrink();
  document_->add(std::move(page_));
  page_ = {};
}

std::string Renderer::textOf(const Object& object) const {
  if (object.kind == ObjectKind::BarCode) return textOf(object.barcode, {});
  switch (object.source) {
    case EstablishmentPart::Name:
      return establishment_.name;
    case EstablishmentPart::Address:
      return establishment_.address();
    case EstablishmentPart::Foot:
      return establishment_.foot();
    case EstablishmentPart::Logo:
    case EstablishmentPart::None:
      break;
  }
  std::string text;
  for (const auto& piece : object.text) {
    if (const auto* literal = std::get_if<std::string>(&piece)) {
      text += *literal;
      continue;
    }
    const auto& expression = std::get<Expression>(piece);
    if (const auto* field = std::get_if<FieldName>(&expression)) {
      text += textOf(*field, object.displayFormat);
    } else {
      text += textOf(std::get<std::vector<SumTerm>>(expression), object.displayFormat);
    }
  }
  return text;
}

std::string Renderer::textOf(const FieldName& field, const std::string& displayFormat) const {
  RecordSource* rows = source(field.source);
  const Value value = rows ? rows->value(field.field) : Value();
  return value.isNumber() && !displayFormat.empty() ? formatPattern(displayFormat, value.toFloat())
                                                    : value.text();
}

std::string Renderer::textOf(const std::vector<SumTerm>& sum, const std::string& displayFormat) const {
  double total = 0;
  for (const SumTerm& term : sum) total += sums_[static_cast<std::size_t>(term.aggregate)];
  return displayFormat.empty() ? formatFloat(total) : formatPattern(displayFormat, total);
}

}  // namespace tavoline::report
