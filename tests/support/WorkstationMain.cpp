#include <gmock/gmock.h>

#include <QtWidgets/QApplication>

#include "toolkit/theme/Theme.h"

// Asked by the leak sanitizer: Qt lets go of the recognizer of a view that goes before the application.
extern "C" const char* __lsan_default_suppressions();   // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
  return "leak:QScroller::grabGesture";
}

// One application for all cases of a program; offscreen unless the caller wants to watch.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  QApplication application(argc, argv);
  application.setQuitOnLastWindowClosed(false);
  tavoline::applyTheme(application);
  return RUN_ALL_TESTS();
}
