#include "trace/TraceRing.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace tvx {

void TraceRing::Note(TraceSource source, bool fromProgram, ByteView bytes, std::int64_t nowMs) {
  const std::size_t size = sizeof(Head) + bytes.size();
  if (bytes.empty() || bytes.size() > std::numeric_limits<std::uint16_t>::max() || size > ring_.size())
    return;
  while (used_ + size > ring_.size()) DropOldest();
  while (pieces_ > 0 && nowMs - HeadAt(begin_).ms > kKeptMs) DropOldest();
  Head head{};
  head.ms = nowMs;
  head.length = static_cast<std::uint16_t>(bytes.size());
  head.source = source;
  head.fromProgram = fromProgram;
  std::array<Byte, sizeof(Head)> packed{};
  std::memcpy(packed.data(), &head, sizeof head);
  Put(packed);
  Put(bytes);
  ++pieces_;
}

void TraceRing::Put(ByteView bytes) {
  const std::size_t place = Next(begin_, used_);
  const std::size_t first = std::min(bytes.size(), ring_.size() - place);
  std::copy_n(bytes.begin(), first, ring_.begin() + static_cast<std::ptrdiff_t>(place));
  std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(first), bytes.end(), ring_.begin());
  used_ += bytes.size();
}

void TraceRing::Get(std::size_t place, std::span<Byte> out) const {
  const std::size_t first = std::min(out.size(), ring_.size() - place);
  std::copy_n(ring_.begin() + static_cast<std::ptrdiff_t>(place), first, out.begin());
  std::copy_n(ring_.begin(), out.size() - first, out.begin() + static_cast<std::ptrdiff_t>(first));
}

TraceRing::Head TraceRing::HeadAt(std::size_t place) const {
  std::array<Byte, sizeof(Head)> packed{};
  Get(place, packed);
  Head head{};
  std::memcpy(&head, packed.data(), sizeof head);
  return head;
}

void TraceRing::DropOldest() {
  const std::size_t size = sizeof(Head) + HeadAt(begin_).length;
  begin_ = Next(begin_, size);
  used_ -= size;
  --pieces_;
}

std::string TraceRing::FileText(std::string_view configuration, std::int64_t nowMs) const {
  std::string text = TraceHead(configuration);
  std::vector<Byte> bytes;
  std::int64_t beganMs = -1;
  std::size_t place = begin_;
  for (std::size_t i = 0; i < pieces_; ++i) {
    const Head head = HeadAt(place);
    place = Next(place, sizeof(Head));
    bytes.resize(head.length);
    Get(place, bytes);
    place = Next(place, head.length);
    if (nowMs - head.ms > kKeptMs) continue;
    if (beganMs < 0) beganMs = head.ms;
    AppendTraceLine(text, head.ms - beganMs, head.source, head.fromProgram, bytes);
  }
  return text;
}

}  // namespace tvx
