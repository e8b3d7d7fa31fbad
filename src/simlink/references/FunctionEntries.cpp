#include "simlink/references/FunctionEntries.h"

#include <algorithm>
#include <bitset>
#include <charconv>

#include "config/Records.h"
#include "simlink/references/ReferenceList.h"

namespace tvx {
namespace {

constexpr int kDatarefLines = 4;
constexpr int kCommandLines = 9;  // a port's value chooses among them, and is held at 9

// The next line of a text, which is taken off it.
std::string_view TakeLine(std::string_view& lines) {
  const std::size_t end = std::min(lines.find('\n'), lines.size());
  std::string_view line = lines.substr(0, end);
  lines.remove_prefix(std::min(end + 1, lines.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The number of a line "#n:..."; 0 for any other line.
int NumberOf(std::string_view line) {
  int number = 0;
  if (line.empty() || line.front() != '#') return 0;
  const auto [end, error] = std::from_chars(line.data() + 1, line.data() + line.size(), number);
  const bool whole = error == std::errc() && end != line.data() + line.size() && *end == ':';
  return whole && number < 10000 ? std::max(number, 0) : 0;
}

}  // namespace

int EntryLimit(Byte dataType) {
  switch (static_cast<DataType>(dataType)) {
    case DataType::XplaneDataref:
      return kDatarefLines;
    case DataType::XplaneCmnd:
      return kCommandLines;
    default:
      return 0;
  }
}

int NextEntryNumber(std::string_view lines) {
  int highest = 0;
  while (!lines.empty()) highest = std::max(highest, NumberOf(TakeLine(lines)));
  return highest + 1;
}

std::string EntryProblem(std::string_view lines, int limit) {
  std::bitset<10> taken;
  while (!lines.empty()) {
    const std::string_view line = TakeLine(lines);
    if (!line.starts_with('#')) continue;
    const int number = NumberOf(line);
    const std::string start = '#' + std::to_string(number) + ':';
    if (number == 0 || !line.starts_with(start)) {
      return "A line that begins with # goes on with a number and a colon, as in #1:";
    }
    if (number > limit) return start + " is never used: this data type holds " + std::to_string(limit) + '.';
    if (!IsEntry(line.substr(start.size())))
      return start + " is followed by no path, such as sim/time/paused";
    if (taken[static_cast<std::size_t>(number)])
      return start + " stands there twice; only the first is used.";
    taken.set(static_cast<std::size_t>(number));
  }
  return {};
}

std::vector<std::string_view> EntryPaths(std::string_view lines) {
  std::vector<std::string_view> paths;
  while (!lines.empty()) {
    const std::string_view line = TakeLine(lines);
    if (NumberOf(line) > 0) paths.push_back(line.substr(line.find(':') + 1));
  }
  return paths;
}

bool AppendEntry(std::string& lines, std::string_view path) {
  if (!IsEntry(path)) return false;
  const int number = NextEntryNumber(lines);
  if (!lines.empty() && lines.back() != '\n') lines += "\r\n";
  lines += '#' + std::to_string(number) + ':' + std::string(path) + "\r\n";
  return true;
}

bool IsElement(std::string_view path) {
  const std::size_t open = path.rfind('[');
  if (open == std::string_view::npos || !path.ends_with(']')) return false;
  const std::string_view digits = path.substr(open + 1, path.size() - open - 2);
  return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string WithElement(std::string_view path, int element) {
  if (!IsElement(path)) return std::string(path);
  return std::string(path.substr(0, path.rfind('['))) + '[' + std::to_string(element) + ']';
}

}  // namespace tvx
