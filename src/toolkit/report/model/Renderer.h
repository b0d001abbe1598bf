#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/report/model/Document.h"
#include "toolkit/report/model/Establishment.h"
#include "toolkit/report/model/Layout.h"
#include "toolkit/report/model/RecordSource.h"

namespace tavoline::report {

/// Fills a template from its datasets in one pass, page after page.
///
/// The datasets really move: a text reads the record that is current when its band is printed, so a title
/// shows the first record and a summary the last. Aggregates are collected over every record a data band runs
/// through, whatever the band shows. Nothing is put back when the pass ends.
class Renderer {
 public:
  /// `sources` by the template's table of datasets; null where nothing stands behind one. They outlive the
  /// renderer.
  Renderer(std::shared_ptr<const Template> report, std::vector<RecordSource*> sources,
           const EstablishmentBlock& establishment);

  /// Works until a page is finished, or for some hundred records. False once the document is complete; throws
  /// what the datasets throw.
  bool advance();
  void finish();  ///< Everything that is left.

  /// The finished pages; the same document from beginning to end.
  const std::shared_ptr<Document>& document() const { return document_; }
  std::size_t recordsRead() const { return recordsRead_; }
  std::size_t recordCount();  ///< Of all data bands; may be slow.

 private:
  enum class Step { Title, StartBand, Records, Summary, Done };

  void step();
  void rewind();
  void startBand();
  void printRecord();
  void print(std::size_t band);
  void finishPage();
  void nextBand();
  RecordSource* source(int index) const { return sources_[static_cast<std::size_t>(index)]; }
  void collect();
  std::string textOf(const Object& object) const;
  std::string textOf(const FieldName& field, const std::string& displayFormat) const;
  std::string textOf(const std::vector<SumTerm>& sum, const std::string& displayFormat) const;

  std::shared_ptr<const Template> template_;
  std::vector<RecordSource*> sources_;
  EstablishmentBlock establishment_;
  PageLayout layout_;
  std::shared_ptr<Document> document_;
  Page page_;                 // being filled
  std::vector<double> sums_;  // by the template's aggregates
  Step step_ = Step::Title;
  std::size_t band_ = 0;  // the data band that runs
  std::size_t recordsRead_ = 0;
};

}  // namespace tavoline::report
