// What stands between a file that looks like SQLite and a store that may be written to.

#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <optional>

#include "data/store/sqlite/CatalogReader.h"
#include "data/store/sqlite/SqliteStore.h"
#include "data/value/Errors.h"

namespace tavoline::sqlite {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t applicationId = 0x5441564F;  // "TAVO" in the file's header
constexpr std::size_t applicationIdAt = 68;          // its place there, big end first
constexpr int version = 1;                           // of the tables' definition

[[noreturn]] void refuse(const std::string& name, const std::string& sentence) {
  throw StoreError("« " + name + " » " + sentence);
}

std::uint32_t applicationIdOf(std::string_view header) {
  std::uint32_t id = 0;
  if (header.size() < applicationIdAt + 4) return id;
  for (std::size_t i = 0; i < 4; ++i) id = id << 8 | static_cast<unsigned char>(header[applicationIdAt + i]);
  return id;
}

// The log stands beside the file, so that the folder has to be writable as well.
void requireWritable(const std::string& name, const std::string& path) {
  if (::access(path.c_str(), W_OK) != 0)
    refuse(name,
           "est protégé contre l'écriture. Rendez à cet utilisateur le droit d'écrire le fichier, puis "
           "relancez le programme.");
  const std::string folder = fs::path(path).parent_path().string();
  if (::access(folder.c_str(), W_OK | X_OK) != 0)
    refuse(name, "se trouve dans le dossier « " + folder +
                     " », protégé contre l'écriture. Rendez à cet utilisateur "
                     "le droit d'écrire dans ce dossier, puis relancez le programme.");
}

std::optional<std::string> record(Connection& connection, const char* key) {
  Statement row = connection.prepare("SELECT valeur FROM tavoline_store WHERE cle = ?1");
  row.bind({key});
  if (!row.step()) return std::nullopt;
  return row.text(0);
}

bool hasRecord(Connection& connection) {
  Statement table = connection.prepare("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1");
  table.bind({recordTable});
  return table.step();
}

void checkVersion(Connection& connection) {
  const std::optional<std::string> recorded =
      hasRecord(connection) ? record(connection, "version") : std::nullopt;
  const std::string digits = recorded.value_or("");
  int found = 0;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), found);
  if (error != std::errc() || stop != digits.data() + digits.size() || found < 1)
    refuse(connection.name(),
           "n'est pas un fichier de données complet : sa fiche d'identité manque ou ne se lit pas. "
           "Remettez la dernière sauvegarde, ou créez des données neuves par « tavoline-store "
           "create ».");
  if (found > version)
    refuse(connection.name(), "a été fait pour une version plus récente du programme (données " + digits +
                                  ", programme " + std::to_string(version) +
                                  "). Mettez le programme à jour sur ce "
                                  "poste.");
}

void checkPassword(Connection& connection, const std::string& password) {
  if (record(connection, "mot_de_passe").value_or("") == password) return;
  refuse(connection.name(),
         "est protégé par un autre mot de passe que celui de ce programme. Remettez le fichier de "
         "données de cet établissement, ou demandez à l'installateur.");
}

// Readers and a writer work side by side only with the write-ahead log.
void requireLog(Connection& connection) {
  const auto mode = [&](const char* text) {
    Statement statement = connection.prepare(text);
    return statement.step() ? statement.text(0) : std::string();
  };
  if (mode("PRAGMA journal_mode") == "wal" || mode("PRAGMA journal_mode = WAL") == "wal") return;
  refuse(connection.name(),
         "se trouve sur un disque qui ne permet pas le journal partagé dont les données ont besoin. "
         "Placez-le sur un disque de cet ordinateur.");
}

}  // namespace

std::shared_ptr<Store> openFile(const std::string& name, std::string_view header,
                                const std::string& password) {
  if (applicationIdOf(header) != applicationId)
    refuse(name,
           "est une base SQLite d'un autre programme. Mettez-la de côté et remettez à sa place le fichier de "
           "l'établissement ou sa dernière sauvegarde.");
  const std::string path = fs::canonical(name).string();
  requireWritable(name, path);

  auto writer = std::make_unique<Connection>(path, name, Connection::Role::Writer);
  checkVersion(*writer);
  checkPassword(*writer, password);
  requireLog(*writer);
  return std::make_shared<SqliteStore>(path, std::move(writer));
}

}  // namespace tavoline::sqlite
