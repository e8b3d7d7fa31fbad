// One program to a folder, the ends that Windows asks for, datagrams, clocks.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <future>
#include <sstream>

#include "platform/machine/DatagramCalls.h"
#include "platform/windows/EndRequests.h"
#include "platform/windows/FaultWords.h"
#include "platform/windows/FolderLock.h"
#include "platform/windows/PortOwner.h"
#include "platform/windows/WindowsClock.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/platform/windows/SystemLoop.h"

namespace tvx::test {
namespace {

TEST(FolderLock, OneOfManyGetsTheFolderAndShowsItself) {
  const ScratchFolder folder;
  std::filesystem::create_directory("other");
  auto first = std::make_unique<FolderLock>();
  FolderLock second, elsewhere, nowhere;
  EXPECT_FALSE(FolderLock::AskToShow(".", 10)) << "nobody is there";
  EXPECT_TRUE(first->Take("."));
  EXPECT_FALSE(second.Take(folder.Path())) << "the same folder";
  EXPECT_TRUE(elsewhere.Take("other"));
  EXPECT_TRUE(nowhere.Take("no such folder")) << "no reason to run not at all";
  EXPECT_EQ(second.TakeOrAsk(".", 50), FolderStart::NoAnswer);
  int shown = 0;
  first->Listen(NewLoopWatcher(), [&] { ++shown; });
  std::vector<std::future<FolderStart>> starts;
  for (int i = 0; i < 4; ++i)
    starts.push_back(std::async(std::launch::async, [] { return FolderLock().TakeOrAsk(".", 5000); }));
  for (auto& start : starts) {
    ASSERT_TRUE(
        Eventually([&] { return start.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    EXPECT_EQ(start.get(), FolderStart::Shown);
  }
  EXPECT_GE(shown, 1);
  first.reset();
  EXPECT_EQ(second.TakeOrAsk(".", 5000), FolderStart::First);
}

TEST(EndRequests, HoldTheLogOffBackUntilTheProgramIsGone) {
  int ended = 0, turns = 0;
  const EndRequests requests([&] { ++ended; }, [&] { return ++turns > 3; });
  const auto window = static_cast<HWND>(requests.Window());
  EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(window, WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(ended, 0) << "the user has called it off";
  SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(turns, 4) << "as long as the simulator is being told";
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(ended, 2);
  EXPECT_TRUE(IsWindow(window)) << "it is not closed by that";
}

// A socket that hears what is sent to it, without Qt.
class Ear {
 public:
  Ear() {
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof own;
    bind(socket_, reinterpret_cast<const sockaddr*>(&own), size);
    getsockname(socket_, reinterpret_cast<sockaddr*>(&own), &size);
    port_ = ntohs(own.sin_port);
  }
  ~Ear() { closesocket(socket_); }
  SOCKET Get() const { return socket_; }
  std::int32_t Port() const { return port_; }

 private:
  SOCKET socket_ = socket(AF_INET, SOCK_DGRAM, 0);
  std::int32_t port_ = 0;
};

TEST(Datagrams, SayWhoSentThemAndWhoHasThePort) {
  constexpr std::uint32_t kLoopback = 0x7F000001;
  FaultWords words({});  // starts the sockets
  const Ear ear;
  const auto native = static_cast<NativeSocket>(ear.Get());
  PrepareDatagramSocket(native);
  EXPECT_FALSE(PeekDatagram(native)) << "it does not wait";
  const std::array<Byte, 3> bytes{1, 2, 3};
  EXPECT_TRUE(words.Send({kLoopback, ear.Port()}, bytes));
  std::optional<WaitingDatagram> waiting;
  EXPECT_TRUE(Eventually([&] { return (waiting = PeekDatagram(native)).has_value(); }));
  EXPECT_EQ(waiting->address, kLoopback);
  EXPECT_GT(waiting->port, 0);
  EXPECT_TRUE(IsOwnAddress(kLoopback));
  EXPECT_FALSE(IsOwnAddress(0x08080808));
  EXPECT_EQ(AddressTowards(kLoopback, 49000), kLoopback);
  EXPECT_NE(OwnerOfUdpPort(ear.Port()).find(std::to_string(GetCurrentProcessId())), std::string::npos);
  EXPECT_EQ(OwnerOfUdpPort(1), "");
}

TEST(FaultWords, AreSaidWhenTheProgramCrashes) {
  const Ear ear;
  // A child of this program prepares its words and dies.
  std::array<wchar_t, 1024> self{};
  GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size()));
  for (const char* way : {"fault", "abort", "exit"}) {
    SetEnvironmentVariableA("TVX_CRASH", (std::string(way) + " " + std::to_string(ear.Port())).c_str());
    std::wstring command = L"\"" + std::wstring(self.data()) +
                           L"\" --gtest_filter=FaultWords.DISABLED_Child --gtest_also_run_disabled_tests "
                           L"--gtest_catch_exceptions=0";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION child{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                               &child));
    const Handle process(child.hProcess), thread(child.hThread);
    ASSERT_EQ(WaitForSingleObject(process.Get(), 60'000), WAIT_OBJECT_0) << way;
    std::array<char, 16> heard{};
    u_long waiting = 0;
    EXPECT_TRUE(Eventually([&] { return ioctlsocket(ear.Get(), FIONREAD, &waiting) == 0 && waiting > 0; }))
        << way;
    EXPECT_EQ(recv(ear.Get(), heard.data(), static_cast<int>(heard.size()), 0), 3) << way;
    EXPECT_EQ(std::string(heard.data()), "bye") << way;
  }
  SetEnvironmentVariableA("TVX_CRASH", nullptr);
}

TEST(FaultWords, DISABLED_Child) {
  std::istringstream asked(std::getenv("TVX_CRASH"));
  std::string way;
  std::int32_t port = 0;
  asked >> way >> port;
  static FaultWords words({});
  FaultWords::CatchFaults();
  SetErrorMode(SEM_NOGPFAULTERRORBOX);
  const std::array<Byte, 3> bye{'b', 'y', 'e'};
  const ByteView said[] = {bye};
  words.Prepare({0x7F000001, port}, said);
  if (way == "exit") std::exit(3);
  if (way == "abort") std::abort();
  RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 0, nullptr);
}

TEST(WindowsClock, GoesOnAndKnowsTheDay) {
  const WindowsClock clock;
  const auto before = clock.MonotonicMs();
  EXPECT_TRUE(Eventually([&] { return clock.MonotonicMs() > before; }));
  const std::tm local = clock.LocalTime();
  const std::time_t now = std::time(nullptr);
  std::tm expected{};
  localtime_s(&expected, &now);
  EXPECT_EQ(local.tm_year * 400 + local.tm_yday, expected.tm_year * 400 + expected.tm_yday);
}

}  // namespace
}  // namespace tvx::test
