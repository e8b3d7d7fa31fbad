#include "simlink/references/ReferenceListImport.h"

#include <unordered_set>

#include "platform/AtomicFile.h"
#include "simlink/references/ReferenceList.h"

namespace tvx {
namespace {

constexpr const char* kPlaces[] = {"", "/Resources/plugins", "/plugins"};

// The next word of a line, which is taken off it.
std::string_view TakeWord(std::string_view& line) {
  constexpr std::string_view kBlanks = " \t";
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  const std::string_view word = line.substr(0, line.find_first_of(kBlanks));
  line.remove_prefix(word.size());
  return word;
}

// What `read` makes of each line, without what is no entry or has come before.
template <typename Read>
std::vector<std::string> EntriesOf(std::string_view text, Read read) {
  std::vector<std::string> entries;
  std::unordered_set<std::string> known;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    std::string entry = read(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (IsEntry(entry) && known.insert(entry).second) entries.push_back(std::move(entry));
  }
  return entries;
}

using Parser = std::vector<std::string> (*)(std::string_view);

// Imports one file. Gives the entries written; appends to `words` what happened.
std::size_t Import(const std::string& folder, const char* source, const ListFile& list, Parser parse,
                   const char* what, std::string& words) {
  std::string error, path;
  std::optional<std::string> text;
  for (const char* place : kPlaces) {
    path = folder + place + '/' + source;
    text = ReadWholeFile(path, error);
    if (text) break;
  }
  if (!words.empty()) words += "\r\n";
  if (!text) {
    words += std::string(source) + " was not found there.";
    return 0;
  }
  const std::vector<std::string> entries = parse(*text);
  if (entries.empty()) {
    words += '"' + path + "\" holds no " + what + '.';
    return 0;
  }
  if (!ReplaceFile(list.name, ListFileText(list.title, entries), error)) {
    words += std::string(list.name) + " cannot be written: " + error;
    return 0;
  }
  words += std::to_string(entries.size()) + ' ' + what + " were imported.";
  return entries.size();
}

}  // namespace

std::vector<std::string> ParseXplaneReferences(std::string_view text) {
  return EntriesOf(text, [](std::string_view line) {
    std::string name(TakeWord(line));
    const bool isArray = TakeWord(line).find('[') != std::string_view::npos;
    if (isArray && !name.ends_with(']')) name += "[0]";
    return name;
  });
}

std::vector<std::string> ParseXplaneCommands(std::string_view text) {
  return EntriesOf(text, [](std::string_view line) { return std::string(TakeWord(line)); });
}

ImportResult ImportXplaneLists(const std::string& folder) {
  ImportResult result;
  result.references = Import(folder, "DataRefs.txt", kReferencesFile, &ParseXplaneReferences,
                             "data references", result.words);
  result.commands =
      Import(folder, "Commands.txt", kCommandsFile, &ParseXplaneCommands, "commands", result.words);
  return result;
}

}  // namespace tvx
