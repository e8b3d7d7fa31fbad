#include "drawn/widgets/Theme.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <algorithm>
#include <map>

namespace tvx::drawn::theme {
namespace {

const QColor kPaint{0xee, 0xef, 0xea};
const QColor kWarmDark{0x7a, 0x52, 0x26};
const QColor kWarmBright{0xff, 0xdd, 0xa6};

// In pixels.
constexpr int kUsualText = 14, kLargestText = 40;
constexpr int kLargestUsual = 16;  // that a desktop has without a user's wish

double Brightness(const FaceLight& light) {
  return std::clamp(light.brightness / 15.0, 0.0, 1.0);
}

}  // namespace

QColor Mix(const QColor& from, const QColor& to, double u) {
  const auto part = [u](float a, float b) {
    return a + (b - a) * static_cast<float>(std::clamp(u, 0.0, 1.0));
  };
  return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                          part(from.blueF(), to.blueF()), part(from.alphaF(), to.alphaF()));
}

QColor Ink(const FaceLight& light) {
  return light.lit ? Mix(kWarmDark, kWarmBright, Brightness(light)) : kPaint;
}

QColor Ink(const QColor& paint, const FaceLight& light) {
  if (!light.lit) return paint;
  const QColor dim = Mix(kDial, paint, 0.45);
  return Mix(dim, Mix(paint, kWarmBright, 0.25), Brightness(light));
}

QFont FontOf(double height, bool bold) {
  // Every text of every repaint asks for one: made once, they are found at once.
  static std::map<std::pair<int, bool>, QFont> made;
  const int pixels = std::max(1, static_cast<int>(height));
  const auto found = made.find({pixels, bold});
  if (found != made.end()) return found->second;
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setStyleHint(QFont::SansSerif);
  font.setFamilies({QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
  font.setPixelSize(pixels);
  font.setBold(bold);
  return made.emplace(std::pair(pixels, bold), font).first->second;
}

int TextHeight() {
  const int system = QFontInfo(QFontDatabase::systemFont(QFontDatabase::GeneralFont)).pixelSize();
  return system <= kLargestUsual ? kUsualText : std::min(kUsualText * system / kLargestUsual, kLargestText);
}

QString StyleSheet() {
  QString sheet = QStringLiteral(R"(
    QWidget { color: #e6e9ec; font-family: "Noto Sans", "DejaVu Sans"; font-size: @textpx; }
    #virtualCockpit { background: #1d2024; }
    #sideStrip { background: #15171a; border-left: 1px solid #34393f; }
    QLabel[role="title"] { color: #ffb454; font-size: @smallpx; font-weight: 600; }
    QLabel[role="caption"] { color: #9aa3ad; font-size: @smallpx; }
    QLabel[role="big"] { font-size: @bigpx; font-weight: 600; }
    QFrame[role="line"] { background: #2b3036; max-height: 1px; min-height: 1px; border: none; }
    QPushButton, QComboBox { background: #262a30; border: 1px solid #3d444c; border-radius: 5px;
                             padding: 7px 10px; min-height: 18px; }
    QPushButton:hover, QComboBox:hover { background: #30353c; border-color: #59626c; }
    QPushButton:focus, QComboBox:focus { border-color: #ffb454; }
    QPushButton:pressed { background: #1c1f23; }
    QPushButton:disabled { color: #626a73; border-color: #2b3036; }
    QPushButton:checked { background: #4a3719; border-color: #ffb454; color: #ffd9a0; }
    QComboBox QAbstractItemView, QMenu { background: #1d2024; border: 1px solid #3d444c;
                                         selection-background-color: #4a3719; }
    QMenu::item { padding: 6px 22px 6px 26px; }
    QMenu::item:selected { background: #4a3719; }
    QMenu::separator { height: 1px; background: #34393f; margin: 4px 8px; }
    QToolTip { background: #1d2024; color: #e6e9ec; border: 1px solid #59626c; padding: 4px; }
  )");
  const int text = TextHeight();
  const auto put = [&sheet](const char* token, int pixels) {
    sheet.replace(QLatin1String(token), QString::number(pixels));
  };
  put("@text", text);
  put("@small", text * 13 / 14);
  put("@big", text * 11 / 7);
  return sheet;
}

}  // namespace tvx::drawn::theme
