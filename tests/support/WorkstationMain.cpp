#include <gmock/gmock.h>

#include "support/Verbs.h"
#include "toolkit/forms/Application.h"
#include "toolkit/theme/Theme.h"

// One application for all cases of a program; offscreen unless the caller wants to watch.
int main(int argc, char** argv) {
  if (tavoline::test::tellVerbs(argc, argv)) return 0;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  tavoline::Application application(argc, argv);
  application.setQuitOnLastWindowClosed(false);
  tavoline::applyTheme(application);
  return RUN_ALL_TESTS();
}
