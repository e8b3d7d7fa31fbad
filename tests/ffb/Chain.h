// The whole chain: the simulator's datagrams, both yokes of the program, their frames on lines of 38400 baud,
// and yokes that move as their commands and hands push them. Time is a fake one, in steps of 2 ms.
#pragma once

#include "tests/ffb/YokeRig.h"
#include "virtualcockpit/pace/SerialWire.h"
#include "virtualcockpit/yokes/YokeDevice.h"

namespace tvx::test {

struct Chain : YokeRig {
  static constexpr int kStepMs = 2;
  static constexpr int kSimulatorMs = 32;  // of its frames

  // One yoke, its line, and what the frames on it have commanded.
  struct Side {
    Side(FakeSerialPort& itsPort, Byte address)
        : port(itsPort),
          device(address, [this](ByteView bytes) { wire.FromHardware(bytes, nowNs); }),
          wire(
              [this](ByteView bytes, std::int64_t) {
                if (plugged) device.OnBytes(bytes);
              },
              [this](ByteView bytes) { waiting.insert(waiting.end(), bytes.begin(), bytes.end()); }) {}
    FakeSerialPort& port;
    std::int64_t nowNs = 0;
    bool plugged = true;
    vc::YokeDevice device;
    vc::SerialWire wire;
    std::vector<Byte> waiting;  // in the computer's driver
    bool told = false;          // in the last cycle
    double limit = 0;           // by Bias; 0 after Release
    std::array<double, 2> amplitude{};

    void TakeCommands() {
      told = !port.Writes.empty();
      for (const auto& write : port.Writes) {
        if (plugged) wire.FromProgram(write, nowNs);
        for (ByteView frame = write; frame.size() >= 13; frame = frame.subspan(13)) Decode(frame);
      }
      port.Writes.clear();
      port.Sent.clear();
    }
    void Decode(ByteView frame) {
      const auto parameter = [&](std::size_t n) {
        return ((frame[1 + 2 * n] & 0x7F) + 128 * (frame[2 + 2 * n] & 0x7F)) / 16383.0;
      };
      const int command = frame[2] & 0x7F;
      if (command == 2) limit = parameter(3);
      if (command == 4) amplitude = {parameter(2), parameter(4)};
      if (command == 6) limit = 0, amplitude = {};
    }
    double Most() const { return std::max(device.Most(0), device.Most(1)); }
    double Sum() const { return limit + std::max(amplitude[0], amplitude[1]); }
  };

  std::vector<std::unique_ptr<Side>> sides;
  bool stopped = false;         // the program, as by SIGSTOP
  bool repliesFirst = true;     // after a stop: what its loop handles first
  bool ratiosTaken = false;     // the simulator's yoke
  double largestJump = 0;       // of a written ratio while it was taken
  std::function<void()> after;  // each cycle of the program

  explicit Chain(int yokes = 1) : YokeRig(yokes) {
    Can({{"start", [this](int milliseconds) { Begin(milliseconds); }},
         {"run", [this](int milliseconds) { Pass(milliseconds); }}});
    const auto raw = [](double share) {
      return StoredRaw(static_cast<int>(vc::YokeDevice::kRawCentre + share * vc::YokeDevice::kRawTravel));
    };
    for (int i = 0; i < yokes; ++i) {
      YokeRecord& record = i == 0 ? model.Yoke1 : model.Yoke2;
      record.Address = static_cast<Byte>(i + 1);
      record.RollLeft = record.PitchForward = raw(-1);
      record.RollCentre = record.PitchCentre = raw(0);
      record.RollRight = record.PitchBack = raw(1);
      sides.push_back(std::make_unique<Side>(ports[static_cast<std::size_t>(i)], record.Address));
      vc::LineTraits line;
      line.seed += static_cast<std::uint32_t>(i);
      sides.back()->wire.SetTraits(line);
    }
  }
  Side& Of(int which) { return *sides[static_cast<std::size_t>(which - 1)]; }

  void Begin(int milliseconds = 5000) {
    OpenAndRun();
    Pass(milliseconds);
  }
  // The adapter is pulled out, or put in again; the program opens it at once.
  void Plug(int which, bool in) {
    Side& side = Of(which);
    side.plugged = in;
    side.wire.Reset();
    side.waiting.clear();
    if (in) {
      side.port.OpenResult = SerialState::Open;
      side.port.Open(which + 4);
    } else {
      side.port.Unplug();
    }
  }

  void Pass(int milliseconds) {
    for (int ms = 0; ms < milliseconds; ms += kStepMs) Step();
  }
  // The computer is suspended: time goes on, for the yokes too.
  void Suspend(int milliseconds) {
    stopped = true;
    Pass(milliseconds);
    stopped = false;
  }

 private:
  void Step() {
    clock.Advance(kStepMs);
    for (const auto& side : sides) {
      side->nowNs += kStepMs * vc::kNsPerMs;
      side->wire.Advance(side->nowNs);
      side->device.Advance(kStepMs / 1000.0);
    }
    if (simulatorAlive && clock.now % kSimulatorMs == 0) datagramsDue_ = true;
    if (stopped) return;
    if (clock.now % 20 == 0) sim.Tick();
    const bool due = clock.now - tickedMs_ >= YokePair::kIntervalMs;
    // A timer that was held up fires once, and then at its usual times.
    if (!due || repliesFirst) Arrive();
    if (!due) return;
    tickedMs_ = clock.now - clock.now % YokePair::kIntervalMs;
    pair.ProcessTimer_Tick();
    Arrive();
    for (const auto& side : sides) side->TakeCommands();
    TakeDatagrams();
    const FfbVariables& known = pair.Ports().Variables;
    if (known.AutopilotServos) autopilot_ = {known.AutopilotRoll, known.AutopilotPitch};
    if (after) after();
  }
  void Arrive() {
    if (std::exchange(datagramsDue_, false)) {
      SendValues();
      socket.Deliver(DataDatagram({{5, 1.0f}}));  // unrelated
    }
    for (const auto& side : sides) side->port.Arrive(std::exchange(side->waiting, {}));
  }
  void OnWritten(const std::string& path, float value) override {
    if (path.ends_with("override_joystick_roll")) {
      fresh_ = {value == 1 && !ratiosTaken, value == 1 && !ratiosTaken};
      ratiosTaken = value == 1;
    }
    for (const std::size_t i : {0u, 1u}) {
      if (!path.ends_with(i == 0 ? "/yoke_roll_ratio" : "/yoke_pitch_ratio")) continue;
      double jump = std::abs(value - ratio_[i]);
      // Taken anew: from the middle, or from where the autopilot had it.
      if (fresh_[i]) jump = std::min<double>(std::abs(value), std::abs(value - autopilot_[i]));
      fresh_[i] = false;
      if (ratiosTaken) largestJump = std::max(largestJump, jump);
      ratio_[i] = value;
    }
  }

  bool datagramsDue_ = false;
  std::array<double, 2> autopilot_{};  // its last place
  std::int64_t tickedMs_ = 0;
  std::array<double, 2> ratio_{};
  std::array<bool, 2> fresh_{};  // the first value since the controls were taken
};

}  // namespace tvx::test
