#include "tools/store/Backup.h"

#include <filesystem>

#include "data/value/Errors.h"
#include "tools/store/Creation.h"

namespace tavoline::tool {
namespace {

void copyPages(Database& from, Database& to) {
  sqlite3_backup* backup = sqlite3_backup_init(to.handle(), "main", from.handle(), "main");
  if (!backup) raiseError(to.handle(), sqlite3_errcode(to.handle()));
  // All pages in one step, which is one moment of the source; its readers and its writer go on meanwhile.
  const int step = sqlite3_backup_step(backup, -1);
  const int finish = sqlite3_backup_finish(backup);
  if (step != SQLITE_DONE) raiseError(nullptr, step);
  if (finish != SQLITE_OK) raiseError(to.handle(), finish);
}

}  // namespace

void backupStore(const std::string& path, const std::string& target) {
  if (!std::filesystem::is_regular_file(path))
    throw StoreError("« " + path + " » n'existe pas. Vérifiez le chemin.");
  Database source(path, Database::Mode::Observe);
  if (source.integer("PRAGMA application_id") != schema::kApplicationId)
    throw StoreError("« " + path + " » n'est pas une base Tavoline : rien n'a été copié.");
  publishFile(target, [&](const std::string& temporary) {
    Database copy(temporary, Database::Mode::Create);
    copy.execute("PRAGMA synchronous = OFF");
    copyPages(source, copy);
    if (copy.text("PRAGMA quick_check") != "ok")
      throw StoreError("La copie de « " + path +
                       " » est abîmée et a été jetée. Contrôlez la base par "
                       "« tavoline-store check ».");
    copy.close();
  });
}

}  // namespace tavoline::tool
