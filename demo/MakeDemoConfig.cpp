// Writes the demonstration cockpit's configuration and start-up file into the current folder.
#include <cstdio>

#include "config/ConfigFile.h"
#include "config/StartFile.h"
#include "demo/DemoConfig.h"
#include "platform/AtomicFile.h"

int main() {
  const tvx::ConfigModel model = tvx::demo::DemoConfig();
  std::string error;
  if (!tvx::ReplaceFile(model.ConfigFileName, tvx::WriteConfigText(model), error)) {
    std::fprintf(stderr, "cannot write %s\n", error.c_str());
    return 1;
  }
  if (!tvx::WriteStartFile(model, model.ConfigFileName)) {
    std::fprintf(stderr, "cannot write the start-up file\n");
    return 1;
  }
  return 0;
}
