// The road of one value, station by station, as it stands now.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tvx {

struct Station {
  std::string Name;
  std::string Value;
  std::string Age;   // "0.3 s"; empty where it has none
  std::string Note;  // what is known of it, or why the value stops here
  bool Stops = false;
  bool operator==(const Station&) const = default;
};

struct Road {
  std::string Title;      // whose value it is
  std::string Diagnosis;  // one sentence: where the value stops first, or that all is well
  bool Trouble = false;
  std::vector<Station> Stations;
  // The road in short.
  std::string Value, Needle, LastAnswer;
};

}  // namespace tvx
