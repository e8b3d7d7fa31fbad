// Every knob and button of every instrument through both programs' real lines, and the simulator's changes
// back.

#include "drawn/devices/AltimeterDevice.h"
#include "drawn/devices/AudioDevice.h"
#include "drawn/devices/AutopilotDevice.h"
#include "drawn/devices/DiscDevices.h"
#include "drawn/devices/DmeDevice.h"
#include "drawn/devices/RadioDevice.h"
#include "drawn/devices/TransponderDevice.h"
#include "drawn/devices/TrimDevice.h"
#include "drawn/devices/VorDevice.h"
#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

// A flight in cruise, paused, that has settled.
struct Knobs : testing::Test {
  Knobs() {
    flight.Sim().RestartFlight(130);
    flight.Sim().SetPaused(true);
    flight.Run();
    EXPECT_TRUE(Eventually([this] { return flight.TheCockpit().Gauges().Polls() > 60; }));
  }
  template <typename Kind>
  Kind& At(int gaugeID) {
    return flight.Instrument<Kind>(gaugeID);
  }
  // The dataref comes to `value`, within `tolerance`.
  void ExpectDataref(const char* name, double value, double tolerance = 0.01) {
    EXPECT_TRUE(Eventually([&] { return std::fabs(flight.Dataref(name) - value) <= tolerance; },
                           std::chrono::seconds(15)))
        << name << " is " << flight.Dataref(name) << ", not " << value;
  }
  void ExpectShown(const char* what, const std::function<bool()>& condition) {
    EXPECT_TRUE(Eventually(condition, std::chrono::seconds(15))) << what;
  }

  Flight flight;
};

TEST_F(Knobs, RadiosSetTheSimulatorsFrequencies) {
  const auto raw10kHz = [](int raw) { return 10000.0 + raw / 10; };
  auto& com = At<vc::RadioDevice>(33);
  com.TurnCoarse(1);
  ExpectDataref("sim/cockpit/radios/com1_stdby_freq_hz", raw10kHz(com.Frequencies().standby));
  com.Swap();
  ExpectDataref("sim/cockpit/radios/com1_freq_hz", raw10kHz(com.Frequencies().active));
  auto& nav = At<vc::RadioDevice>(32);
  nav.TurnFine(2);
  nav.Swap();
  ExpectDataref("sim/cockpit/radios/nav1_freq_hz", raw10kHz(nav.Frequencies().active));
  auto& adf = At<vc::RadioDevice>(34);
  adf.TurnFine(3);
  ExpectDataref("sim/cockpit/radios/adf1_stdby_freq_hz", adf.Frequencies().standby / 10.0);
  auto& comNav = At<vc::ComNavDevice>(31);
  comNav.TurnCoarse(1, 2);
  ExpectDataref("sim/cockpit/radios/com2_stdby_freq_hz", raw10kHz(comNav.Radio(1).standby));
}

TEST_F(Knobs, RadiosShowWhatTheSimulatorSets) {
  flight.SetDataref("sim/cockpit/radios/com1_freq_hz", 12345);
  ExpectShown("COM1 active", [&] { return At<vc::RadioDevice>(33).Frequencies().active == 23450; });
  flight.SetDataref("sim/cockpit/radios/adf1_freq_hz", 432);
  ExpectShown("ADF active", [&] { return At<vc::RadioDevice>(34).Frequencies().active == 4320; });
  flight.SetDataref("sim/cockpit2/radios/actuators/transponder_code", 4321);
  for (const int id : {35, 36, 37})
    ExpectShown("transponder", [&] { return At<vc::TransponderDevice>(id).Code() == 4321; });
  ExpectDataref("sim/cockpit/radios/com1_freq_hz", 12345);
  ExpectDataref("sim/cockpit2/radios/actuators/transponder_code", 4321);
}

