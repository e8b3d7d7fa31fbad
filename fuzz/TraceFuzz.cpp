// A trace that somebody sent: whatever is in it, it is read or refused, and read again it is the same.
#include <cstdlib>

#include "trace/TraceFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tvx;
  std::string why;
  const auto trace = ReadTrace({reinterpret_cast<const char*>(data), size}, why);
  if (!trace) {
    if (why.empty()) std::abort();
    return 0;
  }
  std::string text = TraceHead(trace->configuration);
  for (const TraceEntry& entry : trace->entries) {
    AppendTraceLine(text, entry.ms, entry.source, entry.fromProgram, entry.bytes);
  }
  const auto again = ReadTrace(text, why);
  if (!again || again->entries != trace->entries) std::abort();
  return 0;
}
