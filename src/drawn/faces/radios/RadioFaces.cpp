#include "drawn/faces/radios/RadioFaces.h"

namespace tvx::drawn {
namespace {

const QColor kOrange{0xff, 0x7a, 0x2c};
constexpr double kRowHeight = 78;
constexpr double kKnobX = 208;

QRectF ActiveBox(double y) {
  return {-186, y - 27, 156, 54};
}
QRectF StandbyBox(double y) {
  return {10, y - 27, 156, 54};
}

// The first word of the Function's name, "COM1" or "NAV", with the receiver's number where it has none.
QString NameOf(const Device& device, const ConfigModel& model, Band band) {
  const GaugeRecord& record = model.Gauges[device.Id().gaugeID];
  static constexpr const char* bands[] = {"COM", "NAV", "ADF"};
  QString name = QString::fromLatin1(bands[static_cast<int>(band)]);
  const FunctionRecord* function =
      record.GaugeFunction1 > 0 ? model.FunctionOf(record.GaugeFunction1) : nullptr;
  if (!function) return name;
  const QString word = QString::fromStdString(function->ShortName).section(' ', 0, 0).toUpper();
  if (word.startsWith(name)) name = word;
  if (name.size() == 3 && band != Band::Adf) name += QString::number(std::max<int>(1, record.GaugeInstance1));
  return name;
}

}  // namespace

QString FrequencyText(Band band, int frequency) {
  if (band == Band::Adf) {
    return frequency % 10 == 0 ? QString::number(frequency / 10) : QString::number(frequency / 10.0, 'f', 1);
  }
  const int tens = 10000 + frequency / 10;  // in 10 kHz
  return QStringLiteral("%1.%2").arg(tens / 100).arg(tens % 100, 2, 10, QLatin1Char('0'));
}

void RadioStackFace::AddRow(double y, std::function<void()> swap, std::function<void(int)> coarse,
                            std::function<void(int)> fine) {
  AddButton({-26, y - 14, 32, 28}, QStringLiteral("\u2194"),
            QStringLiteral("Exchanges active and standby frequency"), std::move(swap));
  AddRing({kKnobX, y}, 33, QStringLiteral("Outer knob: the coarse digits of the standby frequency"),
          std::move(coarse));
  AddKnob({kKnobX, y}, 20, {}, QStringLiteral("Inner knob: the fine digits of the standby frequency"),
          std::move(fine));
}

void RadioStackFace::DrawRow(QPainter& painter, double y, const QString& name) const {
  DrawWindow(painter, ActiveBox(y));
  DrawWindow(painter, StandbyBox(y));
  Label(painter, {-218, y - 9}, name, 13.5);
  Label(painter, {-218, y + 9}, QStringLiteral("USE"), 9.5);
  Label(painter, {-10, y + 21}, QStringLiteral("STBY"), 9);
}

void RadioStackFace::DrawRowDigits(QPainter& painter, double y, const FrequencyPair& pair) const {
  const auto inside = [](const QRectF& box) { return box.adjusted(9, 9, -9, -9); };
  Digits(painter, inside(ActiveBox(y)), FrequencyText(pair.band, pair.active), kOrange);
  Digits(painter, inside(StandbyBox(y)), FrequencyText(pair.band, pair.standby), kOrange);
}

RadioFace::RadioFace(RadioDevice& device, const ConfigModel& model, QWidget* parent)
    : RadioStackFace(device, NameOf(device, model, device.Frequencies().band), kRowHeight, parent),
      gauge_(device) {
  AddRow(
      0, [this] { gauge_.Swap(); }, [this](int clicks) { gauge_.TurnCoarse(clicks); },
      [this](int clicks) { gauge_.TurnFine(clicks); });
}

void RadioFace::DrawDial(QPainter& painter) {
  DrawRow(painter, 0, Caption());
}
void RadioFace::DrawMoving(QPainter& painter) {
  DrawRowDigits(painter, 0, gauge_.Frequencies());
}

QString RadioFace::Words() const {
  const FrequencyPair& pair = gauge_.Frequencies();
  return QStringLiteral("%1 %2 (%3)")
      .arg(Caption(), FrequencyText(pair.band, pair.active), FrequencyText(pair.band, pair.standby));
}

ComNavFace::ComNavFace(ComNavDevice& device, const ConfigModel&, QWidget* parent)
    : RadioStackFace(device, QStringLiteral("COM/NAV"), 2 * kRowHeight - 8, parent), gauge_(device) {
  for (int radio = 0; radio < ComNavDevice::kRadios; ++radio) {
    AddRow(
        radio == 0 ? -35 : 35, [this, radio] { gauge_.Swap(radio); },
        [this, radio](int clicks) { gauge_.TurnCoarse(radio, clicks); },
        [this, radio](int clicks) { gauge_.TurnFine(radio, clicks); });
  }
}

void ComNavFace::DrawDial(QPainter& painter) {
  DrawRow(painter, -35, QStringLiteral("COMM1"));
  DrawRow(painter, 35, QStringLiteral("COMM2"));
}
void ComNavFace::DrawMoving(QPainter& painter) {
  DrawRowDigits(painter, -35, gauge_.Radio(0));
  DrawRowDigits(painter, 35, gauge_.Radio(1));
}

QString ComNavFace::Words() const {
  return QStringLiteral("comm %1, %2")
      .arg(FrequencyText(Band::Com, gauge_.Radio(0).active),
           FrequencyText(Band::Com, gauge_.Radio(1).active));
}

}  // namespace tvx::drawn
