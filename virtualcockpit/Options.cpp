#include "virtualcockpit/Options.h"

#include <charconv>

namespace tvx::vc {
namespace {

template <typename Number>
bool ReadNumber(const std::string& text, Number least, Number most, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number >= least && number <= most;
}

}  // namespace

std::string UsageText() {
  return "virtual-cockpit [--config FILE] [--port N] [--speed X] [--print] [--seconds N]\n"
         "                [--screenshot FILE] [--folder DIR]\n"
         "\n"
         "  --config FILE      the configuration whose cockpit is shown (else the start-up file's)\n"
         "  --port N           where the simulator listens, 0 for any free port (else the configuration's)\n"
         "  --speed X          speed of the flight, 0.1 to 50\n"
         "  --print            prints once a second what simulator and instruments show\n"
         "  --seconds N        ends by itself after N seconds\n"
         "  --screenshot FILE  keeps a picture of the window, taken shortly before the end\n"
         "  --folder DIR       the working folder, where comports/ is\n";
}

bool ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& error) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (name == "--print") {
      options.print = true;
      continue;
    }
    if (name == "--help" || name == "-h") {
      options.help = true;
      continue;
    }
    const bool known = name == "--config" || name == "--port" || name == "--speed" || name == "--seconds" ||
                       name == "--screenshot" || name == "--folder";
    if (!known || i + 1 >= arguments.size()) {
      error = known ? name + " needs a value" : "unknown option " + name;
      return false;
    }
    const std::string& value = arguments[++i];
    bool good = !value.empty();
    int number = 0;
    if (name == "--config") options.config = value;
    if (name == "--screenshot") options.screenshot = value;
    if (name == "--folder") options.folder = value;
    if (name == "--port" && (good = ReadNumber(value, 0, 65535, number))) options.port = number;
    if (name == "--seconds" && (good = ReadNumber(value, 1, 1000000, number))) options.seconds = number;
    if (name == "--speed") good = ReadNumber(value, 0.1, 50.0, options.speed);
    if (!good) {
      error = name + ": \"" + value + "\" is not possible";
      return false;
    }
  }
  return true;
}

}  // namespace tvx::vc
