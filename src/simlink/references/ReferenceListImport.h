// Makes the two list files of the simulator's own DataRefs.txt and Commands.txt.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tvx {

// The names in a DataRefs.txt: on each line name, type, whether it can be written, unit and description,
// parted by tabs or blanks. Lines that do not begin with a path (the header) are left out, and so is a name
// that came before. An array's name gets "[0]", its first element, since only elements can be read and
// written.
std::vector<std::string> ParseXplaneReferences(std::string_view text);

// The names in a Commands.txt: on each line name, blanks, description. What is left out is the same.
std::vector<std::string> ParseXplaneCommands(std::string_view text);

// What an import did. Each count is that of the entries written, 0 where the list stayed as it was.
struct ImportResult {
  std::size_t references = 0;
  std::size_t commands = 0;
  std::string words;  // for the user: what was imported, and why something was not
  bool Complete() const { return references > 0 && commands > 0; }
};

// Looks for both files in `folder`, in its Resources/plugins and in its plugins, and writes the list files
// into the working folder. A list is replaced as a whole, and only by one that has entries.
ImportResult ImportXplaneLists(const std::string& folder);

}  // namespace tvx
