#include <filesystem>

#include "data/store/Store.h"
#include "data/store/sqlite/FirstBytes.h"
#include "data/store/sqlite/SqliteStore.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

// The password's key is what every installation's connection string bears.
constexpr const char* passwordKey = "Jet OLEDB:Database Password";

[[noreturn]] void refuse(const fs::path& file, const std::string& sentence) {
  throw StoreError("« " + file.string() + " » " + sentence);
}

std::string folderOf(const fs::path& file) {
  std::error_code error;
  return fs::absolute(file, error).parent_path().string();
}

// Enough of the file to say what it is, without leaving anything beside it.
std::string firstBytes(const fs::path& file) {
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::not_found)
    refuse(file,
           "est introuvable dans le dossier « " + folderOf(file) +
               " ». Lancez le programme depuis le dossier de l'établissement, ou créez des données neuves "
               "par « tavoline-store create " +
               file.string() + " ».");
  if (status.type() == fs::file_type::directory)
    refuse(file,
           "est un dossier, et non un fichier de données. Déplacez-le et remettez le fichier à sa place.");
  if (status.type() != fs::file_type::regular && !error)
    refuse(file, "n'est pas un fichier ordinaire. Remettez le fichier de données à sa place.");

  if (const auto bytes = sqlite::firstBytes(file.string(), 512)) return *bytes;
  refuse(file,
         "ne peut pas être lu : le droit de le lire manque, ou le disque est en panne. Donnez à cet "
         "utilisateur le droit de lire et d'écrire le fichier, ou vérifiez le disque.");
}

bool isJet(std::string_view bytes) {
  const std::string_view name = bytes.size() < 4 ? ""sv : bytes.substr(4);
  return name.starts_with("Standard Jet DB"sv) || name.starts_with("Standard ACE DB"sv);
}

bool isServerAddress(std::string_view bytes) {
  return bytes.starts_with("postgresql://"sv) || bytes.starts_with("postgres://"sv);
}

}  // namespace

std::shared_ptr<Store> Store::open(std::string_view connectionString) {
  const ConnectionString connection(connectionString);
  const fs::path file = connection.get("Data Source");
  if (file.empty())
    throw StoreError("La chaîne de connexion ne nomme aucun fichier de données (« Data Source »).");

  const std::string bytes = firstBytes(file);
  if (bytes.empty())
    refuse(file,
           "est vide : ce n'est pas un fichier de données. Remettez la dernière sauvegarde, ou supprimez-le "
           "et créez des données neuves par « tavoline-store create " +
               file.string() + " ».");
  if (isJet(bytes))
    refuse(file,
           "est une base Jet d'une installation antérieure, que ce programme ne lit pas directement. "
           "Convertissez-la par « tavoline-store import ».");
  if (isServerAddress(bytes))
    refuse(file,
           "désigne un serveur de données, mais cette installation du programme ne comprend pas le moteur "
           "pour serveur. Installez la version pour plusieurs postes.");
  if (!bytes.starts_with("SQLite format 3\0"sv))
    refuse(file,
           "n'est pas un fichier de données Tavoline. Mettez-le de côté et remettez à sa place le fichier "
           "de l'établissement ou sa dernière sauvegarde.");
  return sqlite::openFile(file.string(), bytes, connection.get(passwordKey));
}

}  // namespace tavoline
