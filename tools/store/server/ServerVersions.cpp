#include "tools/store/server/ServerVersions.h"

#include "tools/store/Versions.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {

namespace {

using postgres::Answer;
using postgres::Question;

// A session in a read transaction holds the version with which that began. Of other roles' sessions only an
// administrator is told.
constexpr const char* holders =
    "SELECT coalesce('poste ' || host(client_addr), 'cet ordinateur'), application_name, usename::text, "
    "count(*), count(xact_start), extract(epoch FROM min(xact_start))::bigint FROM pg_stat_activity WHERE "
    "datname = current_database() AND backend_type = 'client backend' AND pid <> pg_backend_pid() GROUP BY "
    "client_addr, application_name, usename ORDER BY min(xact_start) NULLS LAST, client_addr, "
    "application_name";

std::string lineOf(const Answer& rows, int row) {
  const auto held = static_cast<std::size_t>(rows.integer(row, 4));
  std::string line = rows.text(row, 0) + ", " + rows.text(row, 1) + " (rôle " + rows.text(row, 2) + ") : ";
  if (held == 0)
    line += "aucune version";
  else
    line += quantity(held, "version", "versions") +
            (held < 2 ? ", depuis le " : ", la plus ancienne depuis le ") + clockTime(rows.integer(row, 5));
  return line + " ; " + quantity(static_cast<std::size_t>(rows.integer(row, 3)), "connexion", "connexions");
}

}  // namespace

std::vector<std::string> versionsOnServer(const postgres::Address& address) {
  const Answer rows = reachServer(address)->ask(Question{holders});
  std::size_t held = 0;
  for (int row = 0; row < rows.rows(); ++row) held += static_cast<std::size_t>(rows.integer(row, 4));
  std::vector<std::string> lines = {
      quantity(held, "version tenue", "versions tenues") + " par " +
      quantity(static_cast<std::size_t>(rows.rows()), "programme", "programmes") + '.'};
  for (int row = 0; row < rows.rows(); ++row) lines.push_back(lineOf(rows, row));
  return lines;
}

}  // namespace tavoline::tool
