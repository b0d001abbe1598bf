#include "tools/store/demo/Pictures.h"

#include <QtCore/QBuffer>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <algorithm>
#include <array>

namespace tavoline::tool {
namespace {

constexpr QSize kCard(128, 96);
constexpr int kSubjectHeight = 74;
constexpr int kBadgeHeight = 34;
constexpr int kStrikeHeight = 109;  // The one size that the font holds; others are made from it.
constexpr char kFamily[] = "Noto Color Emoji";

/// Centre and edge of a card, by tint: cream, apricot, butter, rose, sand.
struct Tint {
  QRgb centre, edge;
};
constexpr std::array kTints = {Tint{0xfffff8ea, 0xfff6e3c5}, Tint{0xfffff3e6, 0xfff9d9bd},
                               Tint{0xfffffbe2, 0xfff5e6b3}, Tint{0xfffff1ee, 0xfff5d5cc},
                               Tint{0xfffaf4ea, 0xffe9dac3}};

QString text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The emoji alone, cut to what is inked, at the size that the font holds.
QImage glyph(std::string_view emoji) {
  QImage image(2 * kStrikeHeight, 2 * kStrikeHeight, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QFont font{QString::fromLatin1(kFamily)};
  font.setPixelSize(kStrikeHeight);
  QPainter painter(&image);
  painter.setFont(font);
  painter.drawText(image.rect(), Qt::AlignCenter, text(emoji));
  painter.end();

  const auto inked = [](QRgb pixel) { return qAlpha(pixel) > 8; };
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    const auto* end = row + image.width();
    const auto* first = std::find_if(row, end, inked);
    if (first == end) continue;
    const auto* last = end - 1;
    while (!inked(*last)) --last;
    ink |= QRect(static_cast<int>(first - row), y, static_cast<int>(last - first) + 1, 1);
  }
  return image.copy(ink);
}

QImage atHeight(const QImage& image, int height, int widest) {
  return image.scaled(widest, height, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

void drawGround(QPainter& painter, const Tint& tint) {
  QRadialGradient ground(kCard.width() / 2.0, kCard.height() * 0.42, kCard.width() * 0.62);
  ground.setColorAt(0, QColor::fromRgba(tint.centre));
  ground.setColorAt(1, QColor::fromRgba(tint.edge));
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRoundedRect(QRect(QPoint(0, 0), kCard), 12, 12);
}

/// A soft shade below the subject, so that it stands on the card instead of floating.
void drawShade(QPainter& painter, const QRect& subject) {
  const QPointF centre(subject.center().x() + 0.5, subject.bottom() - 1.0);
  const double reach = subject.width() * 0.46;
  painter.save();
  painter.translate(centre);
  painter.scale(1, 0.16);
  QRadialGradient shade(QPointF(0, 0), reach);
  shade.setColorAt(0, QColor(70, 45, 20, 90));
  shade.setColorAt(1, QColor(70, 45, 20, 0));
  painter.setBrush(shade);
  painter.drawEllipse(QPointF(0, 0), reach, reach);
  painter.restore();
}

void drawBadge(QPainter& painter, const QImage& badge) {
  const QRect disc(kCard.width() - kBadgeHeight - 14, kCard.height() - kBadgeHeight - 12, kBadgeHeight + 10,
                   kBadgeHeight + 10);
  painter.setBrush(QColor(255, 255, 255, 235));
  painter.setPen(QPen(QColor(120, 85, 45, 40), 1));
  painter.drawEllipse(disc);
  QRect place(QPoint(0, 0), badge.size());
  place.moveCenter(disc.center());
  painter.drawImage(place.topLeft(), badge);
}

class EmojiPictures : public Pictures {
 public:
  std::vector<std::uint8_t> card(std::string_view subject, std::string_view badge, int tint) const override {
    QImage image(kCard, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawGround(painter, kTints[static_cast<std::size_t>(tint) % kTints.size()]);

    QRect room(QPoint(0, 0), kCard);
    if (!badge.empty()) room.setWidth(kCard.width() - kBadgeHeight);
    const QImage figure = atHeight(glyph(subject), kSubjectHeight, room.width() - 10);
    QRect place(QPoint(0, 0), figure.size());
    place.moveCenter(room.center());
    drawShade(painter, place);
    painter.drawImage(place.topLeft(), figure);
    if (!badge.empty()) drawBadge(painter, atHeight(glyph(badge), kBadgeHeight - 6, kBadgeHeight - 2));
    painter.end();

    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG", 0);  // 0 packs tightest.
    return {bytes.begin(), bytes.end()};
  }

  /// Fonts are there only while a QGuiApplication is; the tool needs no screen for it.
  bool start() {
    if (!QCoreApplication::instance()) {
      qputenv("QT_QPA_PLATFORM", "offscreen");
      application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_.data());
    }
    return QFontDatabase::families().contains(QString::fromLatin1(kFamily));
  }

 private:
  int argumentCount_ = 1;
  std::array<char, 15> name_{"tavoline-store"};
  std::array<char*, 2> arguments_{name_.data(), nullptr};
  std::unique_ptr<QGuiApplication> application_;
};

}  // namespace

std::unique_ptr<Pictures> makePictures(std::string& reason) {
  auto pictures = std::make_unique<EmojiPictures>();
  if (pictures->start()) return pictures;
  reason = "la police « Noto Color Emoji » manque (paquet fonts-noto-color-emoji)";
  return nullptr;
}

}  // namespace tavoline::tool
