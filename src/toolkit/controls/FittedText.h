#pragma once

#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtGui/QFont>

namespace tavoline {

/// A text as it is drawn where room is dear.
struct FittedText {
  QStringList lines;
  QFont font;      ///< With a pixel size.
  int lineHeight;  ///< In pixels.
};

/// Breaks a text between words into the lines that `room` has height for. The letters are made smaller, to
/// `smallest` pixels at the least, for a text that would not fit; what is too long even then is cut short.
FittedText fitText(const QString& text, const QFont& font, QSize room, int smallest);

/// `font`, made smaller where `text` on one line would be wider than `width` pixels.
QFont fittedFont(const QString& text, const QFont& font, int width);

}  // namespace tavoline
