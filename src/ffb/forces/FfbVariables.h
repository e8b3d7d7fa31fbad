// The yoke variables: what the simulator says of a flight, and what is written back to it.
#pragma once

namespace tvx {

// Ratios are -1..1 (right, nose up positive), speeds indicated knots unless said.
struct FfbVariables {
  bool OnGround = false;
  bool AutopilotServos = false;  // the autopilot holds the controls
  bool StallWarning = false;
  bool Paused = false;
  float YokeRoll = 0;  // what is written as the simulator's yoke ratio
  float YokePitch = 0;
  float Airspeed = 0;
  float GroundSpeed = 0;  // kt
  bool OverspeedWarning = false;
  bool GearDown = true;
  float AutopilotRoll = 0;  // the autopilot's place for the yoke
  float AutopilotPitch = 0;
  float ElevatorTrim = 0;
  float AileronTrim = 0;
  float NormalG = 1;    // load, g
  float Rudder = 0;     // -1..1
  float LeftBrake = 0;  // 0..1
  float RightBrake = 0;
};

}  // namespace tvx
