// The two lists of the simulator's names: their files, and the lines that a form shows of one.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvx {

// "No Filter", and the beginnings of paths that the list can be filtered by.
inline constexpr std::array<std::string_view, 15> kReferenceFilters{
    "No Filter",     "sim/aircraft", "sim/airfoils",    "sim/cockpit", "sim/flightmodel",
    "sim/graphics",  "sim/joystick", "sim/multiplayer", "sim/network", "sim/physics",
    "sim/operation", "sim/time",     "sim/version",     "sim/weapons", "sim/world"};

// One of the two list files in the working folder.
struct ListFile {
  const char* name;
  std::string_view title;    // the file's first field
  std::string_view caption;  // over the list
  std::string_view missing;  // the only line of a list whose file is not there or is another
};
inline constexpr ListFile kCommandsFile{
    "Xplane_commands.txt", "List of Xplane Commands", "List of X-Plane Commands",
    "=============== File with X-Plane commands (Xplane_commands.txt) not found or Incorrect "
    "==============="};
inline constexpr ListFile kReferencesFile{
    "Xplane_References.txt", "List of Xplane References", "List of X-Plane Data References",
    "=============== File with X-Plane Data References(Xplane_References.txt) not found or Incorrect "
    "==============="};
// The test console's own line for a missing reference file.
inline constexpr std::string_view kConsoleReferencesMissing =
    "=============== File with X-Plane References(Xplane_References.txt) not found or Incorrect "
    "===============";
// The only line of a list in which a search leaves no entry.
inline constexpr std::string_view kSearchFoundNothing = "===== Not Found =====";

// What a list file holds. Fewer entries than `promised` where the file ends early.
struct ListContent {
  std::vector<std::string> entries;
  std::size_t promised = 0;
};

// Reads fields separated by commas or line ends: the title, the count, the entries. A field may stand between
// double quotes; an empty line is no field. What follows the last entry is ignored. std::nullopt when the
// first field is not `title`, or the second is no count.
std::optional<ListContent> ParseListFile(std::string_view text, std::string_view title);

// The text of a list file: title and count on its first line, then one entry a line, in quotes.
std::string ListFileText(std::string_view title, const std::vector<std::string>& entries);

// Whether a text can be the path of a command or data reference: 3 to 400 visible ASCII characters with a
// slash among them, the first a letter or digit, and none of them a quote, comma or number sign.
bool IsEntry(std::string_view text);

// A list as a form shows it: every entry, or those that a filter and a search leave.
class ReferenceList {
 public:
  // Reads the file from the working folder; `missing` is the line shown where that fails. Filter and search
  // stay.
  void Load(const ListFile& file, std::string_view missing);
  void Load(const ListFile& file) { Load(file, file.missing); }

  // Leaves the entries that begin with `prefix` and hold every word of `search`, large and small letters
  // being the same in the search. Empty texts leave everything.
  void Filter(std::string_view prefix, std::string_view search);

  // The lines to show, at least one: entries with their number in four digits, from 0000, or a message.
  std::size_t Lines() const { return Message().empty() ? shown_.size() : 1; }
  std::string Line(std::size_t line) const;
  // The path that stands in a line; std::nullopt for a message, or a line that is not there.
  std::optional<std::string_view> PathAt(std::size_t line) const;

  bool Found() const { return found_; }
  // Whether the file holds a path, shown or not.
  bool Holds(std::string_view path) const;
  std::size_t Entries() const { return content_.entries.size(); }
  // How many entries the file promised and does not hold.
  std::size_t Short() const { return content_.promised - content_.entries.size(); }

 private:
  std::string_view Message() const;

  ListContent content_;
  std::vector<std::string> small_;  // the entries in small letters, to search in
  std::vector<std::size_t> shown_;
  std::string missing_, prefix_, search_;
  bool found_ = false;
};

}  // namespace tvx
