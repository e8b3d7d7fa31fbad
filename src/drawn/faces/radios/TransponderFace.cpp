#include "drawn/faces/radios/TransponderFace.h"

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

using Mode = TransponderDevice::Mode;

const QColor kOrange{0xff, 0x7a, 0x2c};
const QPointF kModeAt{-204, 9};
const QRectF kWindow{-148, -27, 206, 54};
constexpr double kIdentSeconds = 18;

int PositionOf(Mode mode, bool keyed) {
  static constexpr int turned[] = {0, 1, 2, 3, 4};
  static constexpr int keys[] = {0, 1, 3, 4, 2};
  return (keyed ? keys : turned)[static_cast<int>(mode)];
}

}  // namespace

TransponderFace::TransponderFace(TransponderDevice& device, QWidget* parent)
    : WideFace(device, QStringLiteral("TRANSPONDER"), 78, parent), gauge_(device) {
  modeKnob_ = &AddKnob(kModeAt, 19, {}, QStringLiteral("Mode: turn the wheel"),
                       [this](int clicks) { gauge_.TurnMode(clicks); });
  if (gauge_.HasKeys()) {
    AddKeys();
  } else {
    AddDigitKnobs();
  }
}

void TransponderFace::AddKeys() {
  for (int key = 0; key < 8; ++key) {
    AddButton({66.0 + key % 4 * 35, key < 4 ? -32.0 : 3.0, 31, 29}, QString::number(key),
              QStringLiteral("Four keys make a new code"), [this, key] { gauge_.Key(key); });
  }
  AddButton({206, -32, 38, 29}, QStringLiteral("IDT"), QStringLiteral("Identification"), [this] {
    gauge_.Ident();
    identGlow_ = kIdentSeconds;
  });
  AddButton({206, 3, 38, 29}, QStringLiteral("CLR"), QStringLiteral("Forgets the keys pressed"),
            [this] { gauge_.ClearKeys(); });
  for (int digit = 0; digit < 4; ++digit) {
    AddWheelArea({-56.0 + digit * 27, -24, 27, 48}, QStringLiteral("One digit of the code: turn the wheel"),
                 [this, digit](int clicks) { gauge_.TurnDigit(digit, clicks); });
  }
}

void TransponderFace::AddDigitKnobs() {
  for (int digit = 0; digit < 4; ++digit) {
    AddKnob({82.0 + digit * 33, 4}, 14.5, {}, QStringLiteral("One digit of the code: turn the wheel"),
            [this, digit](int clicks) { gauge_.TurnDigit(digit, clicks); });
  }
  AddButton({202, -15, 42, 32}, QStringLiteral("IDENT"), QStringLiteral("Identification"), [this] {
    gauge_.Ident();
    identGlow_ = kIdentSeconds;
  });
}

QRectF TransponderFace::Move(double seconds, bool told) {
  modeKnob_->angle = SelectorAngle(5, PositionOf(gauge_.Knob(), gauge_.HasKeys()));
  const bool glowed = identGlow_ > 0;
  if (glowed) identGlow_ -= seconds;
  const bool goesOut = glowed && identGlow_ <= 0;
  return told || goesOut ? Everything() : QRectF();
}

void TransponderFace::DrawDial(QPainter& painter) {
  static const QStringList turned = {"OFF", "SBY", "ON", "ALT", "TST"};
  static const QStringList keyed = {"OFF", "SBY", "TST", "ON", "ALT"};
  const bool keys = gauge_.HasKeys();
  DrawSelector(painter, kModeAt, 32, keys ? keyed : turned, PositionOf(gauge_.Knob(), keys));
  DrawWindow(painter, kWindow);
  if (!keys) Label(painter, {131, -26}, QStringLiteral("CODE"), 9);
}

QString TransponderFace::CodeText() const {
  const auto& typed = gauge_.Typed();
  if (!typed.empty()) return QString::fromStdString(typed).leftJustified(4, '-');
  return QStringLiteral("%1").arg(gauge_.Code(), 4, 10, QLatin1Char('0'));
}

void TransponderFace::DrawMoving(QPainter& painter) {
  const bool on = gauge_.Knob() != Mode::Off;
  const bool test = gauge_.Knob() == Mode::Test;
  const QRectF code(-58, -18, 108, 36);
  if (on) Digits(painter, code, test ? QStringLiteral("8888") : CodeText(), kOrange);
  static const QString words[] = {{}, "SBY", "ON", "ALT", "TST"};
  const double x = -122;
  Annunciate(painter, {x, -16}, 11, words[static_cast<int>(gauge_.Knob())], kOrange, on);
  // The reply lamp glows while it identifies.
  Annunciate(painter, {x + 36, -16}, 11, QStringLiteral("R"), kOrange,
             on && gauge_.Knob() != Mode::Standby && (identGlow_ > 0 || test));
  if (!gauge_.HasKeys()) {
    Annunciate(painter, {x + 14, 10}, 11, QStringLiteral("IDENT"), kOrange, on && identGlow_ > 0);
    return;
  }
  const bool shows = on && gauge_.FlightLevel() && gauge_.Knob() != Mode::Standby;
  Annunciate(painter, {x - 8, 11}, 11, QStringLiteral("FL"), kOrange, shows);
  const int level = gauge_.FlightLevel().value_or(0);
  const QString digits =
      level < 0 ? QString::number(level) : QStringLiteral("%1").arg(level, 3, 10, QLatin1Char('0'));
  if (shows) Digits(painter, {-114, -1, 50, 22}, digits, kOrange);
}

QString TransponderFace::Words() const {
  static const QString words[] = {"off", "standby", "on", "alt", "test"};
  return QStringLiteral("transponder %1 %2").arg(CodeText(), words[static_cast<int>(gauge_.Knob())]);
}

}  // namespace tvx::drawn
