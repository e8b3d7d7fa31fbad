// Both yokes over ports in memory, and yokes that move: what the hardware would make of the commands.
#pragma once

#include "ffb/YokePair.h"
#include "tests/Story.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/SimData.h"
#include "tests/fakes/Wire.h"

namespace tvx::test {

// A yoke of light friction whose axes go where the forces push them, unless a hand holds them. Its raw values
// are 32768 + 50 a count.
struct FakeYoke {
  bool silent = false, garbled = false;
  Byte status = yokestatus::kPower;
  std::uint16_t buttons = 0;
  // What it was told.
  std::set<int> commands;
  std::map<int, int> told;  // how often each
  bool asked = false, released = true;
  double limit = 0, force = 0, holdMs = 0;
  std::array<double, 2> centre{}, gradient{}, bias{};
  double servoSpeed = 0;  // counts of 50 raw a second
  double behind = 0;      // counts that its servo stays behind while its place moves
  double pace = 1;        // of the speed it is told
  // Where it is, counts.
  std::array<double, 2> position{};

  void Hold(std::size_t axis, double counts) {
    position[axis] = counts;
    held_[axis] = true;
  }
  void Let() { held_ = {}; }

  void Take(ByteView queue) {
    asked = false;
    for (; queue.size() >= 13; queue = queue.subspan(13)) {
      std::array<int, 4> p{};
      for (std::size_t i = 0; i < 4; ++i) p[i] = (queue[3 + 2 * i] & 0x7F) + 128 * (queue[4 + 2 * i] & 0x7F);
      On(queue[2] & 0x7F, p);
    }
  }
  void Move() {
    if (released && limit > 0) limit = std::max(0.0, limit - 40.0 / fadeMs_);
    for (std::size_t a = 0; a < 2; ++a) {
      if (held_[a] || released || limit <= 0) continue;
      if (servo_) {
        const double away = centre[a] - position[a];
        const bool moving = std::abs(centre[a] - before_[a]) > 1;
        before_[a] = centre[a];
        if (moving && std::abs(away) < behind) continue;
        const double step = pace * servoSpeed * 0.04;
        position[a] += std::clamp(centre[a] - position[a], -step, step);
      } else if (gradient[a] > 0) {
        position[a] += 0.5 * (centre[a] - position[a]);
      }
    }
  }
  std::vector<Byte> Reply() const {
    const auto raw = [](double counts) {
      return '=' + std::to_string(32768 + static_cast<int>(std::lround(counts * 50))) + ' ';
    };
    std::vector<Byte> b = Wire("...... " + raw(position[0]) + (garbled ? "X " : "P ") + raw(position[1]) +
                               "S =" + std::to_string(buttons) + " .......... FF");
    b[3] = status;
    return b;
  }

 private:
  void On(int command, const std::array<int, 4>& p) {
    commands.insert(command);
    ++told[command];
    const auto counts = [](int parameter) { return (parameter * 4 - 32768) / 50.0; };
    if (command == 1 || command == 5) {
      servo_ = command == 5;
      centre = {counts(p[0]), counts(p[1])};
      gradient = {p[2] / 2048.0, p[3] / 2048.0};
      servoSpeed = p[2] * 16 / 50.0;
      force = p[3] / 16383.0;
    } else if (command == 2) {
      bias = {(p[0] - 8192) / 8191.0, (p[1] - 8192) / 8191.0};
      released = false;
      limit = p[2] / 16383.0;
      holdMs = p[3];
    } else if (command == 6) {
      released = true;
      fadeMs_ = p[0];
      if (p[0] == 0) limit = 0;
    } else if (command == 7) {
      asked = true;
    }
  }
  std::array<bool, 2> held_{};
  std::array<double, 2> before_{};
  bool servo_ = false;
  int fadeMs_ = 1;
};

class FakeJoystick : public JoystickDevice {
 public:
  bool present = true;
  JoyInfoEx info;
  std::array<JoystickInfo, 2> devices{JoystickInfo{"Pedals", "p1", 6}, JoystickInfo{}};
  std::string trouble;
  const JoystickInfo* Describe(std::int32_t number) override {
    const bool there = present && (number == 0 || number == 1);
    const JoystickInfo* device = there ? &devices[static_cast<std::size_t>(number)] : nullptr;
    return device != nullptr && !device->identity.empty() ? device : nullptr;
  }
  std::string Trouble() override { return trouble; }
  bool joyGetPosEx(std::int32_t number, JoyInfoEx& record) override {
    if (!present || number != 0) return false;
    const std::uint32_t size = record.Size, flags = record.Flags;
    record = info;
    record.Size = size, record.Flags = flags;
    return true;
  }
};

struct YokeRig : Story {
  virtual ~YokeRig() = default;
  ConfigModel model;
  FakeMessageBoxes boxes;
  FakeClock clock;
  FakeUdpSocket socket;
  FakeTimer timer;
  FakeJoystick joystick;
  std::array<FakeSerialPort, 2> ports;
  std::array<FakeYoke, 2> hardware;
  SimCom sim{model, socket, boxes, clock};
  YokePair pair{model, sim, ports[0], ports[1], boxes, clock, joystick, timer};
  bool simulatorAlive = true, deaf = false;  // deaf: what it is told gets lost
  std::set<int> frozen;                      // FFB offsets that it does not send
  std::map<std::string, float> written;      // last value of each dataref that was written
  Texts commands;

