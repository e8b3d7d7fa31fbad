// Changes the configuration with the aircraft, where the user wants that.
#pragma once

#include <optional>
#include <string>

#include "simlink/aircraft/AircraftList.h"

namespace tvx {

class AircraftSwitch {
 public:
  // The program around it.
  class Host {
   public:
    virtual ~Host() = default;
    // False while the configuration is edited, or is being loaded.
    virtual bool MayChangeConfiguration() const = 0;
    // Puts the configuration in use away, with what is not saved of it, and takes another one up: running
    // again where it ran. False where that one cannot be loaded; the former goes on then.
    virtual bool UseConfiguration(const std::string& file) = 0;
  };
  AircraftSwitch(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes, const Clock& clock, Host& host);
  ~AircraftSwitch() { sim_.SetOtherValues(nullptr); }
  AircraftSwitch(const AircraftSwitch&) = delete;
  AircraftSwitch& operator=(const AircraftSwitch&) = delete;

  // About once a second. Decides once for each aircraft: what the user chooses by hand stays until the next
  // one.
  void Tick();
  // Which configuration, and why; empty while it is off.
  const std::string& Words() const { return words_; }

  const std::optional<Aircraft>& Flown() const { return name_.Known(); }
  const AircraftList& List() const { return list_; }
  // Uses another list from now on, and writes it to its file; shows why where it cannot be written, and keeps
  // the former list then.
  bool SetList(AircraftList list);

 private:
  void Decide(const Aircraft& aircraft);

  const ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  Host& host_;
  AircraftName name_;
  AircraftList list_;
  std::optional<Aircraft> decided_;
  std::string words_;
};

// "C172 (trainer.acf)"
std::string AircraftWords(const Aircraft& aircraft);

}  // namespace tvx
