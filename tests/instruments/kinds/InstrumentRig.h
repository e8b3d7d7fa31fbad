// One instrument at 12 in a whole cockpit in memory, with its replies.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/NumberFormat.h"
#include "core/GaugeReceiver.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx {

using Commands = std::vector<SentCommand>;
using Texts = std::vector<std::string>;

// "DATA 20/0=11850." and the like, of a datagram that was sent.
inline std::string Describe(const std::string& bytes) {
  const auto number = [&bytes](std::size_t at) {
    return FormatNumberText(static_cast<double>(FloatAt(bytes, at)), "0.###");
  };
  const std::string tag = bytes.substr(0, 4);
  if (tag == "CMND") return bytes;
  if (tag == "DREF") return "DREF " + std::string(bytes.c_str() + 9) + "=" + number(5);
  if (tag != "DATA") return tag;
  for (std::size_t slot = 0; slot < 8; ++slot) {
    if (FloatAt(bytes, 9 + 4 * slot) == -999.0f) continue;
    return "DATA " + std::to_string(static_cast<unsigned char>(bytes[5])) + "/" + std::to_string(slot) + "=" +
           number(9 + 4 * slot);
  }
  return "DATA without a value";
}

struct ByteAt {
  std::size_t number;  // from 1
  int value;
};

struct InstrumentRig : CockpitRig {
  GaugeReceiver receiver{model, serial, cycle, sim, special};
  Registration events;

  InstrumentRig() {
    events = Bus().SetHandler([this](SerialEvent event) { receiver.OnComm(event, true); });
    for (int n = 1; n <= 58; ++n) Define(n);
    for (int n = 91; n <= 120; ++n) Define(n);
    for (const int n : {143, 144, 280, 281}) Define(n);
    model.Functions[281].boxMinimumValue = -1;
    model.Functions[281].boxMaximumValue = 1;
  }
  // Starts with the instrument; its first tick and the lighting are over then.
  void StartWith(int type, int options = 0, int function1 = 0, int function2 = 0) {
    GaugeRecord& gauge = AddGauge(12, type);
    gauge.GaugeSetting5 = static_cast<std::int16_t>(options);
    gauge.GaugeFunction1 = static_cast<std::int16_t>(function1);
    gauge.GaugeFunction2 = static_cast<std::int16_t>(function2);
    Start();
    cycle.Tick();
    cycle.Tick();
  }
  const GaugeDriver& Driver() { return *cycle.GaugeWithID(12)->Driver; }

  static std::vector<Byte> ReplyBytes(int type, std::string_view letters, int fill = 0) {
    std::vector<Byte> reply(kReplySize, static_cast<Byte>(fill));
    reply[0] = 0;
    reply[1] = 12;
    reply[2] = static_cast<Byte>(type);
    if (!letters.empty()) reply[5] = static_cast<Byte>(letters[0]), reply[8] = static_cast<Byte>(letters[1]);
    reply[24] = 0xFF;
    return reply;
  }
  // Sends one reply and returns what the simulator got for it.
  Texts Reply(int type, std::initializer_list<ByteAt> bytes, std::string_view letters = "") {
    std::vector<Byte> reply = ReplyBytes(type, letters);
    for (const ByteAt& b : bytes) reply[b.number - 1] = static_cast<Byte>(b.value);
    socket.TakeSent();
    Bus().Arrive(reply);
    Texts sent;
    for (const std::string& datagram : socket.TakeSent()) sent.push_back(Describe(datagram));
    return sent;
  }
};

}  // namespace tvx
