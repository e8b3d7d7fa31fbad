// The command line of the virtual cockpit.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tvx::vc {

struct Options {
  std::optional<std::string> config;
  std::optional<int> port;  // 0: any free one
  double speed = 1;
  bool print = false;
  std::optional<int> seconds;  // ends by itself after these
  std::optional<std::string> screenshot;
  std::string folder = ".";
  bool help = false;
};

// False with the reason in words for an unknown option, a missing value or one that is no sensible number.
bool ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& error);
std::string UsageText();

}  // namespace tvx::vc
