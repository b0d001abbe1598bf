#include "support/StoreFaults.h"

#include <unistd.h>

#include <csignal>

#include "data/value/Errors.h"

namespace tavoline::test {

void StoreFaults::passWrite(const Request&, const std::function<RowId()>& pass) {
  const bool now = writesLeft_ > 0 && --writesLeft_ == 0;
  if (now && fault_ == Fault::Refuse) throw StoreError("Le disque est plein : rien n'a été enregistré.");
  if (now && fault_ == Fault::DieBefore) ::kill(::getpid(), SIGKILL);
  pass();
  if (now) ::kill(::getpid(), SIGKILL);
}

}  // namespace tavoline::test
