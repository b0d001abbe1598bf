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

constexpr Theme kLight{
    .ground = 0xfff3f1ec,  // a light warm grey
    .card = 0xffffffff,
    .stripe = 0xfff9f8f5,
    .shade = 0xffe9e6df,
    .line = 0xffd6d1c7,
    .ink = 0xff1f2b2b,
    .muted = 0xff66706f,
    .accent = 0xff0f5e63,
    .accentDark = 0xff0a464a,
    .accentSoft = 0xffd5e8e7,
    .onAccent = 0xffffffff,
    .bar = 0xff0f5e63,
    .barDown = 0xff0a464a,
    .onBar = 0xffffffff,
    .onBarMuted = 0xffd5e8e7,
    .wrong = 0xffb3261e,
    .wrongSoft = 0xfffbe1de,
    .alert = 0xfff4978e,
    .free = 0xff2b784b,
    .freeSoft = 0xffd9ecdf,
    .waitingSoft = 0xfffbeac4,
};

constexpr Theme kDark{
    .ground = 0xff161c1c,
    .card = 0xff1f2727,
    .stripe = 0xff242d2d,
    .shade = 0xff2b3535,
    .line = 0xff435151,
    .ink = 0xffe6ece9,
    .muted = 0xffa0afac,
    .accent = 0xff6cc7c3,
    .accentDark = 0xff54aca9,
    .accentSoft = 0xff1f4849,
    .onAccent = 0xff071d1d,
    .bar = 0xff123f42,
    .barDown = 0xff1d585c,
    .onBar = 0xffeef6f5,
    .onBarMuted = 0xffa9cfcd,
    .wrong = 0xffff8f85,
    .wrongSoft = 0xff4d2421,
    .alert = 0xff7d3129,
    .free = 0xff7fcf9b,
    .freeSoft = 0xff1e3f2c,
    .waitingSoft = 0xff4d3d16,
};

Shade inForce = Shade::Light;

struct Token {
  const char* name;
  QRgb Theme::*colour;
};

// Longer names first, as one may begin with another.
constexpr Token tokens[] = {
    {"@accentDark", &Theme::accentDark},
    {"@accentSoft", &Theme::accentSoft},
    {"@accent", &Theme::accent},
    {"@onAccent", &Theme::onAccent},
    {"@onBarMuted", &Theme::onBarMuted},
    {"@onBar", &Theme::onBar},
    {"@barDown", &Theme::barDown},
    {"@bar", &Theme::bar},
    {"@wrongSoft", &Theme::wrongSoft},
    {"@wrong", &Theme::wrong},
    {"@ground", &Theme::ground},
    {"@card", &Theme::card},
    {"@stripe", &Theme::stripe},
    {"@shade", &Theme::shade},
    {"@line", &Theme::line},
    {"@ink", &Theme::ink},
    {"@muted", &Theme::muted},
    {"@free", &Theme::free},
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

// Two colours for Fusion's own edges and shadows; what the theme names stands over them.
QPalette palette() {
  const Theme& now = theme();
  QPalette colours(QColor(now.card), QColor(now.ground));
  const auto set = [&](QPalette::ColorRole role, QRgb colour) { colours.setColor(role, QColor(colour)); };
  set(QPalette::WindowText, now.ink);
  set(QPalette::Base, now.card);
  set(QPalette::AlternateBase, now.stripe);
  set(QPalette::Text, now.ink);
  set(QPalette::Button, now.card);
  set(QPalette::ButtonText, now.ink);
  set(QPalette::PlaceholderText, now.muted);
  set(QPalette::Highlight, now.accent);
  set(QPalette::HighlightedText, now.onAccent);
  set(QPalette::Link, now.accent);
  set(QPalette::Midlight, now.line);
  set(QPalette::Mid, now.line);
  set(QPalette::ToolTipBase, now.ink);
  set(QPalette::ToolTipText, now.card);
  for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    colours.setColor(QPalette::Disabled, role, QColor(now.muted));
  }
  return colours;
}

QString styleSheet() {
  QFile file(QStringLiteral(":/tavoline/theme/tavoline.qss"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QString sheet = QString::fromUtf8(file.readAll());
  for (const Token& token : tokens) {
    sheet.replace(QString::fromLatin1(token.name), QColor(theme().*token.colour).name());
  }
  sheet.replace(QStringLiteral("@pictures"), inForce == Shade::Dark ? QStringLiteral(":/tavoline/theme/dark")
                                                                    : QStringLiteral(":/tavoline/theme"));
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

const Theme& theme(Shade shade) {
  return shade == Shade::Dark ? kDark : kLight;
}

const Theme& theme() {
  return theme(inForce);
}

Shade shade() {
  return inForce;
}

QColor lettersOn(const QColor& ground) {
  const bool light = qGray(ground.rgb()) > 127;
  return QColor(light == (inForce == Shade::Light) ? theme().ink : theme().onAccent);
}

void applyTheme(QApplication& application, Shade shade) {
  inForce = shade;
  takeResources();
  speakFrench(application);
  QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << QStringLiteral("/usr/share/icons")
                                                       << QStringLiteral("/usr/local/share/icons"));
  QIcon::setThemeName(shade == Shade::Dark ? QStringLiteral("breeze-dark") : QStringLiteral("breeze"));
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
