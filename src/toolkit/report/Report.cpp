#include "toolkit/report/Report.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtWidgets/QApplication>

#include "data/DMU.h"
#include "data/value/Errors.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/model/Renderer.h"
#include "toolkit/report/preview/Preview.h"

namespace tavoline {

namespace {

constexpr int kBeforeShowing = 200;  // milliseconds in which most documents are complete

// The renderer with the doors to its datasets; lives as long as the document is in the making.
struct Work {
  std::vector<std::unique_ptr<report::DatasetSource>> doors;
  std::unique_ptr<report::Renderer> renderer;
};

report::TemplateResult templateOf(const std::string& name) {
  QFile file(QString::fromStdString(":/templates/" + name + ".xml"));
  if (file.open(QIODevice::ReadOnly)) return report::readTemplate(file.readAll());
  return report::TemplateError{0, 0, "le modèle « " + name + " » manque dans le programme"};
}

report::RecordSource* door(Work& work, const report::ReportDataset& wanted) {
  if (wanted.dataSet.empty()) return nullptr;
  Dataset* dataset = DM ? DM->Find(wanted.dataSet) : nullptr;
  if (!dataset)
    throw Error("Le document demande les données « " + wanted.dataSet + " », qui n'existent pas.");
  return work.doors.emplace_back(std::make_unique<report::DatasetSource>(*dataset)).get();
}

// The owner of the installation hears once what his file says wrong; the documents print all the same.
void tellProblems(const report::Establishment& establishment) {
  static std::vector<std::string> told;
  if (establishment.problems().empty() || establishment.problems() == told) return;
  told = establishment.problems();
  ShowMessage(told.front());
}

// The first pages, or the whole of a short document, before anything is shown.
void begin(report::Build& build) {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < kBeforeShowing) {
    if (build.advance()) continue;
    build.advance = nullptr;
    return;
  }
}

}  // namespace

Report::Report(const char* screenClass, const char* name, QWidget* owner)
    : name_(name), owner_(owner), template_(templateOf(std::string(screenClass) + "." + name)) {
  const auto* usable = std::get_if<std::shared_ptr<const report::Template>>(&template_);
  if (!usable) return;
  PrintOptions.ShowDialog = (*usable)->showDialog;
  PrintOptions.Printer = (*usable)->printer;
  PrintOptions.PrintOnSheet = (*usable)->printOnSheet;
}

Report::~Report() = default;

std::shared_ptr<const report::Template> Report::usable() const {
  if (const auto* wrong = std::get_if<report::TemplateError>(&template_)) {
    throw Error("Le modèle du document « " + name_ + " » ne peut pas être lu : " + wrong->text() + ".");
  }
  return std::get<std::shared_ptr<const report::Template>>(template_);
}

report::Build Report::build() const {
  const auto report = usable();
  const auto establishment = report::Establishment::load();
  tellProblems(establishment);
  const auto work = std::make_shared<Work>();
  std::vector<report::RecordSource*> sources;
  for (const report::ReportDataset& wanted : report->datasets) sources.push_back(door(*work, wanted));
  work->renderer =
      std::make_unique<report::Renderer>(report, sources, establishment.block(report->establishment));
  return {work->renderer->document(), [work] { return work->renderer->advance(); },
          [work] { return work->renderer->recordsRead(); }, [work] { return work->renderer->recordCount(); }};
}

void Report::keep(std::shared_ptr<report::Document> document, bool clearLast) {
  if (clearLast || !document_) {
    document_ = std::move(document);
  } else {
    document_->append(std::move(*document));
  }
}

void Report::PrepareReport(bool ClearLastReport) {
  report::Build work = build();
  interrupted_ = !report::complete(work, QApplication::activeWindow());
  keep(work.document, ClearLastReport);
}

void Report::ShowReport(bool ClearLastReport) {
  const auto report = usable();
  if (!report->preview.empty()) {
    auto* panel =
        owner_ ? owner_->findChild<PreviewPanel*>(QString::fromStdString(report->preview)) : nullptr;
    if (!panel) throw Error("Le volet d'aperçu « " + report->preview + " » n'existe pas.");
    PrepareReport(ClearLastReport);
    return panel->open({document_, {}, {}, {}, interrupted_}, PrintOptions);
  }
  report::Build work;
  if (ClearLastReport && !Preview::observer) {
    work = build();
    begin(work);
    document_ = work.document;
    interrupted_ = false;
  } else {
    PrepareReport(ClearLastReport);
    work.document = document_;
    work.interrupted = interrupted_;
  }
  Preview(std::move(work), PrintOptions, QApplication::activeWindow()).run();
  if (OnClosePreview) OnClosePreview();
}

void Report::Print() {
  if (!document_ || document_->empty())
    throw Error("Le document « " + name_ + " » n'a pas été préparé : il n'y a rien à imprimer.");
  if (interrupted_)
    throw Error("La préparation du document « " + name_ +
                " » a été interrompue : il n'est pas complet, et n'est pas imprimé.");
  ProgressBox box("Impression…", QApplication::activeWindow());
  report::print(*document_, PrintOptions, QApplication::activeWindow(), box.progress());
}

}  // namespace tavoline
