#include "data/store/Sentences.h"

#include "data/schema/Schema.h"
#include "data/value/Text.h"

namespace tavoline {

namespace {

std::string at(std::string_view table, std::string_view column) {
  return "« " + std::string(column) + " » (table « " + std::string(table) + " »)";
}

}  // namespace

std::string duplicateKey(std::string_view table, std::string_view column) {
  // The number is given by the screen: with many workstations two take the same one now and then.
  if (sameName(table, "commande") && sameName(column, "n_commande"))
    return "Une autre commande a pris ce numéro ; touchez de nouveau.";
  return "Cette valeur de " + at(table, column) +
         " existe déjà sur une autre ligne. Donnez-en une autre, puis recommencez.";
}

std::string missingValue(std::string_view table, std::string_view column) {
  return "La valeur de " + at(table, column) + " manque. Remplissez-la, puis recommencez.";
}

std::optional<std::string> tooWide(std::string_view constraint) {
  for (const schema::Table& table : schema::tables())
    for (const schema::Column& column : table.columns)
      if (column.width && schema::widthConstraint(table, column) == constraint)
        return "Le texte donné à " + at(table.name, column.name) +
               " est trop long : " + std::to_string(column.width) +
               " caractères au plus. Raccourcissez-le, puis recommencez.";
  return std::nullopt;
}

std::string storeBusy(const std::string& name) {
  return "« " + name +
         " » est occupé par un autre poste ou un autre programme depuis plusieurs secondes : rien n'a été "
         "fait. Patientez un instant, puis recommencez.";
}

std::string brokenRule() {
  return "Les données ont refusé l'enregistrement : ce qui a été saisi ne respecte pas une de leurs règles. "
         "Corrigez la saisie, puis recommencez.";
}

}  // namespace tavoline
