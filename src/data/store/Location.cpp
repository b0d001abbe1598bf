#include "data/store/Location.h"

#include <filesystem>

#include "data/store/postgres/Address.h"
#include "data/store/sqlite/FirstBytes.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

constexpr std::size_t headerSize = 512;

[[noreturn]] void refuse(const std::string& name, const std::string& sentence) {
  throw StoreError("« " + name + " » " + sentence);
}

[[noreturn]] void refuseMissing(const std::string& name) {
  std::error_code error;
  if (fs::is_symlink(fs::symlink_status(name, error)))
    refuse(name, "est un lien vers « " + fs::read_symlink(name, error).string() +
                     " », qui est introuvable. Branchez le disque qui porte les données, ou refaites le lien "
                     "vers l'endroit où elles se trouvent.");
  refuse(name, "est introuvable dans le dossier « " + fs::absolute(name, error).parent_path().string() +
                   " ». Lancez le programme depuis le dossier de l'établissement, ou créez des données "
                   "neuves par « tavoline-store create " +
                   name + " ».");
}

// What stands under the name, links followed, has to be a file.
void requireFile(const std::string& name) {
  std::error_code error;
  const fs::file_status status = fs::status(name, error);
  const bool link = fs::is_symlink(fs::symlink_status(name, error));
  const std::string is = link ? "est un lien vers " : "est ";
  if (status.type() == fs::file_type::not_found) refuseMissing(name);
  if (status.type() == fs::file_type::none && link)
    refuse(
        name,
        "est un lien qui ne mène nulle part : il tourne en rond, ou passe par un dossier interdit. Refaites "
        "le lien vers l'endroit où se trouvent les données.");
  if (status.type() == fs::file_type::directory)
    refuse(name,
           is + "un dossier, et non un fichier de données. Déplacez-le et remettez le fichier à sa place.");
  if (status.type() != fs::file_type::regular && status.type() != fs::file_type::none)
    refuse(name, (link ? "est un lien vers ce qui n'est pas un fichier ordinaire."
                       : "n'est pas un fichier ordinaire.") +
                     std::string(" Remettez le fichier de données à sa place."));
}

bool isJet(std::string_view bytes) {
  const std::string_view name = bytes.size() < 4 ? ""sv : bytes.substr(4);
  return name.starts_with("Standard Jet DB"sv) || name.starts_with("Standard ACE DB"sv);
}

// As a shell takes it for one word.
std::string word(const std::string& name) {
  return name.find(' ') == name.npos ? name : '"' + name + '"';
}

[[noreturn]] void refuseJet(const std::string& name) {
  const fs::path path = name;
  const std::string aside = path.parent_path() / (path.stem().string() + "-ancienne.mdb");
  refuse(name,
         "est une base Jet d'une installation antérieure, que ce programme ne lit pas directement. "
         "Renommez-la « " +
             aside + " », puis lancez :\ntavoline-store import " + word(aside) + ' ' + word(name));
}

void requireKnownKind(const std::string& name, std::string_view header) {
  if (header.empty())
    refuse(name,
           "est vide : ce n'est pas un fichier de données. Remettez la dernière sauvegarde, ou supprimez-le "
           "et créez des données neuves par « tavoline-store create " +
               name + " ».");
  if (isJet(header)) refuseJet(name);
  if (!postgres::isAddress(header) && !header.starts_with("SQLite format 3\0"sv))
    refuse(name,
           "n'est pas un fichier de données Tavoline. Mettez-le de côté et remettez à sa place le fichier "
           "de l'établissement ou sa dernière sauvegarde.");
}

}  // namespace

Location locate(const std::string& name) {
  requireFile(name);
  std::error_code error;
  Location found{name, fs::canonical(name, error).string(), {}};
  const auto header = error ? std::nullopt : sqlite::firstBytes(found.path, headerSize);
  if (!header)
    refuse(name,
           "ne peut pas être lu : le droit de le lire manque, ou le disque est en panne. Donnez à cet "
           "utilisateur le droit de lire et d'écrire le fichier, ou vérifiez le disque.");
  found.header = *header;
  requireKnownKind(name, found.header);
  return found;
}

}  // namespace tavoline
