#include "ui/Look.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QScreen>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

namespace tvx::look {
namespace {

// In pixels: what desktops use by themselves, and what still makes a form.
constexpr int kSmallestUsualText = 11, kLargestUsualText = 16;
constexpr int kSmallestText = 10, kLargestText = 40;
// Only black on white, or white on black, has more.
constexpr double kPureContrast = 20.5;

Theme currentTheme = Theme::Dark;
int currentText = 15;
bool highContrast = false;

// The tokens @ground, @text and so on stand for the theme's colours, @small, @big and @huge for text heights,
// @mark and @round for the marks of boxes.
constexpr const char* kStyleSheet = R"(
QToolTip { background: @panel; color: @text; border: 1px solid @line; padding: 3px; }
*[role="panel"] { background: @panel; border: 1px solid @line; border-radius: 6px; }
QLabel { background: transparent; }
QLabel[role="caption"] { color: @dim; font-size: @smallpx; }
QLabel[role="value"] { color: @text; font-size: @bigpx; font-weight: 600; }
QLabel[role="title"] { color: @text; font-size: @hugepx; font-weight: 600; }
QPushButton { background: @panel; color: @text; border: 1px solid @line; border-radius: 5px;
              padding: 0.35em 0.9em; }
QDialog QPushButton { min-width: 5em; }
QPushButton:hover { border-color: @accent; }
QPushButton:pressed { background: @line; }
QPushButton:disabled { color: @dim; }
QPushButton:focus { border: 2px solid @accent; }
QPushButton[role="primary"]:enabled { background: @accent; color: @onaccent; border-color: @accent; font-weight: 600; }
QPushButton[role="primary"]:focus { border: 2px solid @text; }
QPushButton[role="small"] { padding: 0.3em 0.2em; }
QPushButton[role="link"] { background: transparent; border: 1px solid transparent; color: @accent;
                           padding: 0.1em; text-align: left; }
QPushButton[role="titlelink"] { background: transparent; border: none; padding: 0;
                                text-align: left; font-size: @hugepx; font-weight: 600; }
QPushButton[role="link"]:hover { text-decoration: underline; }
QPushButton[role="link"]:focus { border: 1px solid @accent; }
QLineEdit, QAbstractItemView, QComboBox { background: @ground; color: @text; border: 1px solid @line;
                                  border-radius: 4px; padding: 0.2em; }
QComboBox { combobox-popup: 0; }
QAbstractItemView { selection-background-color: @accent; selection-color: @onaccent; }
QLineEdit:focus, QAbstractItemView:focus, QComboBox:focus, QSlider:focus { border: 2px solid @accent; }
QAbstractItemView[role="popup"], QAbstractItemView[role="popup"]:focus { padding: 0; border: 1px solid @accent; }
QLineEdit:read-only, QLineEdit:disabled, QComboBox:disabled, QCheckBox:disabled, QRadioButton:disabled { color: @dim; }
QLineEdit[wrong="true"] { border: 2px solid @trouble; }
QListView::item { padding: 0.2em; }
QHeaderView { border: none; padding: 0; }
QHeaderView::section { background: @panel; color: @dim; border: none; border-bottom: 1px solid @line;
                       padding: 0.2em; }
QHeaderView::up-arrow, QHeaderView::down-arrow { subcontrol-origin: padding; subcontrol-position: top center;
                                                 width: @markpx; height: 0.5em; }
QTreeView[sortingEnabled="false"] QHeaderView::up-arrow,
QTreeView[sortingEnabled="false"] QHeaderView::down-arrow { width: 0px; }
QRadioButton::indicator { width: @markpx; height: @markpx; border: 2px solid @dim;
                                                background: @ground; }
QRadioButton::indicator { border-radius: @roundpx; }
QRadioButton::indicator:checked { background: @accent; }
QCheckBox:focus, QRadioButton:focus { color: @accent; }
)";

QString StyleSheetOf(const Colours& c) {
  QString sheet = QString::fromLatin1(kStyleSheet);
  const auto put = [&sheet](const char* token, const QString& text) {
    sheet.replace(QLatin1String(token), text);
  };
  put("@ground", c.ground.name());
  put("@panel", c.panel.name());
  put("@line", c.line.name());
  put("@text", c.text.name());
  put("@dim", c.dim.name());
  put("@trouble", c.trouble.name());
  put("@accent", c.accent.name());
  put("@onaccent", c.onAccent.name());
  put("@small", QString::number(currentText * 17 / 20));
  put("@big", QString::number(currentText * 2));
  put("@huge", QString::number(currentText * 2));
  // Half of the mark with its frame: a corner that is rounder is not rounded at all.
  const int half = currentText * 2 / 5;
  put("@mark", QString::number(half * 2));
  put("@round", QString::number(half + 2));
  return sheet;
}

QPalette PaletteOf(const Colours& c) {
  QPalette p;
  p.setColor(QPalette::Window, c.ground);
  p.setColor(QPalette::WindowText, c.text);
  p.setColor(QPalette::Base, c.ground);
  p.setColor(QPalette::AlternateBase, c.panel);
  p.setColor(QPalette::Text, c.text);
  p.setColor(QPalette::Button, c.panel);
  p.setColor(QPalette::ButtonText, c.text);
  p.setColor(QPalette::BrightText, c.trouble);
  p.setColor(QPalette::Highlight, c.accent);
  p.setColor(QPalette::HighlightedText, c.onAccent);
  p.setColor(QPalette::Link, c.accent);
  p.setColor(QPalette::ToolTipBase, c.panel);
  p.setColor(QPalette::ToolTipText, c.text);
  p.setColor(QPalette::PlaceholderText, c.dim);
  // What is raised or sunk is drawn with a fine line, not with shadows.
  for (const auto role :
       {QPalette::Light, QPalette::Midlight, QPalette::Mid, QPalette::Dark, QPalette::Shadow})
    p.setColor(role, c.line);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    p.setColor(QPalette::Disabled, role, c.dim);
  }
  return p;
}

