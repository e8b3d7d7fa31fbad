// The files of an installation: damages them, and looks at what a life has left behind.
#pragma once

#include <set>
#include <string>

#include "config/Model.h"
#include "tools/monkey/Dice.h"

namespace tvx::monkey {

// Works in the current folder.
class Files {
 public:
  // A configuration, the start-up file, and a simulator's folder "X-Plane" with its lists; which of them, and
  // in what state, is the dice's matter. Whatever is written here counts as put there by the user.
  void Install(const Dice& dice, const ConfigModel& model);
  // Cuts, empties, garbles, removes or restores a file. In words.
  std::string Damage(const Dice& dice);
  // What is wrong with the files that are there now: a configuration or start-up file that the program wrote
  // and that cannot be read, or a rest of a saving. Empty where all is well.
  std::string Trouble() const;

 private:
  void Put(const std::string& name, const std::string& content);
  std::string TroubleOf(const std::string& name) const;

  std::string config_, start_;
  std::set<std::string> put_;  // contents that are none of the program's
};

}  // namespace tvx::monkey
