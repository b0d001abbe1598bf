#include "tools/store/server/ServerBackup.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "data/value/Errors.h"
#include "tools/store/Publishing.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {

void backupServer(const postgres::Address& address, const std::string& target) {
  reachServer(address);  // whose sentences say more than the other program's
  publishFile(target, [&](const std::string& temporary) {
    std::string words[] = {"pg_dump", "--format=custom", "--file=" + temporary, "--dbname=" + address.uri};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    pid_t child = 0;
    if (::posix_spawnp(&child, "pg_dump", nullptr, nullptr, arguments, environ) != 0)
      throw StoreError(
          "Le programme « pg_dump » manque sur cet ordinateur. Installez le paquet « postgresql-client ».");
    int status = 0;
    if (::waitpid(child, &status, 0) != child || status != 0)
      throw StoreError("La base « " + address.database +
                       " » n'a pas pu être copiée par « pg_dump » : voyez ce "
                       "qu'il en dit ci-dessus. Aucun fichier n'a été laissé.");
  });
}

}  // namespace tavoline::tool
