#include "drawn/faces/radios/DmeFace.h"

#include "drawn/faces/radios/RadioFaces.h"

namespace tvx::drawn {
namespace {

const QColor kAmber{0xff, 0x9a, 0x2e};
const QPointF kSelectorAt{205, 10};
const QPointF kSourceAt{145, 12};
const QRectF kFrequency{18, -27, 82, 54};

QStringList Positions(bool frequency) {
  return frequency ? QStringList{"DME", "N1", "N2"} : QStringList{"N1", "N2"};
}

}  // namespace

DmeFace::DmeFace(DmeDevice& device, QWidget* parent)
    : WideFace(device, QStringLiteral("DME"), 78, parent), gauge_(device) {
  if (!gauge_.HasFrequency()) {
    selector_ = &AddKnob(kSelectorAt, 20, {}, QStringLiteral("Receiver: turn the wheel"),
                         [this](int clicks) { gauge_.TurnReceiver(clicks); });
    return;
  }
  selector_ = &AddKnob(kSourceAt, 17, {}, QStringLiteral("Whom the frequency is for: turn the wheel"),
                       [this](int clicks) { gauge_.TurnSource(clicks); });
  AddRing({215, 0}, 29, QStringLiteral("Outer knob: MHz"), [this](int clicks) { gauge_.TurnCoarse(clicks); });
  AddKnob({215, 0}, 17, {}, QStringLiteral("Inner knob: kHz"),
          [this](int clicks) { gauge_.TurnFine(clicks); });
}

int DmeFace::Position() const {
  return gauge_.HasFrequency() ? static_cast<int>(gauge_.Chosen()) - 1 : gauge_.Receiver() - 1;
}

QRectF DmeFace::Move(double, bool told) {
  selector_->angle = SelectorAngle(gauge_.HasFrequency() ? 3 : 2, Position());
  return told ? Everything() : QRectF();
}

void DmeFace::DrawDial(QPainter& painter) {
  DrawWindow(painter, {-196, -27, gauge_.HasFrequency() ? 208.0 : 340.0, 54});
  if (gauge_.HasFrequency()) DrawWindow(painter, kFrequency);
  DrawSelector(painter, gauge_.HasFrequency() ? kSourceAt : kSelectorAt, 33, Positions(gauge_.HasFrequency()),
               Position());
  Label(painter, {-222, 0}, Caption(), 15);
}

void DmeFace::DrawMoving(QPainter& painter) {
  const double width = gauge_.HasFrequency() ? 68 : 110;
  const auto show = [&](int place, const QString& text, const QString& unit) {
    const double x = -192 + place * width;
    Digits(painter, {x + 4, -19, width - 14, 26}, gauge_.Received() ? text : QStringLiteral("---"), kAmber,
           Qt::AlignHCenter);
    Annunciate(painter, {x + width / 2, 18}, 9.5, unit, kAmber);
  };
  show(0, QString::number(gauge_.Distance() / 10.0, 'f', 1), QStringLiteral("NM"));
  show(1, QString::number(gauge_.Speed()), QStringLiteral("KT"));
  show(2, QString::number(gauge_.Minutes()), QStringLiteral("MIN"));
  if (!gauge_.HasFrequency()) return;
  Digits(painter, {kFrequency.left() + 6, -17, kFrequency.width() - 12, 24},
         FrequencyText(Band::Nav, gauge_.Frequency()), kAmber);
  Annunciate(painter, {kFrequency.center().x(), 18}, 9.5, QStringLiteral("FREQ"), kAmber);
}

QString DmeFace::Words() const {
  if (!gauge_.Received()) return QStringLiteral("dme ---");
  return QStringLiteral("dme %1 NM %2 kt").arg(gauge_.Distance() / 10.0, 0, 'f', 1).arg(gauge_.Speed());
}

}  // namespace tvx::drawn
