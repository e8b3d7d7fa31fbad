// The diagnostic dump: the run's state and the whole configuration as one text file.
#pragma once

#include <string>
#include <string_view>

#include "config/Model.h"
#include "simlink/SimCom.h"

namespace tvx {

inline constexpr std::string_view kDumpFileName = "TVXDumpFile.txt";

// What the dump tells beside the model and the ports.
struct DumpCause {
  std::string Module;     // who or what caused it
  std::int16_t Code = 0;  // follows the module's text directly
  std::string Value;      // a number or a text
  bool Activated = false, Running = false;
};

// The dump's text: quoted records, each ended by CR LF, then the configuration as its writer writes it.
std::string DumpText(const DumpCause& cause, const ConfigModel& model, const SimCom& sim);

}  // namespace tvx
