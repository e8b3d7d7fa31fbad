#include <random>

#include "tests/Test.h"
#include "tests/fakes/AllocationCount.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "trace/Traced.h"

namespace tvx::tracetest {

constexpr std::string_view kConfiguration = "first\r\n\r\nC third\r\n";

std::vector<TraceEntry> Read(const TraceRing& ring, std::int64_t nowMs) {
  std::string why;
  const auto trace = ReadTrace(ring.FileText(kConfiguration, nowMs), why);
  EXPECT_TRUE(trace) << why;
  EXPECT_EQ(trace ? trace->configuration : "", kConfiguration);
  return trace ? trace->entries : std::vector<TraceEntry>();
}

TEST(Trace, KeepsTheNewestThatHaveRoom) {
  constexpr std::size_t kSize = 1000, kHead = 16;
  TraceRing ring(kSize);
  std::mt19937 chance(7);
  std::vector<TraceEntry> all;
  for (int i = 0; i < 500; ++i) {
    TraceEntry entry{
        1000 + i * 10, static_cast<TraceSource>(chance() % kTraceSources), chance() % 2 == 0, {}};
    entry.bytes.resize(1 + chance() % 90);
    for (Byte& byte : entry.bytes) byte = static_cast<Byte>(chance());
    ring.Note(entry.source, entry.fromProgram, entry.bytes, entry.ms);
    all.push_back(entry);
    // The longest tail that has room.
    std::size_t first = all.size(), size = 0;
    while (first > 0 && size + kHead + all[first - 1].bytes.size() <= kSize)
      size += kHead + all[--first].bytes.size();
    std::vector<TraceEntry> expected(all.begin() + static_cast<std::ptrdiff_t>(first), all.end());
    for (TraceEntry& piece : expected) piece.ms -= all[first].ms;
    ASSERT_EQ(Read(ring, entry.ms), expected) << i;
  }
}

TEST(Trace, NotesWhatPassesWithoutAllocating) {
  FakeClock clock;
  TraceRing ring;
  FakeUdpSocket socket;
  TracedSocket traced(socket, ring, clock);
  FakeSerialPort line;
  TracedPort port(line, TraceSource::GaugeBus, ring, clock);
  int arrivals = 0;
  const auto heard = traced.SetArrivalHandler([&](std::size_t) {
    std::array<Byte, 64> datagram{};
    EXPECT_EQ(traced.Receive(datagram), 4u);
    ++arrivals;
  });
  traced.SetUp({"127.0.0.1", 49000, 49003});
  port.Open(5, SerialReset::No);
  socket.Deliver("abcd");
  clock.Advance(30);
  const std::array<Byte, 2> frame{0x0A, 0xFF};
  const std::size_t before = allocations;
  EXPECT_TRUE(port.Write(frame));
  EXPECT_TRUE(traced.Send(frame));
  line.RefuseWrites = true;
  EXPECT_FALSE(port.Write(frame)) << "and is not noted";
  EXPECT_EQ(allocations, before);
  EXPECT_EQ(arrivals, 1);
  const std::vector<TraceEntry> expected{{0, TraceSource::Simulator, false, {'a', 'b', 'c', 'd'}},
                                         {30, TraceSource::GaugeBus, true, {0x0A, 0xFF}},
                                         {30, TraceSource::Simulator, true, {0x0A, 0xFF}}};
  EXPECT_EQ(Read(ring, clock.now), expected);
  clock.Advance(TraceRing::kKeptMs - 20);
  EXPECT_EQ(Read(ring, clock.now).size(), 2u) << "the first is too old";
}

TEST(Trace, NamesTheLineThatIsDamaged) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "The file is no trace"},
      {"Torvex trace 2\n", "The file is no trace"},
      {"Torvex trace 1\n0 G> 0\n", "Line 2 of the trace is damaged"},
      {"Torvex trace 1\nC x\n0 Q> 00\n", "Line 3 of the trace is damaged"},
      {"Torvex trace 1\n-1 G> 00\n", "Line 2 of the trace is damaged"},
      {"Torvex trace 1\n99999999999999999999 G> 00\n", "Line 2 of the trace is damaged"},
      {"Torvex trace 1\n5 G= 00\n", "Line 2 of the trace is damaged"},
      {"Torvex trace 1\n5 G> 0g\n", "Line 2 of the trace is damaged"},
      {"Torvex trace 1\n5 G> 00\n4 G> 00\n", "Line 3 of the trace is damaged"},
      {"Torvex trace 1\n5 G> 00\n6 G> 0", nullptr}};
  for (const auto& [text, fault] : cases) {
    std::string why;
    EXPECT_EQ(ReadTrace(text, why).has_value(), fault == nullptr) << text;
    EXPECT_EQ(why, fault == nullptr ? "" : fault) << text;
  }
}

}  // namespace tvx::tracetest
