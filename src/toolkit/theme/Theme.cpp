#include "toolkit/theme/Theme.h"

#include <QtCore/QFile>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>
#include <QtGui/QFont>
#include <QtGui/QIcon>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProxyStyle>

// A static library's resources are taken in by name, from outside any namespace.
static void takeResources() {
  Q_INIT_RESOURCE(theme);
}

namespace tavoline {

namespace {

constexpr int bodyPixels = 16;

struct Token {
  const char* name;
  QRgb colour;
};

// Longer names first, as one may begin with another.
constexpr Token tokens[] = {
    {"@accentDark", theme::accentDark},
    {"@accentSoft", theme::accentSoft},
    {"@accent", theme::accent},
    {"@wrongSoft", theme::wrongSoft},
    {"@wrong", theme::wrong},
    {"@ground", theme::ground},
    {"@card", theme::card},
    {"@stripe", theme::stripe},
    {"@shade", theme::shade},
    {"@line", theme::line},
    {"@ink", theme::ink},
    {"@muted", theme::muted},
    {"@free", theme::free},
};

// What a stylesheet cannot say.
class TouchStyle : public QProxyStyle {
 public:
  TouchStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    switch (hint) {
      case SH_LineEdit_PasswordCharacter:
        return '*';
      case SH_ComboBox_Popup:  // no: a list below the box, scrolled by finger, and not a menu over it
      case SH_DialogButtonBox_ButtonsHaveIcons:
      case SH_EtchDisabledText:
        return 0;
      default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
  }

  // The edge of a button says that it has the focus; a grey frame inside it says it worse.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element != PE_FrameFocusRect) QProxyStyle::drawPrimitive(element, option, painter, widget);
  }

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    switch (metric) {
      case PM_ButtonIconSize:
      case PM_LineEditIconSize:
        return 24;
      case PM_SmallIconSize:
        return 20;
      default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
  }
};

QPalette palette() {
  QPalette colours;
  const auto set = [&](QPalette::ColorRole role, QRgb colour) { colours.setColor(role, QColor(colour)); };
  set(QPalette::Window, theme::ground);
  set(QPalette::WindowText, theme::ink);
  set(QPalette::Base, theme::card);
  set(QPalette::AlternateBase, theme::stripe);
  set(QPalette::Text, theme::ink);
  set(QPalette::Button, theme::card);
  set(QPalette::ButtonText, theme::ink);
  set(QPalette::PlaceholderText, theme::muted);
  set(QPalette::Highlight, theme::accent);
  set(QPalette::HighlightedText, theme::card);
  set(QPalette::Link, theme::accent);
  set(QPalette::Midlight, theme::line);
  set(QPalette::Mid, theme::line);
  set(QPalette::ToolTipBase, theme::ink);
  set(QPalette::ToolTipText, theme::card);
  for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    colours.setColor(QPalette::Disabled, role, QColor(theme::muted));
  }
  return colours;
}

QString styleSheet() {
  QFile file(QStringLiteral(":/tavoline/theme/tavoline.qss"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QString sheet = QString::fromUtf8(file.readAll());
  for (const Token& token : tokens) {
    sheet.replace(QString::fromLatin1(token.name), QColor(token.colour).name());
  }
  return sheet;
}

// The words of Qt's file dialog that its own French leaves out.
class FileWords : public QTranslator {
 public:
  using QTranslator::QTranslator;
  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* source, const char*, int) const override {
    static constexpr const char* words[][2] = {
        {"Folder", "Dossier"}, {"Drive", "Lecteur"}, {"Shortcut", "Raccourci"}, {"Unknown", "Inconnu"}};
    if (qstrcmp(context, "QAbstractFileIconProvider") != 0) return {};
    for (const auto& [english, french] : words) {
      if (qstrcmp(source, english) == 0) return QString::fromUtf8(french);
    }
    return {};
  }
};

void speakFrench(QApplication& application) {
  QLocale::setDefault(QLocale(QLocale::French));
  auto* translator = new QTranslator(&application);
  if (translator->load(QStringLiteral("qtbase_fr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    application.installTranslator(translator);
  }
  application.installTranslator(new FileWords(&application));
}

}  // namespace

void applyTheme(QApplication& application) {
  takeResources();
  speakFrench(application);
  QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << QStringLiteral("/usr/share/icons")
                                                       << QStringLiteral("/usr/local/share/icons"));
  QIcon::setThemeName(QStringLiteral("breeze"));
  QIcon::setFallbackThemeName(QStringLiteral("hicolor"));

  QFont body(QStringLiteral("Liberation Sans"));
  body.setStyleHint(QFont::SansSerif);
  body.setPixelSize(bodyPixels);
  application.setFont(body);
  application.setStyle(new TouchStyle);
  application.setPalette(palette());
  application.setStyleSheet(styleSheet());
}

}  // namespace tavoline
