// The real joystick reader on joysticks that SDL itself pretends to have.
#include <SDL.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/JoystickAccess.h"
#include "platform/sdl/SdlJoystick.h"
#include "tests/Test.h"

namespace tvx::test {
namespace {

struct SdlJoystickTest : testing::Test {
  void SetUp() override {
    if (SDL_InitSubSystem(SDL_INIT_JOYSTICK) != 0) GTEST_SKIP() << SDL_GetError();
    if (SDL_NumJoysticks() != 0) GTEST_SKIP() << "a real joystick is plugged in";
  }
  void TearDown() override { SDL_QuitSubSystem(SDL_INIT_JOYSTICK); }

  int Plug(SDL_JoystickType type, int axes) { return SDL_JoystickAttachVirtual(type, axes, 8, 1); }

  SdlJoystick reader_;
};

TEST_F(SdlJoystickTest, ReadsTheWholeRecord) {
  const int index = Plug(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 6);
  ASSERT_GE(index, 0);
  JoyInfoEx info;
  ASSERT_TRUE(reader_.joyGetPosEx(0, info));
  SDL_Joystick* device = SDL_JoystickFromInstanceID(SDL_JoystickGetDeviceInstanceID(index));
  ASSERT_NE(device, nullptr);
  for (int axis = 0; axis < 6; ++axis)
    SDL_JoystickSetVirtualAxis(device, axis, static_cast<Sint16>(axis == 5 ? 32767 : -32768 + 1000 * axis));
  SDL_JoystickSetVirtualButton(device, 0, 1);
  SDL_JoystickSetVirtualButton(device, 7, 1);
  ASSERT_TRUE(reader_.joyGetPosEx(0, info));
  EXPECT_EQ((std::vector<std::uint32_t>{info.XPos, info.YPos, info.ZPos, info.RPos, info.UPos, info.VPos}),
            (std::vector<std::uint32_t>{0, 1000, 2000, 3000, 4000, 65535}));
  EXPECT_EQ(info.Buttons, 0x81u);
  EXPECT_EQ(info.ButtonNumber, 2u);
  const std::pair<Uint8, std::uint32_t> hats[] = {{SDL_HAT_UP, 0},
                                                  {SDL_HAT_RIGHT, 9000},
                                                  {SDL_HAT_LEFTUP, 31500},
                                                  {SDL_HAT_CENTERED, 65535},
                                                  {15, 65535}};
  for (const auto& [bits, pov] : hats) {
    SDL_JoystickSetVirtualHat(device, 0, bits);
    ASSERT_TRUE(reader_.joyGetPosEx(0, info));
    EXPECT_EQ(info.Pov, pov) << int{bits};
  }
  SDL_JoystickDetachVirtual(index);
}

TEST_F(SdlJoystickTest, SaysWhatADeviceIs) {
  EXPECT_EQ(reader_.Describe(0), nullptr);
  Plug(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 3);
  Plug(SDL_JOYSTICK_TYPE_THROTTLE, 5);
  ASSERT_NE(reader_.Describe(1), nullptr);
  const JoystickInfo stick = *reader_.Describe(0), throttle = *reader_.Describe(1);
  EXPECT_FALSE(stick.name.empty());
  EXPECT_EQ((std::tuple{stick.axes, throttle.axes}), (std::tuple{3, 5}));
  EXPECT_NE(stick.identity, throttle.identity);
  EXPECT_GE(stick.identity.size(), 32u);
  EXPECT_EQ(stick.identity.find(' '), std::string::npos);
  while (SDL_NumJoysticks() > 0) SDL_JoystickDetachVirtual(0);
  EXPECT_EQ(reader_.Describe(0), nullptr);
}

TEST(JoystickAccess, NamesAStickThatMayNotBeRead) {
  const std::string folder = testing::TempDir() + "input-" + std::to_string(getpid()) + "-";
  const std::string list = folder + "list";
  std::ofstream(list) << "I: Bus=0003\nN: Name=\"Keys\"\nH: Handlers=sysrq kbd event2\n\n"
                         "I: Bus=0003\nN: Name=\"Gone\"\nH: Handlers=event7 js1\n\n"
                         "I: Bus=0003\nN: Name=\"Pedals\"\nH: Handlers=event5 js0 \n";
  const std::string device = folder + "event5";
  std::ofstream{device};
  std::ofstream{folder + "event2"};
  EXPECT_EQ(UnreadableJoystick(list, folder), "");
  chmod(device.c_str(), 0);
  const auto said = [&] {
    if (geteuid() == 0 && setuid(65534) != 0) return 2;  // to the root everything is readable
    const std::string words = UnreadableJoystick(list, folder);
    return words.starts_with("\"Pedals\" is connected, but this user may not read " + device) ? 0 : 1;
  };
  EXPECT_EXIT(std::_Exit(said()), testing::ExitedWithCode(0), "");
  EXPECT_EQ(UnreadableJoystick(folder + "none", folder), "");
  for (const char* file : {"list", "event5", "event2"}) std::remove((folder + file).c_str());
}

TEST_F(SdlJoystickTest, MissingAndUnpluggedLeaveTheRecordAlone) {
  JoyInfoEx info;
  info.RPos = 42;
  EXPECT_FALSE(reader_.joyGetPosEx(0, info));
  EXPECT_FALSE(reader_.joyGetPosEx(1000000, info));
  const int index = Plug(SDL_JOYSTICK_TYPE_WHEEL, 2);
  ASSERT_TRUE(reader_.joyGetPosEx(0, info));
  EXPECT_EQ(info.RPos, 0u) << "an axis that it does not have";
  SDL_JoystickDetachVirtual(index);
  info.RPos = 42;
  EXPECT_FALSE(reader_.joyGetPosEx(0, info));
  EXPECT_EQ(info.RPos, 42u);
}

// Two of different kinds: when the first goes, the second keeps its number, and the first gets its own again.
TEST_F(SdlJoystickTest, NumbersStayWithTheirDevices) {
  Plug(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 3);
  Plug(SDL_JOYSTICK_TYPE_THROTTLE, 3);
  JoyInfoEx info;
  ASSERT_TRUE(reader_.joyGetPosEx(1, info));
  SDL_Joystick* second = SDL_JoystickFromInstanceID(SDL_JoystickGetDeviceInstanceID(1));
  SDL_JoystickSetVirtualAxis(second, 0, 20000);
  SDL_JoystickDetachVirtual(0);
  EXPECT_FALSE(reader_.joyGetPosEx(0, info));
  ASSERT_TRUE(reader_.joyGetPosEx(1, info));
  EXPECT_EQ(info.XPos, 52768u);
  Plug(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 3);
  EXPECT_TRUE(reader_.joyGetPosEx(0, info));
  EXPECT_NE(info.XPos, 52768u);
  while (SDL_NumJoysticks() > 0) SDL_JoystickDetachVirtual(0);
}

}  // namespace
}  // namespace tvx::test
