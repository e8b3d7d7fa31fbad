// The real serial port, over real pseudo-terminals and the processes that keep them.
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <termios.h>

#include "platform/TtyPort.h"
#include "platform/linux/serial/ComPortMap.h"
#include "platform/linux/serial/KeptTty.h"
#include "platform/linux/serial/TtyCalls.h"
#include "platform/qt/QtFdWatcher.h"
#include "tests/Test.h"
#include "tests/platform/Pty.h"
#include "tests/platform/StoppedProcess.h"
#include "tests/platform/WaitUntil.h"

namespace tvx {
namespace {

TEST(ComPortMap, DefaultsAndLinks) {
  const ScratchFolder folder;
  const std::pair<int, const char*> defaults[] = {{1, "/dev/ttyS0"}, {4, "/dev/ttyS3"}, {5, "/dev/ttyUSB0"}};
  for (const auto& [com, device] : defaults) EXPECT_EQ(FindComPort(com).path, device);
  EXPECT_TRUE(FindComPort(0).path.empty());
  ScratchFolder::Link(5, "/dev/no-such-adapter");
  EXPECT_EQ(FindComPort(5).path, "comports/com5");
  EXPECT_EQ(FindComPort(5).device, "comports/com5 -> /dev/no-such-adapter");
  ScratchFolder::Link(6, "/dev/ttyUSB0");
  const std::pair<int, bool> byOrder[] = {{4, false}, {5, false}, {6, true}, {7, true}};
  for (const auto& [com, order] : byOrder) EXPECT_EQ(FindComPort(com).byOrder, order) << com;
}

struct KeptTtyTest : testing::Test {
  KeptTtyTest() {
    ScratchFolder::Link(3, pty.Device());
    handler = port.SetHandler([this](SerialEvent event) {
      if (event == SerialEvent::Received) Take(1000);
    });
  }
  static bool Opens(TtyPort& which, int comNumber = 3, SerialReset reset = SerialReset::No) {
    which.Open(comNumber, reset);
    return WaitUntil([&] { return which.State() != SerialState::Opening; }) && which.IsOpen();
  }
  void Take(std::size_t most) {
    Byte room[1000];
    const std::size_t count = port.Read(std::span(room).first(most));
    got.insert(got.end(), room, room + count);
  }
  // Sends all of it, the event loop taking its turns.
  bool SendAll(ByteView bytes) {
    return WaitUntil([&] {
      bytes = bytes.subspan(pty.Send(bytes.first(std::min<std::size_t>(bytes.size(), 2048))));
      return bytes.empty();
    });
  }
  static Bytes Pattern(std::size_t size) {  // every byte value, many of them 0xFF
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = i % 3 == 0 ? 0xFF : static_cast<Byte>(i * 7 / 3);
    return bytes;
  }

