#include "tools/store/exchange/Import.h"

#include <filesystem>
#include <fstream>
#include <memory>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "tools/store/Creation.h"
#include "tools/store/exchange/FolderSource.h"
#include "tools/store/exchange/Intake.h"
#include "tools/store/jet/JetSource.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;

std::unique_ptr<RowSource> sourceAt(const std::string& path) {
  if (fs::is_directory(path)) return std::make_unique<FolderSource>(path);
  return std::make_unique<jet::JetSource>(path);
}

void writeReport(ImportReport& report, const Access& access) {
  const auto address = serverAddress(report.target);
  const bool nowhere = address && !fs::exists(report.target);  // an address has no folder
  const std::string path =
      besideAt(report.begun, nowhere ? address->database : report.target, "import", ".txt");
  try {
    publishFile(
        path,
        [&](const std::string& passing) {
          std::ofstream file(passing, std::ios::binary);
          file << told(report, 0);
          if (!file.flush()) throw StoreError("le disque est plein ou protégé");
        },
        access);
    report.file = path;
  } catch (const StoreError& error) {
    report.remarks.push_back(std::string("Le rapport n'a pas pu être écrit : ") + error.what());
  }
}

}  // namespace

ImportReport importRows(RowSource& source, const std::string& path, const std::string& target,
                        const ImportManner& manner) {
  ImportReport report;
  report.source = path;
  report.target = target;
  report.begun = Clock::now();
  report.trial = manner.trial;
  const auto take = [&](Filler* filler) {
    Intake intake(filler, report, {manner.strict, source.wrapsPictures()});
    source.read(intake);
    intake.finish();
  };
  if (manner.trial) {
    if (!serverAddress(target)) requireFree(target);
    take(nullptr);
  } else {
    createStore(
        target, schema::kStorePassword, [&](Filler& filler) { take(&filler); }, manner.access);
  }
  return report;
}

ImportReport importStore(const std::string& path, const std::string& target, const ImportManner& manner) {
  const std::unique_ptr<RowSource> source = sourceAt(path);
  ImportReport report = importRows(*source, path, target, manner);
  if (!manner.trial) writeReport(report, manner.access);
  return report;
}

}  // namespace tavoline::tool
