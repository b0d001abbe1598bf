#include <gmock/gmock.h>

#include "support/Verbs.h"

// Of every test program without screens.
int main(int argc, char** argv) {
  if (tavoline::test::tellVerbs(argc, argv)) return 0;
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
