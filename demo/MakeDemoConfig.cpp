// Writes the demonstration cockpit's configurations and start-up file into the current folder.
#include <cstdio>

#include "config/ConfigFile.h"
#include "config/StartFile.h"
#include "demo/DemoConfig.h"
#include "platform/AtomicFile.h"

int main() {
  const tvx::ConfigModel model = tvx::demo::DemoConfig();
  for (const tvx::ConfigModel& each : {model, tvx::demo::YokesConfig()}) {
    std::string error;
    if (tvx::ReplaceFile(each.ConfigFileName, tvx::WriteConfigText(each), error)) continue;
    std::fprintf(stderr, "cannot write %s: %s\n", each.ConfigFileName.c_str(), error.c_str());
    return 1;
  }
  if (!tvx::WriteStartFile(model, model.ConfigFileName)) {
    std::fprintf(stderr, "cannot write the start-up file\n");
    return 1;
  }
  return 0;
}