  Registration handler;
  ScratchFolder folder;
  Pty pty;
  LineServer server;
  LineKeepers keepers{server, [] { return std::make_unique<QtFdWatcher>(); }};
  TtyPort port{std::make_unique<KeptTty>(keepers)};
  Bytes got;
};

TEST_F(KeptTtyTest, SetsTheLine) {
  ASSERT_TRUE(Opens(port));
  EXPECT_EQ(port.Device(), pty.Device());
  EXPECT_EQ(port.CarrierDetect(), std::nullopt);  // a pseudo-terminal has no such line
  const int fd = open(pty.Device().c_str(), O_RDWR | O_NOCTTY);
  termios line{};
  ASSERT_EQ(tcgetattr(fd, &line), 0);
  close(fd);
  EXPECT_EQ(std::pair(cfgetospeed(&line), cfgetispeed(&line)), (std::pair<speed_t, speed_t>(B38400, B38400)));
  EXPECT_EQ(line.c_cflag & (CSIZE | CSTOPB | PARENB | CRTSCTS | CLOCAL | CREAD),
            tcflag_t{CS8 | CSTOPB | CLOCAL | CREAD});
  EXPECT_EQ(line.c_iflag & (IXON | IXOFF | IGNBRK | BRKINT | ISTRIP | IGNPAR | PARMRK | INPCK | ICRNL),
            tcflag_t{PARMRK | INPCK});
  EXPECT_EQ(line.c_lflag & (ICANON | ECHO | ISIG), tcflag_t{0});
  EXPECT_EQ(line.c_oflag & OPOST, tcflag_t{0});
}

TEST_F(KeptTtyTest, EveryByteTravelsBothWays) {
  ASSERT_TRUE(Opens(port));
  const Bytes bytes = Pattern(20000);  // many reads: doubled bytes are cut in two
  ASSERT_TRUE(SendAll(bytes));
  EXPECT_TRUE(WaitUntil([&] { return got.size() >= bytes.size(); }));
  EXPECT_EQ(got, bytes);

  const Bytes frame = Pattern(600);
  EXPECT_TRUE(port.Write(frame));
  EXPECT_TRUE(WaitUntil([&] { return pty.Collect().size() >= frame.size(); }));
  EXPECT_EQ(pty.Got, frame);
}

TEST_F(KeptTtyTest, AFullLineRefusesWithoutWaitingAndLosesNoByteItTook) {
  ASSERT_TRUE(Opens(port));
  const Bytes batch = Pattern(1530);
  Bytes taken;
  const auto start = std::chrono::steady_clock::now();
  int writes = 0;
  while (port.Write(batch) && ++writes < 1000) taken.insert(taken.end(), batch.begin(), batch.end());
  ASSERT_GT(writes, 0);
  ASSERT_LT(writes, 1000);
  EXPECT_FALSE(port.Write(batch));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));

  ASSERT_TRUE(WaitUntil([&] { return pty.Collect().size() >= taken.size(); }));
  EXPECT_EQ(pty.Got, taken);
  EXPECT_TRUE(WaitUntil([&] { return port.Write(Bytes{1, 2, 3}); }));
  EXPECT_FALSE(port.Write(Bytes(TtyPort::kOutputRoom + 1)));
}

TEST_F(KeptTtyTest, UnpluggingIsSeenAndALinkPointedAnewIsFollowed) {
  ASSERT_TRUE(Opens(port));
  pty.Send(Bytes{1, 2, 3});
  ASSERT_TRUE(WaitUntil([&] { return got == Bytes{1, 2, 3}; }));
  pty.Unplug();
  ASSERT_TRUE(WaitUntil([&] { return port.State() == SerialState::Unplugged; }));
  EXPECT_FALSE(port.Write(Bytes{1}));
  ScratchFolder::Link(3, "/dev/no-such-adapter");  // the old name may be another's by now
  EXPECT_FALSE(Opens(port));
  EXPECT_EQ(port.State(), SerialState::NotFound);

  Pty again;
  ScratchFolder::Link(3, again.Device());
  EXPECT_TRUE(Opens(port));
}

TEST_F(KeptTtyTest, AStuckLineHoldsUpNoOtherAndIsTakenUpAgainWhenItGoesOn) {
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(Opens(port, 3, SerialReset::Yes));
  const StoppedProcess stuck(StoppedProcess::KeeperOf(pty.Device()));
  ASSERT_GT(stuck.pid, 0);
  EXPECT_TRUE(port.Write(Bytes{1, 2}));
  port.AskCarrier();
  port.Close();
  port.Open(3, SerialReset::No);
  Pty second;
  ScratchFolder::Link(4, second.Device());
  TtyPort other{std::make_unique<KeptTty>(keepers)};
  EXPECT_TRUE(Opens(other, 4));
  EXPECT_EQ(port.State(), SerialState::Opening) << "its device is still held";
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  EXPECT_TRUE(WaitUntil([&] {
    return pty.Collect() == Bytes{1, 2};
  })) << "what was written is not taken back";
  stuck.GoOn();
  EXPECT_TRUE(WaitUntil([&] { return port.IsOpen(); }));
}

