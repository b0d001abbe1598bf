#include "data/store/postgres/Messages.h"

#include <array>
#include <optional>
#include <utility>

#include "data/schema/Schema.h"
#include "data/store/Sentences.h"
#include "data/value/Text.h"

namespace tavoline::postgres {

namespace {

std::string field(const PGresult* result, int code) {
  const char* const text = PQresultErrorField(result, code);
  return text ? text : "";
}

std::string keyOf(const std::string& table) {
  for (const schema::Table& known : schema::tables())
    if (known.name == table) return std::string(known.key);
  return {};
}

std::string refusal(const std::string& state, const PGresult* result) {
  const std::string table = field(result, PG_DIAG_TABLE_NAME);
  const std::string constraint = field(result, PG_DIAG_CONSTRAINT_NAME);
  if (state == "23505" && constraint.starts_with("cle_")) return duplicateKey(table, keyOf(table));
  if (state == "23502") return missingValue(table, field(result, PG_DIAG_COLUMN_NAME));
  if (state == "23514")
    if (auto sentence = tooWide(constraint)) return *sentence;
  return brokenRule();
}

std::string server(const Address& address) {
  return "Le serveur des données " + address.place;
}

// By the code, or by the first two characters of it, which are its class; the exact ones come first.
std::optional<std::string> sentence(const Address& address, const std::string& state) {
  const std::string base = "la base « " + address.database + " »";
  const std::array<std::pair<std::string_view, std::string>, 18> known = {{
      {"55P03", storeBusy(address.name)},
      {"57014", server(address) +
                    " a interrompu une lecture ou une écriture trop longue : rien n'a été fait. Patientez un "
                    "instant, puis recommencez."},
      {"40P01", "Deux postes se sont attendus l'un l'autre : rien n'a été fait sur ce poste. Recommencez."},
      {"40",
       "Un autre poste a écrit la même chose au même moment : rien n'a été fait sur ce poste. "
       "Recommencez."},
      {"25006", server(address) +
                    " ne fait que suivre un autre serveur et n'enregistre rien. Faites-le passer en serveur "
                    "principal, ou écrivez l'adresse du serveur principal dans « " +
                    address.name + " »."},
      {"53100",
       "Le disque du serveur est plein : rien n'a été enregistré. Libérez de la place sur le serveur, "
       "puis recommencez."},
      {"53200",
       "La mémoire du serveur ne suffit plus : rien n'a été fait. Patientez un instant, puis "
       "recommencez."},
      {"53300", server(address) +
                    " refuse une connexion de plus. Arrêtez un poste ou un programme qui ne sert pas, ou "
                    "relevez « max_connections » sur le serveur."},
      {"58",
       "Le disque du serveur n'a pas pu lire ou écrire les données. Vérifiez le disque du serveur, puis "
       "recommencez."},
      {"XX", "Les données du serveur sont peut-être endommagées. Arrêtez les postes, et examinez " + base +
                 " par « tavoline-store check »."},
      {"57P03", server(address) + " démarre ou s'arrête. Patientez un instant, puis recommencez."},
      {"3D000", server(address) + " n'a pas de base « " + address.database +
                    " ». Vérifiez l'adresse dans « " + address.name +
                    " », ou créez la base par « tavoline-store create »."},
      {"28000", server(address) +
                    " ne laisse pas entrer cet utilisateur, depuis ce poste ou de cette façon. "
                    "Vérifiez l'adresse dans « " +
                    address.name + " », et les droits sur le serveur (« pg_hba.conf »)."},
      {"28P01", server(address) +
                    " ne connaît pas cet utilisateur, ou refuse son mot de passe. Vérifiez l'adresse "
                    "dans « " +
                    address.name + " », et le fichier « .pgpass » de cet utilisateur."},
      {"42501", "Le rôle de ce poste n'a pas le droit de faire cela dans " + base +
                    ". Donnez au poste le rôle créé par « tavoline-store create »."},
      {"22003", "Un calcul donne un nombre trop grand : rien n'a été fait. Vérifiez les montants saisis."},
      {"42", "Les données ont refusé l'opération : " + base +
                 " ne convient pas à ce programme. Examinez-la par « tavoline-store check »."},
      {"53",
       "Les moyens du serveur ne suffisent plus : rien n'a été fait. Patientez un instant, puis "
       "recommencez."},
  }};
  for (const auto& [code, text] : known)
    if (state.starts_with(code)) return text;
  return std::nullopt;
}

}  // namespace

std::string stateOf(const PGresult* result) {
  return field(result, PG_DIAG_SQLSTATE);
}

void fail(const Address& address, const PGresult* result) {
  const std::string state = stateOf(result);
  const std::string detail =
      "PostgreSQL " + state + " : " + std::string(trimmed(PQresultErrorMessage(result)));
  if (state.starts_with("23")) throw StoreError(refusal(state, result), detail);
  throw StoreError(sentence(address, state)
                       .value_or("Les données ont refusé l'opération. Recommencez ; si le refus "
                                 "demeure, examinez la base « " +
                                 address.database + " » par « tavoline-store check »."),
                   detail);
}

void failToConnect(const Address& address, const std::string& state, const std::string& detail) {
  const auto told = [&detail](std::string_view words) { return detail.find(words) != detail.npos; };
  // The session was fine; the address asks for one that may write, and the library says this without a code.
  if (told("session is read-only") || told("hot standby mode"))
    throw StoreError(*sentence(address, "25006"), detail);
  if (!state.empty())
    if (const auto known = sentence(address, state)) throw StoreError(*known, detail);
  if (told("SSL") || told("certificat"))
    throw StoreError(
        server(address) +
            " et ce poste ne s'accordent pas sur la protection de la connexion (TLS). Vérifiez le "
            "certificat, et « sslmode » dans l'adresse.",
        detail);
  if (told("no password supplied"))
    throw StoreError(
        server(address) +
            " demande un mot de passe. Mettez-le dans le fichier « .pgpass » de cet utilisateur.",
        detail);
  if (told("could not translate host name"))
    throw StoreError(
        server(address) +
            " est introuvable : son nom n'est pas connu sur ce réseau. Vérifiez que le réseau est "
            "branché, et l'adresse dans « " +
            address.name + " ».",
        detail);
  if (told("for connection option") || told(" value: "))
    throw StoreError("L'adresse dans « " + address.name +
                         " » porte une option qui ne se lit pas. Corrigez-la, ou retirez-la.",
                     detail);
  throw StoreError(
      server(address) +
          " ne répond pas. Vérifiez qu'il est allumé, que le réseau est branché, et l'adresse dans "
          "« " +
          address.name + " », puis recommencez.",
      detail);
}

void failLost(const Address& address, const std::string& detail) {
  throw LostConnection(server(address) +
                           " ne répond plus. Vérifiez qu'il est allumé et que le réseau est branché, puis "
                           "recommencez.",
                       detail);
}

void failUncertain(const Address& address, const std::string& table, const std::string& detail) {
  throw StoreError(server(address) + " n'a pas répondu à temps : on ne sait pas si l'écriture dans « " +
                       table + " » a été faite. Vérifiez-la à l'écran avant de recommencer.",
                   detail);
}

}  // namespace tavoline::postgres
