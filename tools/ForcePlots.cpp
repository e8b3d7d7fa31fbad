// Draws the plots of docs/force-feedback.md out of the program's own functions, as small SVG files; run by
// scripts/pictures --docs.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "ffb/YokeSettings.h"
#include "ffb/forces/Feel.h"
#include "ffb/forces/ForceShaper.h"
#include "ffb/forces/SafetyGate.h"

namespace tvx {
namespace {

constexpr int kWidth = 420, kHeight = 220;
constexpr int kLeft = 46, kRight = 12, kTop = 26, kBottom = 38;
constexpr int kSamples = 160;
constexpr double kCycle = 0.04;  // s
constexpr double kPi = std::numbers::pi;
constexpr const char* kColours[] = {"#2f6fb0", "#c2571a", "#5a8f3c"};

struct Curve {
  const char* name;
  std::function<double(double)> value;
};
struct Plot {
  const char* file;
  const char* title;
  const char* across;  // with its unit
  double from, to;
  const char* up;
  double lowest, highest;
  std::vector<Curve> curves;
  double namesAt = 0;  // 0 the curves' names stand at the top, 1 at the bottom
};

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4g", value);
  return text;
}

class Picture {
 public:
  explicit Picture(const Plot& plot) : plot_(plot), out_(std::string(plot.file) + ".svg") {
    out_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << kWidth << "\" height=\"" << kHeight
         << "\" font-family=\"sans-serif\" font-size=\"11\">\n"
         << "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
    Grid();
    for (std::size_t i = 0; i < plot_.curves.size(); ++i) Draw(i);
    out_ << "</svg>\n";
  }

 private:
  double X(double value) const {
    return kLeft + (value - plot_.from) / (plot_.to - plot_.from) * (kWidth - kLeft - kRight);
  }
  double Y(double value) const {
    value = std::clamp(value, plot_.lowest, plot_.highest);
    return kHeight - kBottom -
           (value - plot_.lowest) / (plot_.highest - plot_.lowest) * (kHeight - kTop - kBottom);
  }
  double NamesAt() const {
    const double top = kTop + 12, bottom = kHeight - kBottom - 18;
    return top + plot_.namesAt * (bottom - top);
  }
  void Line(double x1, double y1, double x2, double y2) {
    out_ << "<path d=\"M" << Number(x1) << ' ' << Number(y1) << 'L' << Number(x2) << ' ' << Number(y2)
         << "\" stroke=\"#ddd\"/>\n";
  }
  void Text(double x, double y, const char* anchor, const std::string& text, const char* colour = "#444") {
    out_ << "<text x=\"" << Number(x) << "\" y=\"" << Number(y) << "\" text-anchor=\"" << anchor
         << "\" fill=\"" << colour << "\">" << text << "</text>\n";
  }
  void Grid() {
    constexpr int kLines = 4;
    for (int i = 0; i <= kLines; ++i) {
      const double x = plot_.from + (plot_.to - plot_.from) * i / kLines;
      const double y = plot_.lowest + (plot_.highest - plot_.lowest) * i / kLines;
      Line(X(x), kTop, X(x), kHeight - kBottom);
      Line(kLeft, Y(y), kWidth - kRight, Y(y));
      Text(X(x), kHeight - kBottom + 14, i == kLines ? "end" : "middle", Number(x));
      Text(kLeft - 5, Y(y) + 4, "end", Number(y));
    }
    Text(kLeft, 15, "start", plot_.title, "#000");
    Text(kWidth - kRight, kHeight - 8, "end", plot_.across);
    Text(5, kHeight - 8, "start", plot_.up);
  }
  void Draw(std::size_t curve) {
    out_ << "<path fill=\"none\" stroke-width=\"1.6\" stroke=\"" << kColours[curve] << "\" d=\"";
    for (int i = 0; i <= kSamples; ++i) {
      const double x = plot_.from + (plot_.to - plot_.from) * i / kSamples;
      char point[32];
      std::snprintf(point, sizeof point, "%c%.1f %.1f", i == 0 ? 'M' : 'L', X(x),
                    Y(plot_.curves[curve].value(x)));
      out_ << point;
    }
    out_ << "\"/>\n";
    const std::string name = plot_.curves[curve].name;
    if (!name.empty())
      Text(kWidth - kRight - 4, NamesAt() + 12.0 * static_cast<double>(curve), "end", name, kColours[curve]);
  }

