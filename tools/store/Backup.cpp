#include "tools/store/Backup.h"

#include <filesystem>

#include "data/store/sqlite/Holders.h"
#include "data/store/sqlite/Lineage.h"
#include "data/store/sqlite/Messages.h"
#include "data/store/sqlite/Opening.h"
#include "data/value/Errors.h"
#include "tools/store/Inspection.h"
#include "tools/store/Publishing.h"
#include "tools/store/server/ServerBackup.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;
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

/// Copies the store into an empty file, under a number of its own.
void copyStore(const Location& from, const std::string& temporary, const std::string& target) {
  const Connection source(from.path, from.name, Connection::Role::Observer);
  Connection copy(temporary, target, Connection::Role::Maker);
  copy.execute("PRAGMA synchronous = OFF");
  copyPages(source, copy);
  if (const Findings damage = checkPages(copy); !damage.empty())
    throw StoreError(
        "« " + from.name + " » est endommagée, et n'a pas été copiée : " + damage.front() +
        " Arrêtez le programme, gardez ce fichier tel quel, et remettez la dernière sauvegarde par "
        "« tavoline-store restore ».");
  sqlite::giveIdentity(copy);
  copy.close();
}

Location storeAt(const std::string& path) {
  Location file = locate(path);
  sqlite::requireOwn(file);
  sqlite::requireOwnLog(file);
  return file;
}

// What no program could work with.
void requireUsable(const Location& backup) {
  Connection looking(backup.path, backup.name, Connection::Role::Observer);
  looking.run("BEGIN");  // All that is read is of one moment.
  requireKnownVersion(backup.name, sqlite::recordOf(looking));
  Findings findings = checkPages(looking);
  if (findings.empty()) findings = checkTables(looking);
  if (findings.empty()) return;
  std::string sentence = "« " + backup.name +
                         " » n'est pas une sauvegarde utilisable, et rien n'a été changé. Choisissez-en une "
                         "autre :";
  for (const std::string& finding : findings) sentence += "\n  - " + finding;
  throw StoreError(sentence);
}

// The store itself, where a link bears its name: its log stands beside it.
std::string placeOf(const std::string& path) {
  std::error_code error;
  if (!fs::is_symlink(fs::symlink_status(path, error))) return path;
  const fs::path place = fs::canonical(path, error);
  if (error)
    throw StoreError("« " + path +
                     " » est un lien qui ne mène nulle part. Branchez le disque qui porte les données, ou "
                     "refaites le lien.");
  return place.string();
}

}  // namespace

void backupStore(const std::string& path, const std::string& target) {
  if (const auto address = serverAddress(path)) return backupServer(*address, target);
  const Location file = storeAt(path);
  publishFile(
      target, [&](const std::string& temporary) { copyStore(file, temporary, target); },
      Access::like(file.path));
}

std::string restoreStore(const std::string& backup, const std::string& path) {
  if (const auto address = serverAddress(path)) return restoreServer(backup, *address), std::string();
  if (isServerBackup(backup))
    throw StoreError(
        "« " + backup +
        " » est la sauvegarde d'un serveur, et rien n'a été changé. Remettez-la dans une base de "
        "serveur : tavoline-store restore " +
        backup + " postgresql://…/base");
  const Location file = storeAt(backup);
  const std::string place = placeOf(path);
  std::error_code ignored;
  if (fs::is_directory(place, ignored))
    throw StoreError("« " + path + " » est un dossier, et non un fichier de données.");
  if (fs::equivalent(file.path, place, ignored))
    throw StoreError("« " + backup + " » et « " + path + " » sont le même fichier. Rien n'a été fait.");
  const auto requireAlone = [&] {
    if (sqlite::holdersOf(place).empty()) return;
    throw StoreError(
        "« " + path +
        " » est en service. Arrêtez d'abord Tavoline sur tous les postes, puis recommencez. Rien "
        "n'a été changé.");
  };
  requireAlone();
  requireUsable(file);
  const bool replaces = fs::exists(place, ignored);
  return replaceFile(
      place,
      [&](const std::string& temporary) {
        copyStore(file, temporary, path);
        requireAlone();
      },
      Access::like(replaces ? place : file.path));
}

}  // namespace tavoline::tool
