// Colours and fonts of the panel.
#pragma once

#include <QColor>
#include <QFont>

#include "drawn/Device.h"

namespace tvx::drawn::theme {

inline const QColor kPanelTop{0x2b, 0x2f, 0x35};
inline const QColor kPanelBottom{0x1d, 0x20, 0x24};
inline const QColor kDial{0x0b, 0x0c, 0x0e};
inline const QColor kText{0xe6, 0xe9, 0xec};
inline const QColor kDim{0x9a, 0xa3, 0xad};
inline const QColor kAmber{0xff, 0xb4, 0x54};
inline const QColor kGood{0x6f, 0xd0, 0x8c};
inline const QColor kTrouble{0xff, 0x7b, 0x6b};

// Part `u` (0..1) of the way from one colour to the other.
QColor Mix(const QColor& from, const QColor& to, double u);
// What is printed on a face: by day as it is painted, lit from within in a warm light of its brightness.
QColor Ink(const FaceLight& light);
// The same for a coloured mark.
QColor Ink(const QColor& paint, const FaceLight& light);
// A font of the height in pixels (of the widget's own units).
QFont FontOf(double height, bool bold = false);
// Height of ordinary text of the window's controls, in pixels: 14, and more where the desktop has large text.
int TextHeight();
// The style sheet of the window's controls, of that height.
QString StyleSheet();

}  // namespace tvx::drawn::theme
