// Simulator values that do not fit one port: time of day, radio frequencies, the audio selector, the
// autopilot's status, the RMI's needles.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/Host.h"
#include "simlink/SimCom.h"

namespace tvx {

// A dial's needle has 4320 steps to a full turn; 5000 parks it.
inline constexpr int kDialSteps = 4320;
inline constexpr std::int16_t kParkedNeedle = 5000;

// Everything here traps its own errors; only GetPortAP reports one.
class SpecialValues {
 public:
  SpecialValues(SimCom& sim, MessageBoxes& boxes, const Clock& clock)
      : sim_(sim), boxes_(boxes), clock_(clock) {}

  // Takes the simulator's times (DATA group 1) and the computer's date into the fields below. The times are
  // folded: a time of day above 65535 s becomes 65535 minus it, a negative number that still fits a gauge
  // command.
  void GetTimeAndDate();
  // Where GetTimeAndDate takes a value from instead, once it has arrived there: hours of the day, degrees C.
  // The clocks say so where the Functions of their values are datarefs; kNoPort goes back to the data groups.
  void UseTimePorts(Port utc, Port local) { utcPort_ = utc, localPort_ = local; }
  void UseTemperaturePort(Port port) { temperaturePort_ = port; }
  // Takes the time that a clock was set to by hand. X-Plane keeps its own time, so no packet is sent.
  struct DateAndTime {
    std::int16_t Year = 0, Month = 0, Day = 0, Hour = 0, Minute = 0, Second = 0;
  };
  void PutTimeAndDate(const DateAndTime& set) { ClockSetTo = set; }
  DateAndTime ClockSetTo;
  std::int32_t LocalSeconds = 0;
  Byte LocalHour = 0;
  std::int32_t ZuluSeconds = 0;
  // Whether the UTC time has moved by more than 10 s between two reads since this was cleared.
  bool TimeJumped() const { return timeJumped_; }
  void ClearTimeJumped() { timeJumped_ = false; }
  std::int16_t DateMonth = 0, DateDay = 0, DateYear = 0;  // the year less 2000, of the computer's calendar
  float OutsideTemperature = 0;                           // degrees C, DATA group 6

  // A frequency in 10 kHz. ODDITY: both send to the same value of the same group, as the radios have always
  // done.
  void PutNAV1Frequency(float value) { PutNAVFrequency(value); }
  void PutNAV2Frequency(float value) { PutNAVFrequency(value); }

  // Writes the seven audio datarefs from AudioPanelBits and remembers the bits.
  void SetSoundSelector();
  std::int16_t AudioPanelBits = 0;
  std::int16_t PreviousAudioPanelBits = 0;

  // `digits`: five characters, a frequency in tenths of a kHz ("03505" is 350.5 kHz); fewer are ignored.
  void PutADF(std::string_view digits, bool standby);

  // The autopilot's ports by their distance from its first one; kNoPort where its Function is not defined.
  // Filled when the panel's ports are opened.
  static constexpr int kAutopilotPorts = 21;
  // Whether the autopilot's state is read from this port of the table.
  static bool ReadsAutopilotPort(std::size_t offset);
  using AutopilotPortTable = std::array<Port, kAutopilotPorts>;
  void SetAutopilotPorts(const AutopilotPortTable& ports) { autopilotPorts_ = ports; }
  // Composes APStatusBits and takes the values below.
  void GetAPvaluesFX();
  std::int16_t APStatusBits = 0;
  float APValue16 = 0, APValue18 = 0;  // altitude preselect, ft; vertical speed, ft/min
  std::int16_t APTrim = 0;             // -16000..16000
  // Reads the autopilot's port n, 0..20, and files its value: that of port 0 sets APEngaged, others go into
  // APVariable[n]. A port that was not opened is reported in a message.
  void GetPortAP(int n);
  float APEngaged = 0;  // 1.0 while port 0 reads 2, otherwise 0
  std::array<float, kAutopilotPorts> APVariable{};

  // Turns the four angles into needle positions. A needle without a valid angle is parked. Needles 2 and 4
  // follow 1 and 3, unless RmiHasSecond and RmiHasFourth say that they have angles of their own.
  void getRMIData();
  float RmiBearing1 = 0, RmiBearing2 = 0;     // degrees
  std::int16_t RmiAngle3 = 0, RmiAngle4 = 0;  // 1/65536 of a turn
  std::int16_t RmiValid = 0;                  // which angles are valid, the bits below
  static constexpr int kRmiBearing1Valid = 0x02, kRmiBearing2Valid = 0x04, kRmiAngle3Valid = 0x08,
                       kRmiAngle4Valid = 0x800;
  bool RmiHasSecond = false, RmiHasFourth = false;
  std::int16_t RmiPos1 = 0, RmiPos2 = 0, RmiPos3 = 0, RmiPos4 = 0;  // 0..4319 steps, 5000 parked

 private:
  void PutNAVFrequency(float value);
  float AutopilotValue(int offset) const;
  float ArrivedOrGroup(Port port, int group, int number) const;

  SimCom& sim_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  std::int32_t previousZulu_ = 0;
  Port utcPort_ = kNoPort, localPort_ = kNoPort, temperaturePort_ = kNoPort;
  bool timeJumped_ = false;
  AutopilotPortTable autopilotPorts_ = NoPorts();

  static AutopilotPortTable NoPorts() {
    AutopilotPortTable ports;
    ports.fill(kNoPort);
    return ports;
  }
};

}  // namespace tvx
