#pragma once

#include <QtGui/QColor>

class QApplication;

namespace tavoline {

/// The colours of the system, by what they say. The stylesheet names them with an @ ("@accent").
struct Theme {
  QRgb ground;       ///< Behind everything.
  QRgb card;         ///< What is worked on: inputs, lists, tiles.
  QRgb stripe;       ///< Every second row of a list.
  QRgb shade;        ///< Headers, and what cannot be used now.
  QRgb line;         ///< Edges.
  QRgb ink;          ///< Text.
  QRgb muted;        ///< Secondary text.
  QRgb accent;       ///< The one accent, a teal: what goes on, what has the focus.
  QRgb accentDark;   ///< The accent under a finger.
  QRgb accentSoft;   ///< The current row, the key under a finger.
  QRgb onAccent;     ///< Text on the accent.
  QRgb bar;          ///< The strip at the top, and
  QRgb barDown;      ///< a button of it under a finger.
  QRgb onBar;        ///< Text on the strip, and
  QRgb onBarMuted;   ///< what is less of it.
  QRgb wrong;        ///< Only for what is wrong or busy.
  QRgb wrongSoft;    ///< An input that is wrong; a cell to look at.
  QRgb alert;        ///< A cell that calls for something: a low stock.
  QRgb free;         ///< Only for what is free or right.
  QRgb freeSoft;     ///< A cell that is settled.
  QRgb waitingSoft;  ///< A cell that is settled in part.
};

enum class Shade { Light, Dark };

/// Text keeps at least 4.5 to 1 to what it stands on, in both.
const Theme& theme(Shade shade);
const Theme& theme();  ///< The one in force.
Shade shade();         ///< Which one that is; light until applyTheme() says otherwise.
/// The colour of letters on a ground of any colour.
QColor lettersOn(const QColor& ground);

/// Gives the application its look and its language: Fusion under one stylesheet, the palette above, the font,
/// the icons of the Breeze theme by their standard names, and Qt's own texts in French. To be called once,
/// before the first screen is made.
///
/// What a .ui can ask for by dynamic properties:
/// - `kind` of a button: "primary" (the one step on), "danger" (deletes), "line" and "lineDanger" (narrow,
///   several in a row), "menu" and "menuDoor" (left-aligned, in a column of
///   commands, and the one most used), "onBar" (on a strip in the accent colour), "tool" (a square with a
///   picture), "link" (a clickable text), "key" and "keyWord" (of a keypad, with a sign and with a word),
///   "keySmall" and "keySmallWord" (of a compact one);
/// - `kind` of a label: "title", "heading", "group" (above a few commands), "muted", "chip" (a word on a soft
///   ground), "amount" (figures, right-aligned by the .ui), "total" (the largest thing on a screen), "price"
///   (on a tile), "clock", "legend", "legendFree" and "legendBusy" (what colours mean), "figure" (a large red
///   amount above a chart), "hint" (what an empty list says), "wrong";
/// - `kind` of an input: "amount" (large figures), "total" (the largest on a screen; disabled it has no box);
/// - `kind` of a frame or panel: "card" (white, rounded), "window" (the edge of a window without a frame),
///   "bar" (a strip in the accent colour), "plain" (no look);
/// - `dense` of a list, a grid or a button: less air at the sides of its texts.
void applyTheme(QApplication& application, Shade shade = Shade::Light);

}  // namespace tavoline
