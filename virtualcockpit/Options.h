// The command line of the virtual cockpit.
#pragma once

#include <QStringList>
#include <optional>
#include <string>

#include "virtualcockpit/Traits.h"

namespace tvx::vc {

struct Options {
  std::optional<std::string> config;
  std::optional<int> port;  // 0: any free one
  double speed = 1;
  bool print = false;
  std::optional<int> seconds;  // after which it ends by itself
  std::optional<std::string> screenshot;
  std::string folder = ".";
  std::optional<std::string> replay;  // a trace that is played, without a simulator
  bool simulator = true;              // false: it stays off until it is switched on in the window
  // Parts of the windows that are left out.
  bool withoutInstruments = false, withoutUnits = false, withoutControls = false, withoutYokes = false;
  Traits traits = Traits::Default();
  bool help = false, version = false;
};

// `arguments` begin with the program's own name. False with the reason in words for an unknown option, a
// missing value or a number out of range; `help` and `version` are set all the same where they stand.
bool ParseOptions(const QStringList& arguments, Options& options, QString& error);
// All options with what they do. Needs an application object of any kind, but no display.
QString HelpText();

}  // namespace tvx::vc