TEST_F(Knobs, TranspondersSetCodeModeAndIdentify) {
  auto& transponder = At<vc::TransponderDevice>(35);
  transponder.TurnDigit(3, 1);
  ExpectDataref("sim/cockpit2/radios/actuators/transponder_code", transponder.Code());
  ExpectShown("the others follow",
              [&] { return At<vc::TransponderDevice>(37).Code() == transponder.Code(); });
  auto& king = At<vc::TransponderDevice>(36);
  const auto before = king.Knob();
  king.TurnMode(before == vc::TransponderDevice::Mode::Altitude ? -1 : 1);
  ExpectDataref("sim/cockpit2/radios/actuators/transponder_mode", static_cast<int>(king.Knob()));
  king.Ident();
  ExpectShown("identification",
              [&] { return flight.Sim().LastCommand() == "sim/transponder/transponder_ident"; });
}

TEST_F(Knobs, CourseHeadingAndPressureKnobs) {
  auto& altimeter = At<vc::AltimeterDevice>(12);
  const double pressure = flight.Dataref("sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot");
  altimeter.TurnKnob(12);
  ExpectDataref("sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot", pressure + 0.12, 0.001);
  auto& vor1 = At<vc::VorDevice>(16);
  vor1.TurnKnob(25);
  ExpectDataref("sim/cockpit2/radios/actuators/nav1_obs_deg_mag_pilot", vor1.KnobDegrees(), 1);
  auto& vor2 = At<vc::VorDevice>(17);
  vor2.TurnKnob(-40);
  ExpectDataref("sim/cockpit2/radios/actuators/nav2_obs_deg_mag_pilot", vor2.KnobDegrees(), 1);
  auto& adf = At<vc::AdfDevice>(18);
  adf.TurnCard(33);
  ExpectDataref("sim/cockpit2/radios/actuators/adf1_card_heading_deg_mag_pilot", adf.KnobDegrees(), 1);
  auto& heading = At<vc::HeadingDevice>(14);
  heading.TurnBug(5);
  const double bug = heading.Bug() / 12.0;
  ExpectDataref("sim/cockpit2/autopilot/heading_dial_deg_mag_pilot", bug > 179 ? bug - 360 : bug, 1);
  flight.SetDataref("sim/cockpit2/autopilot/heading_dial_deg_mag_pilot", 90);
  ExpectShown("heading bug", [&] { return std::abs(heading.Bug() - 1080) <= 1; });
}

TEST_F(Knobs, AutopilotAudioDmeAndTrim) {
  auto& autopilot = At<vc::AutopilotDevice>(39);
  autopilot.Press(vc::AutopilotDevice::Button::Ap);
  ExpectShown("the autopilot engages", [&] { return autopilot.Lit(vc::AutopilotDevice::kEngaged); });
  autopilot.Press(vc::AutopilotDevice::Button::Alt);
  ExpectShown("altitude hold", [&] { return autopilot.Lit(vc::AutopilotDevice::kAltitude); });
  autopilot.TurnAltitude(7);
  ExpectDataref("sim/cockpit2/autopilot/altitude_dial_ft", autopilot.Altitude());
  autopilot.TurnVerticalSpeed(-4);
  ExpectDataref("sim/cockpit2/autopilot/vvi_dial_fpm", autopilot.VerticalSpeed());

  auto& audio = At<vc::AudioDevice>(30);
  audio.Toggle(vc::AudioDevice::Selector::Adf);
  ExpectDataref("sim/cockpit2/radios/actuators/audio_selection_adf1",
                audio.Selected(vc::AudioDevice::Selector::Adf) ? 1 : 0);

  auto& dme = At<vc::DmeDevice>(38);
  dme.TurnCoarse(1);
  ExpectDataref("sim/cockpit/radios/dme_freq_hz", 10000 + dme.Frequency() / 10.0, 0.2);

  auto& trim = At<vc::TrimDevice>(27);
  trim.TurnByHand(10);
  ExpectDataref("sim/cockpit2/controls/elevator_trim", trim.Position() / 5000.0 - 1.0, 0.002);
  flight.SetDataref("sim/cockpit2/controls/elevator_trim", -0.5);
  ExpectShown("the wheel follows", [&] { return std::abs(trim.Position() - 2500) <= 3; });
}

}  // namespace
}  // namespace tvx::e2e
