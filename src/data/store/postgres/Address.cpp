#include "data/store/postgres/Address.h"

#include <libpq-fe.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <memory>

#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline::postgres {

namespace {

[[noreturn]] void refuseAddress(const std::string& name, const std::string& sentence,
                                const std::string& detail = {}) {
  throw StoreError("« " + name + " » " + sentence, detail);
}

struct FreeOptions {
  void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};
using Options = std::unique_ptr<PQconninfoOption, FreeOptions>;

std::string optionNamed(const PQconninfoOption* options, std::string_view keyword) {
  for (; options->keyword; ++options)
    if (keyword == options->keyword && options->val) return options->val;
  return {};
}

}  // namespace

bool isAddress(std::string_view text) {
  return text.starts_with("postgresql://") || text.starts_with("postgres://");
}

Address parseAddress(const std::string& name, std::string_view text) {
  Address address;
  address.name = name;
  address.uri = trimmed(text);
  if (address.uri.find_first_of(" \t\r\n") != std::string::npos)
    refuseAddress(name,
                  "contient autre chose que l'adresse d'un serveur. N'y laissez qu'une ligne, de la forme "
                  "« postgresql://utilisateur@serveur/base ».");
  char* said = nullptr;
  const Options options(PQconninfoParse(address.uri.c_str(), &said));
  const std::string detail = said ? said : "";
  PQfreemem(said);
  if (!options)
    refuseAddress(name,
                  "contient une adresse de serveur qui ne se lit pas. Écrivez-la sous la forme "
                  "« postgresql://utilisateur@serveur/base ».",
                  detail);
  std::string host = optionNamed(options.get(), "host");
  if (host.empty()) host = optionNamed(options.get(), "hostaddr");
  const std::string port = optionNamed(options.get(), "port");
  const bool here = host.empty() || host.front() == '/';
  address.place = here ? "de cet ordinateur" : "« " + host + (port.empty() ? "" : ":" + port) + " »";
  address.several = host.find(',') != std::string::npos;
  address.database = optionNamed(options.get(), "dbname");
  address.bearsPassword = !optionNamed(options.get(), "password").empty();
  if (address.database.empty())
    refuseAddress(name,
                  "ne nomme pas la base du serveur. Écrivez l'adresse sous la forme "
                  "« postgresql://utilisateur@serveur/base ».");
  return address;
}

Address addressIn(const std::string& name, const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  Address address = parseAddress(name, std::string(std::istreambuf_iterator<char>(in), {}));
  struct stat found = {};
  if (address.bearsPassword && ::stat(path.c_str(), &found) == 0 &&
      (found.st_mode & (S_IRGRP | S_IROTH)) != 0)
    refuseAddress(name,
                  "porte un mot de passe du serveur, et d'autres utilisateurs de cet ordinateur peuvent le "
                  "lire. Mettez le mot de passe dans le fichier « .pgpass » de cet utilisateur, ou "
                  "retirez-leur ce droit par « chmod 600 " +
                      name + " ».");
  return address;
}

Address beside(const Address& address, const std::string& database) {
  Address other = address;
  // postgresql://who@host:port/database?options
  const auto begin = other.uri.find('/', other.uri.find("//") + 2);
  const auto end = std::min(other.uri.find('?', begin), other.uri.size());
  other.uri.replace(begin + 1, end - begin - 1, database);
  other.database = database;
  return other;
}

Spoken spoken(const Address& address) {
  Spoken all;
  const Options options(PQconninfoParse(address.uri.c_str(), nullptr));
  for (const PQconninfoOption* one = options.get(); one && one->keyword; ++one) {
    if (!one->val) continue;
    if (std::string_view(one->keyword) == "password") {
      all.password = one->val;
      continue;
    }
    all.words.append(all.words.empty() ? "" : " ").append(one->keyword).append("='");
    for (const char* c = one->val; *c; ++c) {
      if (*c == '\'' || *c == '\\') all.words += '\\';
      all.words += *c;
    }
    all.words += '\'';
  }
  return all;
}

}  // namespace tavoline::postgres
