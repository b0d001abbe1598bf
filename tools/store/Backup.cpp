#include "tools/store/Backup.h"

#include "data/store/sqlite/Messages.h"
#include "data/store/sqlite/Opening.h"
#include "data/value/Errors.h"
#include "tools/store/Creation.h"

namespace tavoline::tool {
namespace {

using sqlite::Connection;

void copyPages(const Connection& from, const Connection& to) {
  sqlite3_backup* backup = sqlite3_backup_init(to.handle(), "main", from.handle(), "main");
  if (!backup) to.fail(sqlite3_errcode(to.handle()));
  // All pages in one step, which is one moment of the source; its readers and its writer go on meanwhile.
  const int step = sqlite3_backup_step(backup, -1);
  const int finish = sqlite3_backup_finish(backup);
  if (step != SQLITE_DONE) sqlite::fail(nullptr, step, to.name());
  if (finish != SQLITE_OK) to.fail(finish);
}

}  // namespace

void backupStore(const std::string& path, const std::string& target) {
  const Location file = locate(path);
  sqlite::requireOwn(file);
  const Connection source(file.path, file.name, Connection::Role::Observer);
  publishFile(target, [&](const std::string& temporary) {
    Connection copy(temporary, target, Connection::Role::Maker);
    copy.execute("PRAGMA synchronous = OFF");
    copyPages(source, copy);
    if (copy.text("PRAGMA quick_check") != "ok")
      throw StoreError("La copie de « " + path +
                       " » est abîmée et a été jetée. Contrôlez la base par « tavoline-store check ».");
    copy.close();
  });
}

}  // namespace tavoline::tool
