// The configuration reader against arbitrary text; what it took in must survive being written and read again.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "config/ConfigFile.h"
#include "tests/fakes/FakeHost.h"

namespace {

// The text up to the values of yoke 2 that are read one line aside of where they are written.
std::string_view Stable(std::string_view text) {
  std::size_t tailLines = 1 + 4 + 24 + 1;  // with the closing "end"
  std::size_t at = text.size();
  while (tailLines-- > 0) at = text.rfind('\n', at - 2) + 1;
  return text.substr(0, at);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  tvx::FakeMessageBoxes boxes;
  boxes.otherwise = size % 8 == 0 ? tvx::kAnswerNo : tvx::kAnswerYes;
  tvx::ConfigModel first;
  std::string error;
  if (tvx::ReadConfigText(text, first, boxes, error) != tvx::ConfigReadResult::Loaded) return 0;

  // The file written of it, read over itself, changes nothing. Without Plates, or with a value of yoke 2 that
  // does not fit where it is read, reading ends early: what was read stays.
  const std::string written = tvx::WriteConfigText(first);
  tvx::ConfigModel second = first;
  boxes.otherwise = tvx::kAnswerYes;
  tvx::ReadConfigText(written, second, boxes, error);
  const std::string again = tvx::WriteConfigText(second);
  if (Stable(written) != Stable(again)) std::abort();
  return 0;
}
