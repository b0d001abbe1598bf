#include "data/store/Record.h"

#include <charconv>

#include "data/schema/Identity.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

[[noreturn]] void turnAway(const std::string& name, const std::string& sentence) {
  throw StoreError("« " + name + " » " + sentence);
}

}  // namespace

void requireKnownVersion(const std::string& name, const StoreRecord& record) {
  const std::string digits = record(schema::kVersionKey).value_or("");
  int found = 0;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), found);
  if (error != std::errc() || stop != digits.data() + digits.size() || found < 1)
    turnAway(name,
             "n'est pas un fichier de données complet : sa fiche d'identité manque ou ne se lit pas. "
             "Remettez la dernière sauvegarde, ou créez des données neuves par « tavoline-store create ».");
  if (found > schema::kVersion)
    turnAway(name, "a été fait pour une version plus récente du programme (données " + digits +
                       ", programme " + std::to_string(schema::kVersion) +
                       "). Mettez le programme à jour sur ce poste.");
}

void admit(const std::string& name, const StoreRecord& record, std::string_view password) {
  requireKnownVersion(name, record);
  if (record(schema::kPasswordKey).value_or("") != password)
    turnAway(name,
             "est protégé par un autre mot de passe que celui de ce programme. Remettez le fichier de "
             "données de cet établissement, ou demandez à l'installateur.");
}

}  // namespace tavoline
