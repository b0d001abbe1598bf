#include "tools/store/server/ServerBackup.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "data/schema/Identity.h"
#include "data/value/Errors.h"
#include "tools/store/Publishing.h"
#include "tools/store/server/Program.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {

namespace {

// What the backup's own list of its contents says.
bool holdsStore(const std::string& backup) {
  std::string list = (std::filesystem::temp_directory_path() / "tavoline-XXXXXX").string();
  const int file = ::mkstemp(list.data());
  if (file < 0) throw StoreError("Le dossier des fichiers passagers ne se laisse pas écrire.");
  ::close(file);
  const bool read = runProgram({"pg_restore", "--list", "--file=" + list, backup});
  std::ifstream in(list);
  const std::string said{std::istreambuf_iterator<char>(in), {}};
  std::filesystem::remove(list);
  return read && said.find(" TABLE public " + std::string(schema::kRecordTable) + ' ') != said.npos;
}

}  // namespace

void backupServer(const postgres::Address& address, const std::string& target) {
  reachServer(address);  // whose sentences say more than the other program's
  publishFile(target, [&](const std::string& temporary) {
    if (!runProgram({"pg_dump", "--format=custom", "--file=" + temporary}, address))
      throw StoreError("La base « " + address.database +
                       " » n'a pas pu être copiée par « pg_dump » : voyez ce "
                       "qu'il en dit ci-dessus. Aucun fichier n'a été laissé.");
  });
}

bool isServerBackup(const std::string& path) {
  char begin[5] = {};
  std::ifstream(path, std::ios::binary).read(begin, sizeof begin);
  return std::string_view(begin, sizeof begin) == "PGDMP";
}

void restoreServer(const std::string& backup, const postgres::Address& address) {
  if (!std::filesystem::exists(backup))
    throw StoreError("« " + backup + " » n'existe pas. Vérifiez le chemin.");
  if (!isServerBackup(backup) || !holdsStore(backup))
    throw StoreError(
        "« " + backup +
        " » n'est pas la sauvegarde d'un serveur faite par « tavoline-store backup », et rien n'a "
        "été changé. Une base qui tient dans un fichier va sur un serveur par « tavoline-store "
        "copy ».");
  NewDatabase target(address);
  target.makeRoles();
  // Of which role the backup knows nothing: it may come from a database of another name.
  if (!runProgram({"pg_restore", "--single-transaction", "--exit-on-error", "--no-owner", "--no-privileges",
                   "--role=" + ownerRole(address), backup},
                  address))
    throw StoreError("« " + backup + " » n'a pas pu être remise dans la base « " + address.database +
                     " » par « pg_restore » : voyez ce qu'il en dit ci-dessus. Rien n'y a été laissé.");
  grantRows(target.connection());
  target.keep();
  target.connection().execute("ANALYZE");
}

}  // namespace tavoline::tool
