#include "trace/TraceFile.h"

#include <charconv>

namespace tvx {
namespace {

constexpr std::string_view kTitle = "Torvex trace 1\n";
constexpr std::string_view kConfiguration = "C ";
// By TraceSource: X-Plane, gauge bus, engine cluster, IO modules, yokes.
constexpr std::string_view kLetters = "XGE12AB";
constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::size_t kLargestPiece = 65536;

std::optional<std::vector<Byte>> BytesOf(std::string_view hex) {
  if (hex.size() % 2 != 0 || hex.size() > 2 * kLargestPiece) return std::nullopt;
  std::vector<Byte> bytes(hex.size() / 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::size_t high = kDigits.find(hex[2 * i]), low = kDigits.find(hex[2 * i + 1]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    bytes[i] = static_cast<Byte>(high * 16 + low);
  }
  return bytes;
}

// "1200 G> 000C58F503FF"
std::optional<TraceEntry> EntryOf(std::string_view line) {
  TraceEntry entry;
  const char* const end = line.data() + line.size();
  const auto [after, error] = std::from_chars(line.data(), end, entry.ms);
  if (error != std::errc() || entry.ms < 0) return std::nullopt;
  line.remove_prefix(static_cast<std::size_t>(after - line.data()));
  if (line.size() < 4 || line[0] != ' ' || line[3] != ' ') return std::nullopt;
  const std::size_t source = kLetters.find(line[1]);
  if (source == std::string_view::npos || (line[2] != '>' && line[2] != '<')) return std::nullopt;
  entry.source = static_cast<TraceSource>(source);
  entry.fromProgram = line[2] == '>';
  auto bytes = BytesOf(line.substr(4));
  if (!bytes) return std::nullopt;
  entry.bytes = std::move(*bytes);
  return entry;
}

}  // namespace

std::string TraceHead(std::string_view configuration) {
  std::string text(kTitle);
  while (!configuration.empty()) {
    const std::size_t end = configuration.find('\n');
    std::string_view line = configuration.substr(0, end);
    configuration.remove_prefix(end == std::string_view::npos ? configuration.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    text.append(kConfiguration).append(line).push_back('\n');
  }
  return text;
}

void AppendTraceLine(std::string& text, std::int64_t ms, TraceSource source, bool fromProgram,
                     ByteView bytes) {
  text += std::to_string(ms) + ' ' + kLetters[static_cast<std::size_t>(source)] + (fromProgram ? "> " : "< ");
  for (const Byte byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0x0F];
  }
  text += '\n';
}

std::optional<Trace> ReadTrace(std::string_view text, std::string& why) {
  if (!text.starts_with(kTitle)) {
    why = "The file is no trace";
    return std::nullopt;
  }
  Trace trace;
  std::size_t number = 1;
  text.remove_prefix(kTitle.size());
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    ++number;
    if (line.starts_with(kConfiguration)) {
      trace.configuration.append(line.substr(kConfiguration.size())).append("\r\n");
      continue;
    }
    auto entry = EntryOf(line);
    if (!entry || (!trace.entries.empty() && entry->ms < trace.entries.back().ms)) {
      why = "Line " + std::to_string(number) + " of the trace is damaged";
      return std::nullopt;
    }
    trace.entries.push_back(std::move(*entry));
  }
  return trace;
}

}  // namespace tvx
