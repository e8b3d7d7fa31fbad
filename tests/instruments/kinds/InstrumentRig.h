// One instrument at 12 in a whole cockpit in memory, with its replies.
#pragma once

#include "base/NumberFormat.h"
#include "core/GaugeReceiver.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx {

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

struct InstrumentRig : CockpitRig {
  GaugeReceiver receiver{model, serial, cycle, sim, special};
  Registration events;

  InstrumentRig() {
    events = Bus().SetHandler([this](SerialEvent event) { receiver.OnComm(event, true); });
    for (int n = 1; n <= 58; ++n) Define(n);
    for (int n = 91; n <= 120; ++n) Define(n);
    for (const int n : {143, 144, 280, 281}) Define(n);
    verbs = {{"values", [this](const std::string& values) { SetAll(values); }},
             {"reply", [this](const std::string& reply) { return Reply(model.Gauges[12].GaugeType, reply); }},
             {"tick", [this] { return TickText(); }},
             {"cycle", [this] { cycle.Tick(); }},
             {"hold", [this] { PassHold(); }}};
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
  // The simulator sends "51=9.5 47/2=1": values of Functions, with the sequence number where it is not 1.
  void SetAll(const std::string& values) {
    std::istringstream words(values);
    for (std::string word; words >> word;) {
      const std::size_t slash = word.find('/'), equals = word.find('=');
      Set(std::stoi(word), std::stof(word.substr(equals + 1)),
          slash < equals ? std::stoi(word.substr(slash + 1)) : 1);
    }
  }
  // The values that a tick sends the instrument: "5:1080 6:0" are the values of its commands 5 and 6.
  std::string TickText() {
    std::string text;
    for (const SentCommand& c : TickValues()) {
      if (model.Gauges[12].GaugeType == 122 && c.command == 5) continue;  // its poll
      text += (text.empty() ? "" : " ") + std::to_string(c.command) + ':' + std::to_string(c.value);
    }
    return text;
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
  // A reply "PP 7:03F5 12:80": its two letters, and hexadecimal bytes from byte 7 and from byte 12 on.
  static std::vector<Byte> ReplyOf(int type, const std::string& text) {
    std::vector<Byte> reply = ReplyBytes(type, "");
    std::istringstream words(text);
    for (std::string word; words >> word;) {
      const std::size_t colon = word.find(':');
      if (colon == std::string::npos) {
        reply[5] = static_cast<Byte>(word[0]), reply[8] = static_cast<Byte>(word[1]);
        continue;
      }
      std::size_t at = std::stoul(word) - 1;
      for (std::size_t i = colon + 1; i < word.size(); i += 2)
        reply[at++] = static_cast<Byte>(std::stoi(word.substr(i, 2), nullptr, 16));
    }
    return reply;
  }
  // Sends one reply and returns what the simulator got for it.
  std::string Reply(int type, const std::string& text) {
    socket.TakeSent();
    Bus().Arrive(ReplyOf(type, text));
    std::string sent;
    for (const std::string& datagram : socket.TakeSent())
      sent += (sent.empty() ? "" : ", ") + Describe(datagram);
    return sent;
  }
  // So much time that no knob is held any more.
  void PassHold() {
    for (std::uint32_t i = 0; i <= cycle.TicksPerSecond(); ++i) cycle.Tick();
  }
};

}  // namespace tvx
