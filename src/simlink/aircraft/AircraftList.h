// The user's list of aircraft and the configuration that each one wants: the file "Aircraft.cfn" in the
// working folder. Its first line is a title, its second says "on" or "off"; then "C172 -> Cessna.cfg", a line
// for each.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simlink/aircraft/AircraftName.h"

namespace tvx {

inline constexpr std::string_view kAircraftListName = "Aircraft.cfn";

struct AircraftLine {
  std::string
      Pattern;       // of the ICAO type or the file's name: * for any letters, ? for one; case does not count
  std::string File;  // the configuration
  bool operator==(const AircraftLine&) const = default;
};

struct AircraftList {
  static constexpr std::size_t kMostLines = 500;

  bool On = false;
  std::vector<AircraftLine> Lines;  // the first that fits counts
  std::vector<std::string> Unread;  // lines of the file that are none; kept behind the others

  const AircraftLine* Find(const Aircraft& aircraft) const;  // null where none fits
  bool operator==(const AircraftList&) const = default;
};

// Whether a whole text fits a pattern; an empty pattern fits nothing.
bool FitsPattern(std::string_view pattern, std::string_view text);

std::string WriteAircraftList(const AircraftList& list);
// Any text: what cannot be read is in Unread. Off where the title is missing.
AircraftList ReadAircraftList(std::string_view text);

}  // namespace tvx