  explicit YokeRig(int yokes = 1) {
    model.General.ComPortYoke1 = 5;
    model.General.ComPortYoke2 = yokes > 1 ? std::int16_t{6} : std::int16_t{0};
    for (YokeRecord* record : {&model.Yoke1, &model.Yoke2}) {
      record->StartMode = static_cast<std::int16_t>(YokeMode::Ffb);
      record->OptionBits = yokeoption::kStandard;
      record->RollLeft = record->PitchForward = StoredRaw(32768 - 50 * 511);
      record->RollRight = record->PitchBack = StoredRaw(32768 + 50 * 511);
    }
    values_[9] = 1, values_[14] = 1;
    values_[1] = 1;  // the autopilot's mode: flight director only
    verbs = {{"start", [this](int milliseconds) { Start(milliseconds); }},
             {"run", [this](int milliseconds) { Run(milliseconds); }},
             {"set", [this](int offset, float value) { SetValue(offset, value); }},
             {"stop", [this] { pair.cmdStop_Click(); }},
             {"mode", [this](int yoke, int mode) { pair.SelectMode(yoke, static_cast<YokeMode>(mode)); }},
             {"hand", [this](int yoke) { pair.HandOver(yoke); }},
             {"hold", [this](int yoke, double counts) { Yoke(yoke).Hold(0, counts); }},
             {"let", [this](int yoke) { Yoke(yoke).Let(); }},
             {"press",
              [this](int yoke, int buttons) { Yoke(yoke).buttons = static_cast<std::uint16_t>(buttons); }},
             {"master", [this] { return pair.Master(); }},
             {"role", [this](int yoke) { return pair.RoleText(yoke); }},
             {"state", [this](int yoke) { return pair.StateText(yoke); }},
             {"override", [this](const std::string& name) { return Override(name); }},
             {"wrote", [this](const std::string& name) { return Written(name); }},
             {"commands", [this] { return std::exchange(commands, {}); }}};
  }

  FakeYoke& Yoke(int which) { return hardware.at(static_cast<std::size_t>(which - 1)); }
  // Starts the yokes, and lets so much time pass.
  void Start(int milliseconds = 0) {
    OpenAndRun();
    Run(120 + milliseconds);
  }
  // The simulator's value at an FFB offset.
  void SetValue(int offset, float value) { values_[offset] = value; }
  // 40 ms: the simulator sends, the program ticks, the yokes do what they are told and answer.
  void Cycle(int milliseconds = 40) {
    clock.Advance(milliseconds);
    sim.Tick();
    if (simulatorAlive) SendValues();
    pair.ProcessTimer_Tick();
    Deliver();
    TakeDatagrams();
  }
  void Run(int milliseconds) {
    for (int ms = 0; ms < milliseconds; ms += 40) Cycle();
  }
  // What was written to the yokes arrives there.
  void Deliver() {
    for (std::size_t i = 0; i < 2; ++i) {
      hardware[i].asked = false;
      for (const auto& write : ports[i].Writes) hardware[i].Take(write);
      ports[i].Writes.clear();
      ports[i].Sent.clear();
      hardware[i].Move();
      if (hardware[i].asked && !hardware[i].silent) ports[i].Arrive(hardware[i].Reply());
    }
  }
  // The last value written to an override; -1 where none was.
  double Override(const std::string& name) {
    TakeDatagrams();
    const auto found = written.find("sim/operation/override/override_" + name);
    return found == written.end() ? -1 : found->second;
  }
  // The last value written to a dataref whose path ends so; NaN where none was.
  double Written(const std::string& name) {
    TakeDatagrams();
    for (const auto& [path, value] : written) {
      if (path.ends_with("/" + name)) return value;
    }
    return std::nan("");
  }
  void UsePedals() {
    YokeRecord& r = model.Yoke1;
    r.OptionBits |= yokeoption::kJoystick;
    r.RudderAxis = 1, r.LeftBrakeAxis = 2, r.RightBrakeAxis = 3;
    r.RudderLeft = StoredRaw(1000), r.RudderCentre = StoredRaw(30000), r.RudderRight = StoredRaw(60000);
    r.LeftBrakeReleased = r.RightBrakeReleased = StoredRaw(0);
    r.LeftBrakePressed = r.RightBrakePressed = StoredRaw(60000);
  }

 protected:
  void OpenAndRun() {
    for (std::size_t i = 0; i < 2; ++i) {
      if (pair.Configured(static_cast<int>(i) + 1)) ports[i].Open(static_cast<int>(i) + 5);
      ports[i].SetReceiveThreshold(25);
    }
    sim.OpenUDP();
    pair.Load();
    pair.OpenPorts();
    pair.cmdRun_Click();
  }
  void SendValues() {
    for (int port = 0; port < sim.PortCount(); ++port) {
      const int offset = sim.PortAt(port).FunctionNr - kFirstFfbFunction;
      if (FfbOffsets()[static_cast<std::size_t>(offset)].read && !frozen.contains(offset))
        socket.Deliver(RrefDatagram({{port, values_[offset]}}));
    }
  }
  void TakeDatagrams() {
    for (const std::string& bytes : socket.TakeSent()) {
      if (bytes.starts_with("CMND")) commands.emplace_back(bytes.c_str() + 5);
      if (!bytes.starts_with("DREF")) continue;
      const float value = FloatAt(bytes, 5);
      const std::string path = bytes.substr(9, bytes.find_first_of(std::string("\0 ", 2), 9) - 9);
      written[path] = value;
      OnWritten(path, value);
      for (int offset = 0; offset < kFfbOffsets; ++offset) {
        // The simulator keeps what it is told.
        if (!deaf && FfbOffsets()[static_cast<std::size_t>(offset)].dataref == path) values_[offset] = value;
      }
    }
  }
  virtual void OnWritten(const std::string&, float) {}
  std::map<int, float> values_;
};

}  // namespace tvx::test
