#include "ffb/forces/SafetyGate.h"

#include <algorithm>
#include <cmath>

#include "ffb/forces/ForceShaper.h"

namespace tvx {

std::string_view SafetyText(SafetyCause cause) {
  switch (cause) {
    case SafetyCause::None:
      return "";
    case SafetyCause::Off:
      return "OFF mode";
    case SafetyCause::Halted:
      return "Halted";
    case SafetyCause::NotCalibrated:
      return "Not calibrated: set centre and limits in its configuration";
    case SafetyCause::PortClosed:
      return "Its serial port is not open";
    case SafetyCause::YokeSilent:
      return "The yoke does not answer";
    case SafetyCause::StopButton:
      return "Its stop button is pressed, or its motors have no power";
    case SafetyCause::SimulatorSilent:
      return "The simulator is silent";
    case SafetyCause::ValuesOld:
      return "The simulator does not send often enough";
    case SafetyCause::Stalled:
      return "It was without commands for a moment";
    case SafetyCause::Changed:
      return "Its calibration or address was changed";
    case SafetyCause::NotANumber:
      return "The simulator sends values that are no numbers";
  }
  return "";
}

double SafetyGate::Next(SafetyCause cause, double seconds) {
  if (!(seconds > 0)) return opening_;
  if (cause == SafetyCause::None) {
    opening_ += std::min(seconds, kLongestCycle) * 1000 / kRiseMs;
  } else {
    opening_ -= seconds * 1000 / kFadeMs;
  }
  opening_ = std::clamp(opening_, 0.0, 1.0);
  return opening_;
}

}  // namespace tvx
