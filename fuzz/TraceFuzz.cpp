// A trace that somebody sent: whatever is in it, it is read or refused, and read again it is the same. What
// it holds also goes through a small ring, which keeps the newest of it, whole and in order.
#include <cstdlib>

#include "trace/TraceFile.h"
#include "trace/TraceRing.h"

namespace {

using namespace tvx;

void Check(bool holds) {
  if (!holds) std::abort();
}

void PassThroughRing(const Trace& trace) {
  constexpr std::size_t kSmall = 512;
  TraceRing ring(kSmall);
  std::int64_t ms = 0;
  for (const TraceEntry& entry : trace.entries) ring.Note(entry.source, entry.fromProgram, entry.bytes, ++ms);
  std::string why;
  const auto kept = ReadTrace(ring.FileText(trace.configuration, ms), why);
  Check(kept.has_value() && kept->entries.size() == ring.Pieces());
  // Pieces that the ring has no room for are left out; so what is kept is found from behind.
  auto from = trace.entries.rbegin();
  for (auto piece = kept->entries.rbegin(); piece != kept->entries.rend(); ++piece, ++from) {
    while (from != trace.entries.rend() && from->bytes != piece->bytes) ++from;
    Check(from != trace.entries.rend() && from->source == piece->source &&
          from->fromProgram == piece->fromProgram);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string why;
  const auto trace = ReadTrace({reinterpret_cast<const char*>(data), size}, why);
  if (!trace) {
    Check(!why.empty());
    return 0;
  }
  std::string text = TraceHead(trace->configuration);
  for (const TraceEntry& entry : trace->entries)
    AppendTraceLine(text, entry.ms, entry.source, entry.fromProgram, entry.bytes);
  const auto again = ReadTrace(text, why);
  Check(again && again->entries == trace->entries && again->configuration == trace->configuration);
  PassThroughRing(*trace);
  return 0;
}