double Luminance(const QColor& colour) {
  const auto linear = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

// A ticked box has a tick in it.
class MarkStyle final : public QProxyStyle {
 public:
  // `markSize`: of a check box and a radio button, in pixels.
  explicit MarkStyle(int markSize) : QProxyStyle("Fusion"), markSize_(markSize) {}
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

 private:
  int markSize_;
};

int MarkStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  if (metric == PM_IndicatorWidth || metric == PM_IndicatorHeight) return markSize_;
  return QProxyStyle::pixelMetric(metric, option, widget);
}

void MarkStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element != PE_IndicatorCheckBox && element != PE_IndicatorItemViewItemCheck) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  const Colours& colours = CurrentColours();
  const bool enabled = (option->state & State_Enabled) != 0;
  const bool focused = (option->state & State_HasFocus) != 0;
  const QRectF box = QRectF(option->rect).adjusted(1, 1, -1, -1);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(enabled && focused ? colours.accent : colours.dim, 2));
  painter->setBrush(colours.ground);
  painter->drawRoundedRect(box, 2, 2);
  if ((option->state & State_On) != 0) {
    painter->setPen(QPen(enabled ? colours.accent : colours.dim, box.width() / 6, Qt::SolidLine, Qt::RoundCap,
                         Qt::RoundJoin));
    const QPointF tick[] = {{box.left() + box.width() * 0.20, box.top() + box.height() * 0.52},
                            {box.left() + box.width() * 0.42, box.top() + box.height() * 0.74},
                            {box.left() + box.width() * 0.80, box.top() + box.height() * 0.26}};
    painter->drawPolyline(tick, 3);
  }
  painter->restore();
}

}  // namespace

