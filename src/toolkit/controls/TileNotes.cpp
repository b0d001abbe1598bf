#include "toolkit/controls/TileNotes.h"

#include <QtGui/QIcon>
#include <QtGui/QPainter>

#include "data/value/Figures.h"
#include "toolkit/controls/FittedText.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int firstLine = 16, otherLine = 14;        // pixels from one line to the next
constexpr int firstLetters = 13, otherLetters = 12;  // pixels
constexpr int badgeHeight = 26, badgeLetters = 15;
constexpr int markSize = 22;
constexpr int edge = 6;  // pixels between a mark and the edge of its tile

QFont letters(const QPainter& painter, int pixels, bool bold) {
  QFont font = painter.font();
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

void drawBadge(QPainter& painter, const QRect& tile, int reservedBelow, const QString& text) {
  painter.setFont(letters(painter, badgeLetters, true));
  const int width = qMax(badgeHeight, painter.fontMetrics().horizontalAdvance(text) + 14);
  const QRect place(tile.right() - edge - width + 1, tile.bottom() - reservedBelow - badgeHeight, width,
                    badgeHeight);
  painter.setPen(QPen(QColor(theme().card), 2));
  painter.setBrush(QColor(theme().accent));
  painter.drawRoundedRect(place, badgeHeight / 2.0, badgeHeight / 2.0);
  painter.setPen(QColor(theme().onAccent));
  painter.drawText(place, Qt::AlignCenter, text);
}

void drawMark(QPainter& painter, const QRect& tile, const QString& name) {
  const QRect ground(tile.right() - edge - markSize - 4, tile.top() + edge, markSize + 4, markSize + 4);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(theme().card));
  painter.drawEllipse(ground);
  const QRect place = ground.adjusted(4, 4, -4, -4);
  QIcon::fromTheme(name).paint(&painter, place);
}

}  // namespace

int TileNotes::heightBelow() const {
  return below.isEmpty() ? 0 : firstLine + otherLine * int(below.size() - 1);
}

void TileNotes::drawBelow(QPainter& painter, const QRect& place) const {
  int top = place.top();
  for (qsizetype i = 0; i < below.size(); ++i) {
    const bool first = i == 0;
    QFont font = letters(painter, first ? firstLetters : otherLetters, first);
    const bool figure = isFigure(below[i].toStdString());
    if (figure) font = fittedFont(below[i], font, place.width());
    painter.setFont(font);
    painter.setPen(QColor(first ? theme().ink : theme().muted));
    const QRect line(place.left(), top, place.width(), first ? firstLine : otherLine);
    painter.drawText(
        line, Qt::AlignLeft | Qt::AlignVCenter,
        figure ? below[i] : painter.fontMetrics().elidedText(below[i], Qt::ElideRight, line.width()));
    top = line.bottom() + 1;
  }
}

void TileNotes::drawOver(QPainter& painter, const QRect& tile, int reservedBelow) const {
  painter.save();
  if (nothing) {
    QColor veil(theme().card);
    veil.setAlpha(160);
    painter.fillRect(tile.adjusted(0, 0, 0, -reservedBelow), veil);
  }
  if (!corner.isEmpty()) {
    painter.setFont(letters(painter, otherLetters, nothing));
    painter.setPen(QColor(nothing ? theme().wrong : theme().muted));
    painter.drawText(QRect(tile.left() + 10, tile.bottom() - reservedBelow, tile.width() / 2, reservedBelow),
                     Qt::AlignLeft | Qt::AlignVCenter, corner);
  }
  if (!mark.isEmpty()) drawMark(painter, tile, mark);
  if (!badge.isEmpty()) drawBadge(painter, tile, reservedBelow, badge);
  painter.restore();
}

}  // namespace tavoline
