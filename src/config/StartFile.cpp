#include "config/StartFile.h"

#include <cstdint>

#include "config/RecordReader.h"
#include "config/ValueText.h"
#include "platform/AtomicFile.h"

namespace tvx {
namespace {

constexpr std::string_view kDefaultConfig = "Default.cfg";
constexpr std::int16_t kDefaultDelay = 10;  // s
constexpr std::size_t kLongest = 64u << 10;

}  // namespace

std::string ReadStartFile(ConfigModel& model) {
  std::string error;
  if (const auto text = ReadWholeFile(std::string(kStartFileName), error, kLongest)) {
    try {
      RecordReader in(*text);
      std::string path;
      std::int16_t delay = 0;
      in.ExpectKeyword("General");
      in.Single("path", path);
      in.ExpectKeyword("Startdelay");
      in.Single("delay", delay);
      in.ExpectKeyword("End");
      model.StartDelay = delay;
      return path;
    } catch (const ConfigReadError&) {
      // Whatever is wrong with the file, the defaults below are used.
    }
  }
  model.StartDelay = kDefaultDelay;
  return std::string(kDefaultConfig);
}

bool WriteStartFile(const ConfigModel& model, std::string_view configPath) {
  // A path that the file cannot hold would name another file when it is read.
  if (configPath.find_first_of(std::string_view("\"\0", 2)) != std::string_view::npos) return false;
  std::string text = "\"General\"\r\n";
  AppendValue(text, configPath);
  text += "\r\n\"Startdelay\"\r\n";
  AppendValue(text, model.StartDelay);
  text += "\r\n\"End\"\r\n";
  std::string error;
  return ReplaceFile(std::string(kStartFileName), text, error);
}

}  // namespace tvx