const Colours& ColoursOf(Theme theme) {
  static const Colours dark{QColor(0x10, 0x14, 0x18), QColor(0x18, 0x1f, 0x26), QColor(0x36, 0x42, 0x4e),
                            QColor(0xe8, 0xee, 0xf3), QColor(0xa4, 0xb4, 0xc1), QColor(0x55, 0xb4, 0xff),
                            QColor(0x06, 0x1a, 0x2b), QColor(0x3d, 0xdc, 0x84), QColor(0xff, 0xb4, 0x2e)};
  static const Colours light{QColor(0xf1, 0xf4, 0xf6), QColor(0xff, 0xff, 0xff), QColor(0xb7, 0xc3, 0xcd),
                             QColor(0x12, 0x1c, 0x25), QColor(0x4d, 0x5d, 0x6a), QColor(0x0a, 0x62, 0xb0),
                             QColor(0xff, 0xff, 0xff), QColor(0x15, 0x80, 0x3d), QColor(0xa3, 0x5c, 0x00)};
  static const Colours strongDark{Qt::black,
                                  Qt::black,
                                  Qt::white,
                                  Qt::white,
                                  Qt::white,
                                  QColor(255, 255, 0),
                                  Qt::black,
                                  QColor(0x55, 0xff, 0x88),
                                  QColor(0xff, 0xc0, 0x40)};
  static const Colours strongLight{Qt::white,
                                   Qt::white,
                                   Qt::black,
                                   Qt::black,
                                   Qt::black,
                                   QColor(0, 0, 0xa0),
                                   Qt::white,
                                   QColor(0, 0x55, 0x20),
                                   QColor(0x7a, 0x20, 0)};
  if (highContrast) return theme == Theme::Dark ? strongDark : strongLight;
  return theme == Theme::Dark ? dark : light;
}

Theme CurrentTheme() {
  return currentTheme;
}

QColor ColourOf(Ground ground) {
  const Colours& colours = CurrentColours();
  return ground == Ground::Form ? colours.ground : ground == Ground::Panel ? colours.panel : Qt::transparent;
}

int TextHeight(int screenHeight, int systemText) {
  const int usual = std::clamp(screenHeight * 15 / 1000, 13, 28);
  if (systemText <= 0) return usual;
  // Within the usual sizes of desktops the screen decides; a user who has chosen others means it.
  const int nearest = std::clamp(systemText, kSmallestUsualText, kLargestUsualText);
  return std::clamp(usual * systemText / nearest, kSmallestText, kLargestText);
}

bool WantsHighContrast(const QPalette& desktop, const QString& themeName) {
  return themeName.contains("highcontrast", Qt::CaseInsensitive) ||
         Contrast(desktop.color(QPalette::WindowText), desktop.color(QPalette::Window)) > kPureContrast;
}

void SetHighContrast(bool on) {
  highContrast = on;
}

void FollowDesktop() {
  // Once the program has set its own, the desktop's colours cannot be asked for any more.
  SetHighContrast(WantsHighContrast(QApplication::palette(), qEnvironmentVariable("GTK_THEME")));
}

void Apply(QApplication& application, Theme theme) {
  currentTheme = theme;
  if (const QScreen* screen = QApplication::primaryScreen()) {
    const QFont system = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    currentText = TextHeight(screen->availableGeometry().height(), QFontInfo(system).pixelSize());
  }
  QApplication::setStyle(new MarkStyle(currentText * 2 / 5 * 2 + 4));
  QFont font = QApplication::font();
  font.setPixelSize(currentText);
  QApplication::setFont(font);
  QApplication::setPalette(PaletteOf(ColoursOf(theme)));
  application.setStyleSheet(StyleSheetOf(ColoursOf(theme)));
}

int Gap() {
  return currentText / 2;
}
int Margin() {
  return currentText;
}

QColor FromCode(std::int32_t code) {
  return {code & 0xFF, code >> 8 & 0xFF, code >> 16 & 0xFF};
}

double Contrast(const QColor& a, const QColor& b) {
  const double la = Luminance(a), lb = Luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor Legible(QColor colour, const QColor& ground) {
  const float step = Luminance(ground) < 0.18 ? 0.02f : -0.02f;
  float hue = 0, saturation = 0, lightness = 0;
  colour.getHslF(&hue, &saturation, &lightness);
  while (Contrast(colour, ground) < 4.5 && lightness + step >= 0 && lightness + step <= 1) {
    lightness += step;
    colour.setHslF(hue, saturation, lightness);
  }
  return colour;
}

void SetRole(QWidget* widget, const char* role) {
  widget->setProperty("role", QString::fromLatin1(role));
}

}  // namespace tvx::look
