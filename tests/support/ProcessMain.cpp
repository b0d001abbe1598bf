#include <gmock/gmock.h>

#include <cstdlib>

// Of every test program whose workstations are processes: each makes an application of its own.
int main(int argc, char** argv) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
