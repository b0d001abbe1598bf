// What stands between a file that looks like SQLite and a store that may be written to.

#include "data/store/sqlite/Opening.h"

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "data/schema/Identity.h"
#include "data/store/sqlite/Lineage.h"
#include "data/store/sqlite/SqliteStore.h"
#include "data/value/Errors.h"

namespace tavoline::sqlite {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t applicationIdAt = 68;  // its place in the file's header, big end first

[[noreturn]] void refuse(const std::string& name, const std::string& sentence) {
  throw StoreError("« " + name + " » " + sentence);
}

std::uint32_t applicationIdOf(std::string_view header) {
  std::uint32_t id = 0;
  if (header.size() < applicationIdAt + 4) return id;
  for (std::size_t i = 0; i < 4; ++i) id = id << 8 | static_cast<unsigned char>(header[applicationIdAt + i]);
  return id;
}

// The kinds of disks that stand on another computer. Their locks and shared memory cannot be trusted with a
// log that several workstations share.
constexpr std::uint32_t networkDisks[] = {NFS_SUPER_MAGIC,  SMB_SUPER_MAGIC, CIFS_SUPER_MAGIC,
                                          SMB2_SUPER_MAGIC, AFS_SUPER_MAGIC, CODA_SUPER_MAGIC,
                                          NCP_SUPER_MAGIC,  CEPH_SUPER_MAGIC};

void requireOwnDisk(const Location& file) {
  struct statfs disk = {};
  if (::statfs(file.path.c_str(), &disk) != 0) return;
  if (std::ranges::count(networkDisks, static_cast<std::uint32_t>(disk.f_type)) != 0)
    refuse(file.name,
           "se trouve sur un disque du réseau, qui ne convient pas à des données que plusieurs postes se "
           "partagent. Placez-le sur un disque de cet ordinateur ; pour plusieurs ordinateurs, copiez les "
           "données sur un serveur PostgreSQL par « tavoline-store copy ».");
}

// Readers and a writer work side by side only with the write-ahead log.
void requireLog(Connection& connection) {
  if (connection.text("PRAGMA journal_mode") == "wal" ||
      connection.text("PRAGMA journal_mode = WAL") == "wal")
    return;
  refuse(connection.name(),
         "se trouve sur un disque qui ne permet pas le journal partagé dont les données ont besoin. "
         "Placez-le sur un disque de cet ordinateur.");
}

}  // namespace

void requireOwn(const Location& file) {
  if (applicationIdOf(file.header) != schema::kApplicationId)
    refuse(file.name,
           "est une base SQLite d'un autre programme. Mettez-la de côté et remettez à sa place le fichier de "
           "l'établissement ou sa dernière sauvegarde.");
}

void requireWritable(const Location& file) {
  if (::access(file.path.c_str(), W_OK) != 0)
    refuse(file.name,
           "est protégé contre l'écriture. Rendez à cet utilisateur le droit d'écrire le fichier, puis "
           "relancez le programme.");
  const std::string folder = fs::path(file.path).parent_path().string();
  if (::access(folder.c_str(), W_OK | X_OK) != 0)
    refuse(file.name, "se trouve dans le dossier « " + folder +
                          " », protégé contre l'écriture. Rendez à cet utilisateur le droit d'écrire dans ce "
                          "dossier, puis relancez le programme.");
}

StoreRecord recordOf(Connection& connection) {
  return [&connection](std::string_view key) -> std::optional<std::string> {
    Statement table = connection.prepare("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1");
    table.bind({schema::kRecordTable});
    if (!table.step()) return std::nullopt;
    Statement row = connection.prepare("SELECT valeur FROM tavoline_store WHERE cle = ?1");
    row.bind({key});
    if (!row.step()) return std::nullopt;
    return row.text(0);
  };
}

std::shared_ptr<Store> openFile(const Location& file, const std::string& password) {
  requireOwn(file);
  requireOwnDisk(file);
  requireWritable(file);
  requireOwnLog(file);

  auto writer = std::make_unique<Connection>(file.path, file.name, Connection::Role::Writer);
  admit(file.name, recordOf(*writer), password);
  requireLog(*writer);
  return std::make_shared<SqliteStore>(file.path, std::move(writer));
}

}  // namespace tavoline::sqlite
