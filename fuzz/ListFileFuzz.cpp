// List files, the simulator's own lists, and datagrams in the test console's log, made of anything at all.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "simlink/console/DatagramLog.h"
#include "simlink/datagrams/Packets.h"
#include "simlink/references/FunctionEntries.h"
#include "simlink/references/ReferenceList.h"
#include "simlink/references/ReferenceListImport.h"

namespace {

using namespace tvx;

void Require(bool holds) {
  if (!holds) std::abort();
}

// An entry that can be copied is found again by its number, and by the list file that it is written to.
void CheckEntry(const std::string& entry, std::string lines) {
  const int number = NextEntryNumber(lines);
  if (!AppendEntry(lines, entry)) return;
  Require(NextEntryNumber(lines) == number + 1);
  Require(EntryPaths(lines).back() == entry);
  if (number == 1) Require(EntryProblem(lines.substr(lines.rfind("#1:")), 1).empty());
  const auto list = ParseListFile(ListFileText("T", {entry}), "T");
  Require(list && list->entries == std::vector<std::string>{entry});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (const auto content = ParseListFile(text, kReferencesFile.title)) {
    Require(content->entries.size() <= content->promised);
    for (const std::string& entry : content->entries) CheckEntry(entry, {});
  }
  for (const auto& parse : {&ParseXplaneReferences, &ParseXplaneCommands}) {
    for (const std::string& entry : parse(text)) {
      Require(IsEntry(entry));
      CheckEntry(entry, text.substr(0, 64));
    }
  }
  EntryProblem(text, 4);
  const std::vector<std::string> lines = DescribeDatagram({"", 0, {data, data + size}}, size % 2 == 1);
  Require(lines.size() <= 900);
  for (const std::string& line : lines) {
    for (const char c : line) Require(c >= ' ' && c <= '~');
  }
  HexDump({data, size});
  return 0;
}
