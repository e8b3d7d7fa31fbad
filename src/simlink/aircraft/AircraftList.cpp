#include "simlink/aircraft/AircraftList.h"

#include <algorithm>
#include <cctype>

namespace tvx {
namespace {

constexpr std::string_view kTitle = "Aircraft and their configurations";
constexpr std::string_view kArrow = " -> ";

char Small(char c) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlank = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

}  // namespace

// A star tries the shortest stretch first, and one letter more each time that the rest does not fit.
bool FitsPattern(std::string_view pattern, std::string_view text) {
  if (pattern.empty()) return false;
  std::size_t p = 0, t = 0, star = std::string_view::npos, held = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      held = t;
    } else if (p < pattern.size() && (pattern[p] == '?' || Small(pattern[p]) == Small(text[t]))) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      t = ++held;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

const AircraftLine* AircraftList::Find(const Aircraft& aircraft) const {
  const auto fits = [&](const AircraftLine& line) {
    return FitsPattern(line.Pattern, aircraft.Icao) || FitsPattern(line.Pattern, aircraft.File);
  };
  const auto found = std::find_if(Lines.begin(), Lines.end(), fits);
  return found == Lines.end() ? nullptr : &*found;
}

std::string WriteAircraftList(const AircraftList& list) {
  std::string text = std::string(kTitle) + "\n" + (list.On ? "on" : "off") + "\n";
  for (const AircraftLine& line : list.Lines) text += line.Pattern + std::string(kArrow) + line.File + "\n";
  for (const std::string& line : list.Unread) text += line + "\n";
  return text;
}

AircraftList ReadAircraftList(std::string_view text) {
  AircraftList list;
  bool titled = false, switched = false;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty()) continue;
    if (!titled && line == kTitle) {
      titled = true;
    } else if (titled && !switched && (line == "on" || line == "off")) {
      switched = true;
      list.On = line == "on";
    } else if (const std::size_t arrow = line.rfind(kArrow);
               arrow != std::string_view::npos && list.Lines.size() < AircraftList::kMostLines) {
      list.Lines.push_back({std::string(Trimmed(line.substr(0, arrow))),
                            std::string(Trimmed(line.substr(arrow + kArrow.size())))});
    } else {
      list.Unread.emplace_back(line);
    }
  }
  return list;
}

}  // namespace tvx
