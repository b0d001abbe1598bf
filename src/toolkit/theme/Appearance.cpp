#include "toolkit/theme/Appearance.h"

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtGui/QScreen>
#include <QtGui/QStyleHints>
#include <algorithm>
#include <cmath>
#include <optional>

namespace tavoline {

namespace {

constexpr char kVariable[] = "QT_SCALE_FACTOR";
constexpr double kLeast = 0.5, kMost = 3.0;  // of a scale that is told

// 0 for nothing, or nothing that could be meant.
double toldScale() {
  const double told = displaySetting("echelle").replace(u',', u'.').toDouble();
  return told >= kLeast && told <= kMost ? told : 0;
}

// An application of its own asks for the size: the scale must be known before the real one is made.
QSize displaySize(int argc, char** argv) {
  const QGuiApplication asking(argc, argv);
  const QScreen* display = QGuiApplication::primaryScreen();
  return display ? display->size() : QSize();
}

// A desktop that has a portal answers at once; no service is started to be asked. Nothing from any other one.
std::optional<bool> portalIsDark() {
  constexpr int kPatience = 300;  // ms
  auto asking = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
  asking.setAutoStartService(false);
  asking << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
  const QDBusMessage answer = QDBusConnection::sessionBus().call(asking, QDBus::Block, kPatience);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return std::nullopt;
  QVariant scheme = answer.arguments().constFirst();
  while (scheme.canConvert<QDBusVariant>()) scheme = scheme.value<QDBusVariant>().variant();
  return scheme.toUInt() == 1;  // 0 for no preference, 2 for light
}

bool desktopIsDark() {
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
  const Qt::ColorScheme scheme = QGuiApplication::styleHints()->colorScheme();
  if (scheme != Qt::ColorScheme::Unknown) return scheme == Qt::ColorScheme::Dark;
#endif
  const QPalette colours = QGuiApplication::palette();
  if (colours.color(QPalette::Window).lightness() < colours.color(QPalette::WindowText).lightness())
    return true;
  return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") && portalIsDark().value_or(false);
}

}  // namespace

QString displaySetting(const char* name) {
  const QSettings file(QDir::current().filePath(QStringLiteral("affichage.ini")), QSettings::IniFormat);
  return file.value(QString::fromLatin1(name)).toString().trimmed().toLower();
}

Shade shadeForDesktop() {
  const QString wanted = displaySetting("theme");
  const bool dark =
      wanted == QLatin1String("sombre") || (wanted != QLatin1String("clair") && desktopIsDark());
  return dark ? Shade::Dark : Shade::Light;
}

double scaleFor(QSize display, double told) {
  const auto largest = [&](double width, double height, double steps) {
    return std::floor(std::min(display.width() / width, display.height() / height) * steps) / steps;
  };
  if (told > 0) return std::min(told, std::max(1.0, largest(1024, 740, 20)));
  return std::clamp(largest(1366, 768, 10), 1.0, kMost);
}

void scaleToDisplay(int argc, char** argv) {
  if (qEnvironmentVariableIsSet(kVariable)) return;
  const double scale = scaleFor(displaySize(argc, argv), toldScale());
  if (scale != 1.0) qputenv(kVariable, QByteArray::number(scale));
}

}  // namespace tavoline
