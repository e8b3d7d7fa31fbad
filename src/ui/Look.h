// How every form looks: one palette and one small style sheet, sizes taken from the screen.
#pragma once

#include <QColor>
#include <QWidget>
#include <cstdint>

class QApplication;

namespace tvx::look {

// Dark is the standard: it does not blind in a dark cockpit. Light is for a room by day.
enum class Theme { Dark, Light };

struct Colours {
  QColor ground, panel, line, text, dim, accent, onAccent, good, trouble;
};

const Colours& ColoursOf(Theme theme);
Theme CurrentTheme();
inline const Colours& CurrentColours() {
  return ColoursOf(CurrentTheme());
}

// What something drawn stands on: the form itself, a framed panel, or something else.
enum class Ground { Form, Panel, Unknown };
// Its colour; transparent where it is not known.
QColor ColourOf(Ground ground);

// Sets palette, font and style sheet of the whole program; may be called again with the other theme.
void Apply(QApplication& application, Theme theme);

// Takes high contrast over from the desktop; to be called once, before the first Apply.
void FollowDesktop();
// Whether the desktop, of these colours and with a theme of this name, is one of high contrast.
bool WantsHighContrast(const QPalette& desktop, const QString& themeName);
// Black, white and few strong colours, in both themes; takes effect with the next Apply.
void SetHighContrast(bool on);

// Height of ordinary text in pixels for a screen of `screenHeight` pixels: 13..28, growing with the screen.
// The desktop's own text height, in pixels, makes that larger or smaller where it is not a usual one (11 to
// 16); 0: it is not known.
int TextHeight(int screenHeight, int systemText = 0);

// Distances, in pixels of the current text size.
int Gap();     // between controls that belong together
int Margin();  // around a panel and a form

// A colour that is given as red + 256 green + 65536 blue.
QColor FromCode(std::int32_t code);

// How well `a` reads on `b`: 1 (not at all) to 21 (black on white).
double Contrast(const QColor& a, const QColor& b);
// `colour`, kept in its hue and made lighter or darker until it reads on `ground` (a contrast of 4.5 or
// more).
QColor Legible(QColor colour, const QColor& ground);

// Roles that the style sheet knows; set before the widget is shown, or followed by the widget's repolish.
//   "panel" a framed group   "caption" a small label   "value" a number to read from afar
//   "title" a headline       "primary" the button that one usually wants     "link" a button that opens a
//   page   "popup" a list that drops down while one types
void SetRole(QWidget* widget, const char* role);

}  // namespace tvx::look
