// The autopilot's buttons and the transponder's identification, as the stand-in simulator takes them. It only
// keeps the states: the scripted flight is flown by its script.
#include <algorithm>

#include "virtualcockpit/sim/Simulator.h"

namespace tvx::vc {
namespace {

constexpr std::string_view kMode = "sim/cockpit/autopilot/autopilot_mode";
constexpr std::string_view kServos = "sim/cockpit2/autopilot/servos_on";
constexpr std::string_view kHeadingMode = "sim/cockpit2/autopilot/heading_mode";
constexpr std::string_view kHeading = "sim/cockpit2/autopilot/heading_status";
constexpr std::string_view kNav = "sim/cockpit2/autopilot/nav_status";
constexpr std::string_view kApproach = "sim/cockpit2/autopilot/approach_status";
constexpr std::string_view kBackCourse = "sim/cockpit2/autopilot/backcourse_status";
constexpr std::string_view kAltitude = "sim/cockpit2/autopilot/altitude_hold_status";
constexpr std::string_view kAltitudeDial = "sim/cockpit2/autopilot/altitude_dial_ft";
constexpr std::string_view kSpeedDial = "sim/cockpit2/autopilot/vvi_dial_fpm";
constexpr std::string_view kIdent = "sim/cockpit2/radios/indicators/transponder_id";

// What a mode's state becomes when its button is pressed.
enum class Lateral { Heading, Nav, Approach, BackCourse };
constexpr std::string_view kLaterals[] = {kHeading, kNav, kApproach, kBackCourse};
constexpr double kHolds = 2;  // a mode that flies
constexpr double kHeadingModes[] = {1, 2, 2, 2};
constexpr double kServosFly = 2;  // of the autopilot's mode
constexpr double kSpeedStep = 100, kFastest = 6000;

class Autopilot {
 public:
  explicit Autopilot(DatarefStore& store) : store_(store) {}

  void ToggleServos() {
    const bool on = Get(kServos) == 0;
    Set(kServos, on ? 1 : 0);
    Set(kMode, on ? kServosFly : 0);
    if (on) return;
    for (const auto mode : kLaterals) Set(mode, 0);
    Set(kHeadingMode, 0);
    Set(kAltitude, 0);
  }
  // Of the lateral modes one at most holds; its own button ends it.
  void Toggle(Lateral lateral) {
    const auto which = static_cast<std::size_t>(lateral);
    const bool on = Get(kLaterals[which]) == 0;
    for (const auto mode : kLaterals) Set(mode, 0);
    if (on) Set(kLaterals[which], kHolds);
    Set(kHeadingMode, on ? kHeadingModes[which] : 0);
  }
  void ToggleAltitude() { Set(kAltitude, Get(kAltitude) == 0 ? kHolds : 0); }
  void TurnSpeed(double by) { Set(kSpeedDial, std::clamp(Get(kSpeedDial) + by, -kFastest, kFastest)); }
  void TurnAltitude(double by) { Set(kAltitudeDial, std::clamp(Get(kAltitudeDial) + by, 0.0, 50000.0)); }

 private:
  double Get(std::string_view name) { return store_.ValueOf(name).value_or(0); }
  void Set(std::string_view name, double value) { store_.Write(store_.Find(name), value); }
  DatarefStore& store_;
};

struct CommandRow {
  std::string_view name;
  void (*run)(Autopilot&);
};
constexpr CommandRow kCommands[] = {
    {"sim/autopilot/servos_toggle", [](Autopilot& a) { a.ToggleServos(); }},
    {"sim/autopilot/heading", [](Autopilot& a) { a.Toggle(Lateral::Heading); }},
    {"sim/autopilot/NAV", [](Autopilot& a) { a.Toggle(Lateral::Nav); }},
    {"sim/autopilot/approach", [](Autopilot& a) { a.Toggle(Lateral::Approach); }},
    {"sim/autopilot/back_course", [](Autopilot& a) { a.Toggle(Lateral::BackCourse); }},
    {"sim/autopilot/altitude_hold", [](Autopilot& a) { a.ToggleAltitude(); }},
    {"sim/autopilot/nose_up", [](Autopilot& a) { a.TurnSpeed(kSpeedStep); }},
    {"sim/autopilot/nose_down", [](Autopilot& a) { a.TurnSpeed(-kSpeedStep); }},
    {"sim/autopilot/altitude_up", [](Autopilot& a) { a.TurnAltitude(100); }},
    {"sim/autopilot/altitude_down", [](Autopilot& a) { a.TurnAltitude(-100); }},
};

}  // namespace

bool RunRadioCommand(std::string_view name, Simulator& simulator) {
  DatarefStore& store = simulator.Datarefs();
  if (name == "sim/transponder/transponder_ident") {
    simulator.CountIdent();
    return store.Write(store.Find(kIdent), 1);
  }
  const auto row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                [name](const CommandRow& r) { return r.name == name; });
  if (row == std::end(kCommands)) return false;
  Autopilot autopilot(store);
  row->run(autopilot);
  return true;
}

}  // namespace tvx::vc
