// The hardware as the set-up guide reaches it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "config/plates/PlatePresenter.h"
#include "platform/SerialDevices.h"

namespace tvx {

class GuideHardware {
 public:
  virtual ~GuideHardware() = default;

  // --- adapters ---
  // Those plugged in that may be opened, that nobody has, and that lead to no hardware group yet.
  virtual std::vector<SerialDevice> FreeAdapters() = 0;
  // Asks what hangs on it; that takes up to some seconds.
  virtual void AskRole(const SerialDevice& adapter) = 0;
  virtual bool AskingRole() = 0;
  virtual void StopAskingRole() = 0;
  // Gives the adapter that was asked to the group that it is for. What it found and did, for the user.
  virtual std::string TakeRole(const SerialDevice& adapter) = 0;

  // --- gauges ---
  // False, with a message, where the gauge bus is not open.
  virtual bool SearchGauges() = 0;
  virtual void StopSearch() = 0;
  virtual bool SearchingGauges() = 0;
  virtual int SearchedAddresses() = 0;         // of 256
  virtual std::string GaugesFoundWords() = 0;  // and what the user should know, on lines of their own
  // Sends a command to a gauge. False where another one still waits, and where the line is not open.
  virtual bool Command(int gaugeID, int command, std::int32_t value) = 0;
  // Moves a needle to a position 0..1079; never waits, the last position always arrives.
  virtual void MoveNeedle(const CalibrationTarget& needle, int position) = 0;
};

}  // namespace tvx
