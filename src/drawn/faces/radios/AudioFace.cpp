#include "drawn/faces/radios/AudioFace.h"

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

using Selector = AudioDevice::Selector;

constexpr double kLeftStop = -140, kKnobTravel = 280;  // degrees
constexpr int kLoudest = 255;

constexpr std::pair<Selector, const char*> kButtons[] = {
    {Selector::Com1, "COM1"},  {Selector::Com2, "COM2"}, {Selector::Nav1, "NAV1"}, {Selector::Nav2, "NAV2"},
    {Selector::Marker, "MKR"}, {Selector::Dme, "DME"},   {Selector::Adf, "ADF"}};

}  // namespace

AudioFace::AudioFace(AudioDevice& device, QWidget* parent)
    : WideFace(device, QStringLiteral("AUDIO"), 72, parent), gauge_(device) {
  double x = -132;
  for (const auto& [selector, label] : kButtons) {
    AddButton(
        {x, -20, 42, 42}, QString::fromLatin1(label), QStringLiteral("Hears it, or not"),
        [this, which = selector] { gauge_.Toggle(which); },
        [this, which = selector] { return gauge_.Selected(which); });
    x += 45;
  }
  volume_ = &AddKnob({216, -4}, 22, {}, QStringLiteral("Volume: turn the wheel"),
                     [this](int clicks) { gauge_.TurnVolume(clicks); });
}

QRectF AudioFace::Move(double, bool told) {
  volume_->angle = kLeftStop + gauge_.Volume() * kKnobTravel / kLoudest;
  return told ? Everything() : QRectF();
}

void AudioFace::DrawDial(QPainter& painter) {
  Label(painter, {216, 26}, QStringLiteral("VOL"), 10);
  Label(painter, {-190, -26}, QStringLiteral("MARKER"), 9);
}

void AudioFace::DrawMoving(QPainter& painter) {
  struct Lamp {
    const char* letter;
    bool on;
    QColor colour;
  };
  const Lamp lamps[] = {{"O", gauge_.Outer(), QColor(0x4a, 0x9c, 0xff)},
                        {"M", gauge_.Middle(), QColor(0xff, 0xb0, 0x2e)},
                        {"I", gauge_.Inner(), QColor(0xff, 0xff, 0xff)}};
  double x = -224;
  for (const Lamp& lamp : lamps) {
    const QPointF at(x, 4);
    const bool on = lamp.on && gauge_.Powered();
    if (on) {
      QRadialGradient glow(at, 24);
      glow.setColorAt(0, QColor(lamp.colour.red(), lamp.colour.green(), lamp.colour.blue(), 170));
      glow.setColorAt(1, QColor(lamp.colour.red(), lamp.colour.green(), lamp.colour.blue(), 0));
      painter.setPen(Qt::NoPen);
      painter.setBrush(glow);
      painter.drawEllipse(at, 24, 24);
    }
    painter.setPen(QPen(QColor(0x5a, 0x60, 0x67), 1.3));
    painter.setBrush(on ? lamp.colour : theme::Mix(theme::kDial, lamp.colour, 0.16));
    painter.drawEllipse(at, 14, 14);
    Text(painter, at, 14, QString::fromLatin1(lamp.letter),
         on ? QColor(0x10, 0x12, 0x14) : theme::Mix(theme::kDial, lamp.colour, 0.55), true);
    x += 34;
  }
}

QString AudioFace::Words() const {
  QStringList heard;
  for (const auto& [selector, label] : kButtons) {
    if (gauge_.Selected(selector)) heard << QString::fromLatin1(label);
  }
  return QStringLiteral("audio %1").arg(heard.join(' '));
}

}  // namespace tvx::drawn
