// A trace as a file: what went between the program, the simulator and the lines, with times, and the
// configuration that was in use. Plain text, a line for each piece.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Bytes.h"

namespace tvx {

enum class TraceSource : Byte { Simulator, GaugeBus, EngineCluster, IOModule1, IOModule2, Yoke1, Yoke2 };
inline constexpr int kTraceSources = 7;

struct TraceEntry {
  std::int64_t ms = 0;  // since the trace begins; never less than that of the entry before
  TraceSource source = TraceSource::Simulator;
  bool fromProgram = false;
  std::vector<Byte> bytes;
  bool operator==(const TraceEntry&) const = default;
};

struct Trace {
  std::string configuration;  // the text of its file
  std::vector<TraceEntry> entries;
};

// The file's text up to the entries; the configuration's lines end with CR LF.
std::string TraceHead(std::string_view configuration);
// Adds one entry.
void AppendTraceLine(std::string& text, std::int64_t ms, TraceSource source, bool fromProgram,
                     ByteView bytes);
// std::nullopt for what is no trace; `why` says in words, with the line. A file that ends in the middle of a
// line gives what stands before that line.
std::optional<Trace> ReadTrace(std::string_view text, std::string& why);

}  // namespace tvx
