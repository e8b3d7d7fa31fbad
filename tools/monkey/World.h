// What stands around the program in a life: the virtual cockpit's simulator and hardware, on real sockets and
// pseudo-terminals, and the files. The dice let things happen to them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/SerialDevices.h"
#include "tools/monkey/Dice.h"
#include "tools/monkey/Files.h"
#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/yokes/YokeLine.h"

namespace tvx::monkey {

// Works in the current folder. No line of this computer, and no other computer, is ever reached from there:
// every COM number that the virtual hardware does not have leads nowhere.
class World {
 public:
  explicit World(const Dice& dice);
  ~World();

  // Something happens: a line is pulled or plugged in again, the simulator goes or comes, hardware fails or
  // is used, a stranger sends, a file is damaged. In words.
  std::string Happen(const Dice& dice);
  // The adapters that are plugged in.
  SerialDevices& Adapters() { return *adapters_; }
  const Files& TheFiles() const { return files_; }

 private:
  struct Plug {
    std::string name;
    vc::HardwareLine* line;
    int comNumber;
  };
  class PluggedIn;

  std::string TurnLine(const Plug& plug);
  std::string TurnAllLines(bool in);
  std::string TurnSimulator(const Dice& dice);
  std::string Fail(const Dice& dice);
  std::string UseModule(const Dice& dice);
  std::string UseYoke(const Dice& dice);
  std::string SendRubbish(const Dice& dice);
  void LeadNowhere(int comNumber) const;

  ConfigModel model_;
  Files files_;
  std::unique_ptr<vc::Cockpit> cockpit_;
  std::vector<std::unique_ptr<vc::YokeLine>> yokes_;
  std::vector<Plug> plugs_;
  std::unique_ptr<SerialDevices> adapters_;
};

}  // namespace tvx::monkey
