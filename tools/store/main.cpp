#include <iostream>

#include "tools/store/Commands.h"

int main(int count, char** arguments) {
  return tavoline::tool::runTool({arguments + 1, arguments + count}, std::cout, std::cerr,
                                 tavoline::tool::askAtTerminal);
}
