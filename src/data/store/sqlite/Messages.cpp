#include "data/store/sqlite/Messages.h"

#include <optional>

#include "data/value/Errors.h"

namespace tavoline::sqlite {

namespace {

// The part of the engine's message after "...failed: ": what a constraint calls itself or its columns.
std::string_view constraintOf(std::string_view message) {
  constexpr std::string_view mark = "failed: ";
  const auto at = message.find(mark);
  return at == message.npos ? std::string_view() : message.substr(at + mark.size());
}

struct Place {
  std::string table, column;
};

// "table.column", or the first of several.
std::optional<Place> placeOf(std::string_view constraint) {
  constraint = constraint.substr(0, constraint.find(','));
  const auto dot = constraint.find('.');
  if (dot == constraint.npos) return std::nullopt;
  return Place{std::string(constraint.substr(0, dot)), std::string(constraint.substr(dot + 1))};
}

std::string at(const Place& place) {
  return "« " + place.column + " » (table « " + place.table + " »)";
}

// A width's constraint is named largeur_TABLE_COLUMN_WIDTH. Names hold underscores themselves, so that only
// the catalog can tell where the table ends.
std::optional<std::string> tooWide(std::string_view constraint, const Catalog* catalog) {
  constexpr std::string_view prefix = "largeur_";
  const auto last = constraint.rfind('_');
  if (!catalog || !constraint.starts_with(prefix) || last <= prefix.size()) return std::nullopt;
  const std::string width(constraint.substr(last + 1));
  const std::string_view names = constraint.substr(prefix.size(), last - prefix.size());
  for (const TableInfo& table : catalog->tables()) {
    if (names.size() <= table.name.size() || !names.starts_with(table.name)) continue;
    if (const ColumnInfo* column = table.find(names.substr(table.name.size() + 1)))
      return "Le texte donné à " + at({table.name, column->name}) + " est trop long : " + width +
             " caractères au plus. Raccourcissez-le, puis recommencez.";
  }
  return std::nullopt;
}

std::string refusal(int code, const std::string& message, const Catalog* catalog) {
  const std::string_view constraint = constraintOf(message);
  const std::optional<Place> place = placeOf(constraint);
  if ((code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY) && place)
    return "Cette valeur de " + at(*place) +
           " existe déjà sur une autre ligne. Donnez-en une autre, puis recommencez.";
  if (code == SQLITE_CONSTRAINT_NOTNULL && place)
    return "La valeur de " + at(*place) + " manque. Remplissez-la, puis recommencez.";
  if (code == SQLITE_CONSTRAINT_CHECK)
    if (auto sentence = tooWide(constraint, catalog)) return *sentence;
  return "Les données ont refusé l'enregistrement : une règle du fichier n'est pas respectée (" + message +
         ").";
}

std::string sentence(int code, const std::string& message, const std::string& file, const Catalog* catalog) {
  const std::string quoted = "« " + file + " »";
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "Le fichier " + quoted +
             " est occupé par un autre poste ou un autre programme depuis plusieurs "
             "secondes : rien n'a été fait. Patientez un instant, puis recommencez.";
    case SQLITE_FULL:
      return "Le disque est plein : rien n'a été enregistré. Libérez de la place sur le disque qui porte " +
             quoted + ", puis recommencez.";
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return "Le fichier " + quoted +
             " est protégé contre l'écriture : rien n'a été enregistré. Rendez le droit "
             "d'écrire au fichier et à son dossier, puis recommencez.";
    case SQLITE_CANTOPEN:
      return "Le fichier " + quoted +
             " ne peut pas être ouvert. Vérifiez que le disque est branché et que cet "
             "utilisateur peut écrire dans le dossier (" +
             message + ").";
    case SQLITE_IOERR:
      return "Le disque n'a pas pu lire ou écrire le fichier " + quoted +
             ". Vérifiez le disque ou le réseau, puis "
             "recommencez (" +
             message + ").";
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return "Le fichier " + quoted +
             " est endommagé. Arrêtez le programme, examinez le fichier par "
             "« tavoline-store check " +
             file + " », et remettez la dernière sauvegarde (" + message + ").";
    case SQLITE_NOMEM:
      return "La mémoire de l'ordinateur ne suffit plus. Fermez d'autres programmes, puis recommencez.";
    case SQLITE_CONSTRAINT:
      return refusal(code, message, catalog);
    default:
      return "Les données ont refusé l'opération (" + message + ").";
  }
}

}  // namespace

void fail(sqlite3* connection, int code, const std::string& file, const Catalog* catalog) {
  // The connection's message belongs to its latest failure; for any other code only the general text is
  // right.
  const bool own =
      connection && (sqlite3_extended_errcode(connection) == code || sqlite3_errcode(connection) == code);
  throw StoreError(sentence(code, own ? sqlite3_errmsg(connection) : sqlite3_errstr(code), file, catalog));
}

}  // namespace tavoline::sqlite