  const Plot& plot_;
  std::ofstream out_;
};

// A flight goes on in the program's cycles up to a time, and a value of what is wanted then is taken.
using Set = std::function<void(FfbVariables&, double seconds)>;
ForceCommand After(const ForceSettings& settings, double seconds, const Set& set) {
  Feel feel;
  FfbVariables values;
  for (double now = -0.4; now <= seconds + 1e-9; now += kCycle) {
    set(values, now);
    feel.Advance(values, settings, kCycle);
  }
  return feel.Wanted(values, settings, true, true);
}

// By their powers, since a peak may fall between two cycles.
double GustPart(double hertz) {
  GustFilter filter;
  double passed = 0, all = 1e-9;
  for (int i = 0; i < 2000; ++i) {
    const double load = std::sin(2 * kPi * hertz * kCycle * i);
    const double part = filter.Next(load, kCycle);
    if (i < 1000) continue;
    passed += part * part;
    all += load * load;
  }
  return 100 * std::sqrt(passed / all);
}

// How far the gate is open so many seconds after a cause began that lasts for one.
double GateAt(double seconds) {
  SafetyGate gate;
  for (double now = -3; now < seconds; now += kCycle) {
    gate.Next(now >= 0 && now < 1 ? SafetyCause::SimulatorSilent : SafetyCause::None, kCycle);
  }
  return 100 * gate.Opening();
}

void DrawAll(const ForceSettings& s) {
  const double stall = s.stallSpeed, fastest = s.neverExceedSpeed;
  const auto trimmed = [&](double trim) {
    return [&s, trim](double place) {
      FfbVariables values;
      values.ElevatorTrim = static_cast<float>(trim);
      return RatioOfPlace(place, Feel::TrimCentre(values, s, Axis::Pitch));
    };
  };
  const auto shockOf = [&](double g) {
    return [&s, g](double seconds) {
      return 100 * After(s, seconds,
                         [g](FfbVariables& v, double now) {
                           v.OnGround = now >= 0;
                           v.NormalG = v.OnGround && now < kCycle ? static_cast<float>(g) : 1.0f;
                         })
                       .axes[1]
                       .amplitude;
    };
  };
  const auto gustsOf = [&](double g) {
    return [&s, g](double seconds) {
      return 100 * After(s, seconds,
                         [g](FfbVariables& v, double now) {
                           v.Airspeed = 100;
                           v.NormalG = static_cast<float>(1 + g * std::sin(2 * kPi * 3 * now));
                         })
                       .axes[0]
                       .bias;
    };
  };
  const auto shaker = [&](double seconds) {
    ForceSettings with = s;
    with.effects[static_cast<std::size_t>(Effect::Shaker)][1] = {20, 0.2};
    with.effects[static_cast<std::size_t>(Effect::StallBuffet)] = {};
    return 100 * After(with, seconds,
                       [](FfbVariables& v, double now) {
                         v.Airspeed = 60;
                         v.StallWarning = now >= 0.5 && now < 1.5;
                       })
                     .axes[1]
                     .amplitude;
  };
  const auto ground = [&](double seconds) {
    return 100 * After(s, seconds,
                       [](FfbVariables& v, double now) {
                         v.Airspeed = 30;
                         v.OnGround = now >= 0.2 && now < 1;
                       })
                     .axes[1]
                     .gradient;
  };
  ForceCommand servo;
  servo.drive = Drive::Servo;
  servo.limit = 1;
  servo.axes[1].gradient = kServoForce * s.maximum;
  const Plot plots[] = {
      {"force-air",
       "Force at full deflection, standard profile",
       "kt",
       0,
       300,
       "%",
       0,
       100,
       {{"pitch", [&](double v) { return 100 * ForceAt(s.curves[1], v); }},
        {"roll", [&](double v) { return 100 * ForceAt(s.curves[0], v); }}}},
      {"force-trim",
       "Ratio written over the yoke's place",
       "counts",
       -511,
       511,
       "ratio",
       -1,
       1,
       {{"no trim", trimmed(0)}, {"full trim", trimmed(1)}},
       1},
      {"force-ground",
       "Pitch gradient at 30 kt: touch at 0.2 s, airborne at 1 s",
       "s",
       0,
       2,
       "%",
       0,
       12,
       {{"", ground}}},
      {"force-stall",
       "Stall buffet over airspeed",
       "kt",
       0,
       120,
       "% of its level",
       0,
       100,
       {{"1 g", [&](double v) { return 100 * StallBuffet(v, StallSpeedUnderLoad(stall, 1), s.stallMargin); }},
        {"2 g",
         [&](double v) { return 100 * StallBuffet(v, StallSpeedUnderLoad(stall, 2), s.stallMargin); }}}},
      {"force-overspeed",
       "Overspeed vibration; never-exceed speed 160 kt",
       "kt",
       140,
       180,
       "% of its level",
       0,
       100,
       {{"", [&](double v) { return 100 * OverspeedVibration(v, fastest); }}}},
      {"force-shaker",
       "Stick shaker, level 20 %: warning from 0.5 s to 1.5 s",
       "s",
       0,
       2,
       "%",
       0,
       40,
       {{"", shaker}}},
      {"force-gust-part",
       "What of a load that swings is taken for gusts",
       "Hz",
       0,
       8,
       "%",
       0,
       100,
       {{"", GustPart}}},
      {"force-gusts",
       "Turbulence on roll: loads that swing 3 times a second",
       "s",
       0,
       8,
       "%",
       -16,
       16,
       {{"by 0.6 g", gustsOf(0.6)}, {"by 0.2 g", gustsOf(0.2)}}},
      {"force-shock",
       "Wheel shock on pitch after a touch",
       "s",
       -0.1,
       0.7,
       "%",
       0,
       40,
       {{"2.5 g", shockOf(2.5)}, {"1.5 g", shockOf(1.5)}}},
      {"force-rumble",
       "Runway rumble over ground speed",
       "kt",
       0,
       80,
       "%, Hz",
       0,
       100,
       {{"strength, % of its level", [](double v) { return 100 * RunwayRumble(v); }},
        {"frequency, Hz", [&](double v) { return RumbleFrequency(v, s.bumps, 15); }}},
       0.5},
      {"force-servo",
       "Servo's force over the way to its place",
       "counts",
       -256,
       256,
       "%",
       -60,
       60,
       {{"", [&](double way) { return 100 * HandForce(servo, Axis::Pitch, -way); }}}},
      {"force-gate", "The gate: a cause from 0 s to 1 s", "s", -0.5, 3.5, "% open", 0, 100, {{"", GateAt}}},
  };
  for (const Plot& plot : plots) Picture{plot};
}

}  // namespace
}  // namespace tvx

// Draws them into the current folder.
int main() {
  tvx::DrawAll(tvx::ReadFfbSettings(tvx::ConfigModel{}).forces);
  return 0;
}
