#pragma once

#include <QtGui/QColor>

class QApplication;

namespace tavoline {

/// The colours of the system, by what they say. The stylesheet names them with an @ ("@accent").
namespace theme {
inline constexpr QRgb ground = 0xfff3f1ec;  ///< Behind everything: a light warm grey.
inline constexpr QRgb card = 0xffffffff;    ///< What is worked on: inputs, lists, tiles.
inline constexpr QRgb stripe = 0xfff9f8f5;  ///< Every second row of a list.
inline constexpr QRgb shade = 0xffe9e6df;   ///< Headers, and what cannot be used now.
inline constexpr QRgb line = 0xffd6d1c7;    ///< Edges.
inline constexpr QRgb ink = 0xff1f2b2b;     ///< Text.
inline constexpr QRgb muted = 0xff66706f;   ///< Secondary text; still 4.5 to 1 on the ground.
inline constexpr QRgb accent =
    0xff0f5e63;  ///< The one accent, a deep teal: what goes on, what has the focus.
inline constexpr QRgb accentDark = 0xff0a464a;   ///< The accent under a finger.
inline constexpr QRgb accentSoft = 0xffd5e8e7;   ///< The current row, the key under a finger.
inline constexpr QRgb wrong = 0xffb3261e;        ///< Only for what is wrong or busy.
inline constexpr QRgb wrongSoft = 0xfffbe1de;    ///< An input that is wrong; a cell to look at.
inline constexpr QRgb alert = 0xfff4978e;        ///< A cell that calls for something: a low stock.
inline constexpr QRgb free = 0xff2e7d4f;         ///< Only for what is free or right.
inline constexpr QRgb freeSoft = 0xffd9ecdf;     ///< A cell that is settled.
inline constexpr QRgb waitingSoft = 0xfffbeac4;  ///< A cell that is settled in part.
}  // namespace theme

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
///   amount above a chart), "wrong";
/// - `kind` of an input: "amount" (large figures), "total" (the largest on a screen; disabled it has no box);
/// - `kind` of a frame or panel: "card" (white, rounded), "window" (the edge of a window without a frame),
///   "bar" (a strip in the accent colour), "plain" (no look);
/// - `dense` of a list or grid: less air at the sides of its texts.
void applyTheme(QApplication& application);

}  // namespace tavoline
