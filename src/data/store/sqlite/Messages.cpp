#include "data/store/sqlite/Messages.h"

#include <optional>

#include "data/store/Sentences.h"
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

std::string refusal(int code, std::string_view constraint) {
  const std::optional<Place> place = placeOf(constraint);
  if ((code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY) && place)
    return duplicateKey(place->table, place->column);
  if (code == SQLITE_CONSTRAINT_NOTNULL && place) return missingValue(place->table, place->column);
  if (code == SQLITE_CONSTRAINT_CHECK)
    if (auto sentence = tooWide(constraint)) return *sentence;
  return brokenRule();
}

std::string sentence(int code, const std::string& message, const std::string& file) {
  const std::string quoted = "« " + file + " »";
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return storeBusy(file);
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
             "utilisateur peut écrire dans le dossier.";
    case SQLITE_IOERR:
      return "Le disque n'a pas pu lire ou écrire le fichier " + quoted +
             ". Vérifiez le disque ou le réseau, puis recommencez.";
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return "Le fichier " + quoted +
             " est endommagé. Arrêtez le programme, examinez le fichier par "
             "« tavoline-store check " +
             file + " », et remettez la dernière sauvegarde.";
    case SQLITE_NOMEM:
      return "La mémoire de l'ordinateur ne suffit plus. Fermez d'autres programmes, puis recommencez.";
    case SQLITE_CONSTRAINT:
      return refusal(code, constraintOf(message));
    default:
      return "Les données ont refusé l'opération : le fichier " + quoted +
             " ne convient pas à ce programme. Examinez-le par « tavoline-store check " + file + " ».";
  }
}

}  // namespace

void fail(sqlite3* connection, int code, const std::string& file) {
  // The connection's message belongs to its latest failure; for any other code only the general text is
  // right.
  const bool own =
      connection && (sqlite3_extended_errcode(connection) == code || sqlite3_errcode(connection) == code);
  const std::string message = own ? sqlite3_errmsg(connection) : sqlite3_errstr(code);
  throw StoreError(sentence(code, message, file), "SQLite " + std::to_string(code) + " : " + message);
}

}  // namespace tavoline::sqlite
