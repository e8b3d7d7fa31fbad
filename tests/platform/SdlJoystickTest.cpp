// The real joystick reader on joysticks that SDL itself pretends to have.
#include <SDL.h>
#include <gtest/gtest.h>

#include "platform/linux/SdlJoystick.h"

namespace tvx::test {
namespace {

class SdlJoystickTest : public ::testing::Test {
 protected:
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
  for (int axis = 0; axis < 6; ++axis) {
    SDL_JoystickSetVirtualAxis(device, axis, static_cast<Sint16>(axis == 5 ? 32767 : -32768 + 1000 * axis));
  }
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