TEST_F(KeptTtyTest, TheProgramEndsAtOnceWhateverALineDoesAndTheKeeperAfterwards) {
  std::optional<StoppedProcess> stuck;
  std::chrono::steady_clock::time_point start;
  {
    LineServer ownServer;
    LineKeepers own(ownServer, [] { return std::make_unique<QtFdWatcher>(); });
    TtyPort line(std::make_unique<KeptTty>(own));
    ASSERT_TRUE(Opens(line));
    stuck.emplace(StoppedProcess::KeeperOf(pty.Device()));
    ASSERT_GT(stuck->pid, 0);
    start = std::chrono::steady_clock::now();
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
  stuck->GoOn();
  EXPECT_TRUE(WaitUntil([&] { return StoppedProcess::KeeperOf(pty.Device()) < 0; }));
}

TEST_F(KeptTtyTest, AKeeperThatIsKilledIsALineThatWentAway) {
  ASSERT_TRUE(Opens(port));
  kill(StoppedProcess::KeeperOf(pty.Device()), SIGKILL);
  EXPECT_TRUE(WaitUntil([&] { return port.State() == SerialState::Unplugged; }));
  EXPECT_TRUE(Opens(port));
}

TEST_F(KeptTtyTest, AHelperThatCannotBeStartedIsSaidAndStartedOnceItCan) {
  rlimit files{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &files), 0);
  const rlimit few{0, files.rlim_max};
  setrlimit(RLIMIT_NOFILE, &few);
  const bool opens = Opens(port);
  setrlimit(RLIMIT_NOFILE, &files);
  EXPECT_FALSE(opens);
  EXPECT_EQ(port.State(), SerialState::NoHelper);
  EXPECT_TRUE(Opens(port));
}

TEST_F(KeptTtyTest, TheAdaptersOwnTimerIsSetWhereThereIsOne) {
  ScratchFolder::Put("class/ttyUSB3/device/latency_timer", "16");
  SetLowLatency(-1, "/dev/ttyUSB3", "class");
  std::string latency;
  std::ifstream("class/ttyUSB3/device/latency_timer") >> latency;
  EXPECT_EQ(latency.substr(0, 1), "1");
  SetLowLatency(-1, "/dev/ttyUSB4", "class");
  EXPECT_FALSE(std::filesystem::exists("class/ttyUSB4"));
}

TEST_F(KeptTtyTest, TwoUsersNeverShareALine) {
  ASSERT_TRUE(Opens(port));
  TtyPort other{std::make_unique<KeptTty>(keepers)};
  EXPECT_FALSE(Opens(other));
  EXPECT_EQ(other.State(), SerialState::Busy);
  ASSERT_TRUE(Opens(port));  // the own line may be opened again and again
  EXPECT_FALSE(Opens(other));
  {
    const StoppedProcess stuck(StoppedProcess::KeeperOf(pty.Device()));
    port.Open(3);
    other.Open(3);
    const Pty second;
    ScratchFolder::Link(4, second.Device());
    TtyPort third{std::make_unique<KeptTty>(keepers)};
    EXPECT_TRUE(Opens(third, 4));
    EXPECT_EQ(port.State(), SerialState::Opening) << "one has let go, the other has not";
  }
  const auto settled = [](const TtyPort& each) { return each.IsOpen() || each.State() == SerialState::Busy; };
  EXPECT_TRUE(WaitUntil([&] { return settled(port) && settled(other); }));
  EXPECT_NE(port.IsOpen(), other.IsOpen()) << "whoever is first";
  port.Close();
  EXPECT_TRUE(Opens(other)) << "only just closed";
}

TEST_F(KeptTtyTest, WhatIsNoSerialPortIsToldApart) {
  std::ofstream("file").put('x');
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  using enum SerialState;
  const std::pair<std::string, SerialState> cases[] = {// The last one leads to itself.
                                                       {"/dev/no-such-adapter", NotFound},
                                                       {"/dev/null", Failed},
                                                       {"../file", Failed},
                                                       {"../pipe", Failed},
                                                       {"com3", NotFound}};
  for (const auto& [target, state] : cases) {
    ScratchFolder::Link(3, target);
    EXPECT_FALSE(Opens(port)) << target;
    EXPECT_EQ(port.State(), state) << target;
  }
}

}  // namespace
}  // namespace tvx
