#include "toolkit/theme/Appearance.h"

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <algorithm>
#include <cmath>

namespace tavoline {

namespace {

constexpr char kVariable[] = "QT_SCALE_FACTOR";
constexpr double kLeast = 0.5, kMost = 3.0;  // of a scale that is told

// What the installation tells; 0 for nothing, or nothing that could be meant.
double toldScale() {
  const QSettings file(QDir::current().filePath(QStringLiteral("affichage.ini")), QSettings::IniFormat);
  const double told = file.value(QStringLiteral("echelle")).toString().replace(u',', u'.').toDouble();
  return told >= kLeast && told <= kMost ? told : 0;
}

// An application of its own asks for the size: the scale must be known before the real one is made.
QSize displaySize(int argc, char** argv) {
  const QGuiApplication asking(argc, argv);
  const QScreen* display = QGuiApplication::primaryScreen();
  return display ? display->size() : QSize();
}

}  // namespace

double scaleFor(QSize display) {
  const double room = std::min(display.width() / 1366.0, display.height() / 768.0);
  return std::clamp(std::floor(room * 10) / 10, 1.0, kMost);
}

void scaleToDisplay(int argc, char** argv) {
  if (qEnvironmentVariableIsSet(kVariable)) return;
  const double told = toldScale();
  const double scale = told > 0 ? told : scaleFor(displaySize(argc, argv));
  if (scale != 1.0) qputenv(kVariable, QByteArray::number(scale));
}

}  // namespace tavoline
