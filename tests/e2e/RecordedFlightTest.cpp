// Plays the recorded flight again: a change that moves one byte on the bus is seen, and named. After a change
// that was meant, record anew: build the target record-flight and run it in the source folder.
#include "platform/AtomicFile.h"
#include "tests/Test.h"
#include "tests/e2e/RecordedFlight.h"
#include "tests/fakes/SourceFolder.h"

namespace tvx::e2e {
namespace {

std::string Text(const std::string& bytes) {
  std::ostringstream out;
  for (const SentCommand& command : CommandsOf({reinterpret_cast<const Byte*>(bytes.data()), bytes.size()}))
    out << command << '\n';
  return out.str();
}

TEST(RecordedFlight, PutsTheSameBytesOnTheBus) {
  const auto folder = SourceFolder() / "tests/e2e/recorded";
  std::string error;
  const auto text = ReadWholeFile((folder / "flight.txt").string(), error);
  ASSERT_TRUE(text) << error;
  const auto ticks = ReadRecording(*text);
  ASSERT_GT(ticks.size(), 50u);
  RecordedCockpit cockpit;
  ASSERT_TRUE(cockpit.Load((folder / "flight.cfg").string()));
  std::size_t sent = 0;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    const std::string bus = cockpit.Play(ticks[i].datagrams);
    ASSERT_EQ(Text(bus), Text(ticks[i].bus)) << "tick " << i;
    ASSERT_EQ(bus, ticks[i].bus) << "tick " << i;
    sent += bus.size();
  }
  EXPECT_GT(sent, 5000u);
}

}  // namespace
}  // namespace tvx::e2e
