// The COM port's logic over a port that follows a script: breaks, carrier and refusals, which wine has none
// of.
#include <gtest/gtest.h>

#include <deque>

#include "platform/TtyPort.h"
#include "platform/windows/serial/CommTty.h"

namespace tvx::test {
namespace {

struct Script {
  std::deque<SerialState> openings;  // what each comes to
  std::vector<std::string> log;
  std::deque<std::pair<std::vector<Byte>, LineErrors>> arrivals;
  std::optional<bool> carrier = true;
  std::vector<Byte> written;
  std::size_t writing = 0;  // bytes under way
  bool gone = false;
  int open = 0;  // how many lines are open now
};

class ScriptedLine final : public CommLine {
 public:
  explicit ScriptedLine(Script& script) : script_(script) { ++script_.open; }
  ~ScriptedLine() override { --script_.open; }
  void* ReadEvent() const override { return &script_.arrivals; }
  void* WriteEvent() const override { return &script_.written; }
  bool BeginRead() override { return !script_.gone; }
  std::optional<std::size_t> EndRead(std::span<Byte> out) override {
    if (script_.gone) return std::nullopt;
    if (script_.arrivals.empty()) return 0;
    const auto [bytes, errors] = script_.arrivals.front();
    script_.arrivals.pop_front();
    errors_ = errors;
    std::copy(bytes.begin(), bytes.end(), out.begin());
    return bytes.size();
  }
  bool BeginWrite(ByteView bytes) override {
    EXPECT_LE(bytes.size(), kMostAtOnce);
    EXPECT_EQ(script_.writing, 0u) << "one at a time";
    script_.writing = bytes.size();
    script_.written.insert(script_.written.end(), bytes.begin(), bytes.end());
    return !script_.gone;
  }
  std::optional<std::size_t> EndWrite() override {
    if (script_.gone) return std::nullopt;
    return std::exchange(script_.writing, 0);
  }
  LineErrors TakeErrors() override { return std::exchange(errors_, {}); }
  std::optional<bool> Carrier() const override { return script_.carrier; }

 private:
  Script& script_;
  LineErrors errors_;
};

class ScriptedOpening final : public CommOpening {
 public:
  explicit ScriptedOpening(Script& script) : script_(script) {}
  void* DoneEvent() const override { return &script_.openings; }
  OpenedLine Take() override {
    const SerialState state = script_.openings.front();
    script_.openings.pop_front();
    if (state != SerialState::Open) return {state, nullptr};
    return {state, std::make_unique<ScriptedLine>(script_)};
  }

 private:
  Script& script_;
};

class ScriptedWatcher final : public HandleWatcher {
 public:
  static inline std::vector<ScriptedWatcher*> all;
  ScriptedWatcher() { all.push_back(this); }
  ~ScriptedWatcher() override { std::erase(all, this); }
  void SetCallback(std::function<void()> signalled) override { signalled_ = std::move(signalled); }
  void Attach(void* event) override { event_ = event; }
  void Release() override { event_ = nullptr; }
  // False where nobody waits for the event.
  static bool Signal(const void* event) {
    for (ScriptedWatcher* watcher : all) {
      if (watcher->event_ != event) continue;
      watcher->signalled_();
      return true;
    }
    return false;
  }

 private:
  std::function<void()> signalled_;
  void* event_ = nullptr;
};

struct ComPort : testing::Test {
  ComPort() {
    handler_ = port_.SetHandler([this](SerialEvent event) {
      std::array<Byte, 64> bytes{};
      if (event == SerialEvent::Received) {
        for (const Byte byte : std::span(bytes).first(port_.Read(bytes)))
          heard_ += std::to_string(byte) + ' ';
      } else {
        heard_ += event == SerialEvent::Break ? "break " : "framing ";
      }
    });
    watcher_ = port_.SetWatcher([this] { ++told_; });
  }
  void Open(SerialState state = SerialState::Open) {
    script_.openings.push_back(state);
    port_.Open(5);
    EXPECT_EQ(port_.State(), SerialState::Opening);
    ASSERT_TRUE(ScriptedWatcher::Signal(&script_.openings));
  }
  void Arrive(std::vector<Byte> bytes, LineErrors errors = {}) {
    script_.arrivals.emplace_back(std::move(bytes), errors);
    EXPECT_TRUE(ScriptedWatcher::Signal(&script_.arrivals));
  }
  std::string Heard() { return std::exchange(heard_, {}); }

  Script script_;
  TtyPort port_{std::make_unique<CommTty>(
      [this](const std::string& name, SerialReset reset) {
        script_.log.push_back(name + (reset == SerialReset::Yes ? " twice" : ""));
        return std::make_unique<ScriptedOpening>(script_);
      },
      [] { return std::make_unique<ScriptedWatcher>(); },
      [](int number) { return number > 0 ? "COM" + std::to_string(number) : std::string(); })};
  Registration handler_, watcher_;
  std::string heard_;
  int told_ = 0;
};

TEST_F(ComPort, SaysHowAnOpeningEnded) {
  for (const SerialState state : {SerialState::NotFound, SerialState::Busy, SerialState::Failed}) {
    Open(state);
    EXPECT_EQ(port_.State(), state);
    EXPECT_EQ(port_.Device(), "COM5");
  }
  port_.Open(0);
  EXPECT_EQ(port_.State(), SerialState::NotFound);
  port_.Open(7, SerialReset::Yes);
  EXPECT_EQ(script_.log.back(), "COM7 twice");
  port_.Close();
  EXPECT_FALSE(ScriptedWatcher::Signal(&script_.openings)) << "nobody waits for it any more";
  Open();
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_TRUE(port_.Assigned());
  port_.Close();
  EXPECT_EQ(script_.open, 0);
}

TEST_F(ComPort, HearsEveryByteAndTheErrorsBehindThem) {
  Open();
  Arrive({1, 0, 255, 255, 254});
  EXPECT_EQ(Heard(), "1 0 255 255 254 ");
  Arrive({7}, {true, false});
  EXPECT_EQ(Heard(), "7 break ");
  Arrive({8}, {false, true});
  EXPECT_EQ(Heard(), "8 framing ");
  Arrive({}, {true, true});
  EXPECT_EQ(Heard(), "framing break ");
  Arrive({255}, {true, false});
  EXPECT_EQ(Heard(), "255 break ");
  Arrive({});
  EXPECT_EQ(Heard(), "");
}

TEST_F(ComPort, QueuesWhileAWriteIsUnderWay) {
  Open();
  const std::vector<Byte> batch(1500, 1);
  EXPECT_TRUE(port_.Write(batch));
  EXPECT_TRUE(port_.Write(batch)) << "behind the first";
  EXPECT_TRUE(port_.Write(batch)) << "its end waits in the port";
  EXPECT_FALSE(port_.Write(batch)) << "full";
  EXPECT_EQ(script_.written.size(), 1500u);
  for (int i = 0; i < 4; ++i) ScriptedWatcher::Signal(&script_.written);
  EXPECT_EQ(script_.written.size(), 4500u) << "every byte once, none cut off";
  EXPECT_TRUE(port_.Write(batch));
}

TEST_F(ComPort, ACarrierThatChangesIsTold) {
  Open();
  EXPECT_EQ(port_.CarrierDetect(), true);
  const int before = told_;
  port_.AskCarrier();
  EXPECT_EQ(told_, before);
  script_.carrier = false;
  port_.AskCarrier();
  EXPECT_EQ(port_.CarrierDetect(), false);
  EXPECT_EQ(told_, before + 1);
  script_.carrier = std::nullopt;
  port_.AskCarrier();
  EXPECT_EQ(port_.CarrierDetect(), std::nullopt);
}

TEST_F(ComPort, APulledAdapterIsUnpluggedHoweverItShows) {
  const auto arrival = [this] { ScriptedWatcher::Signal(&script_.arrivals); };
  const auto end = [this] { ScriptedWatcher::Signal(&script_.written); };
  const auto write = [this] { EXPECT_FALSE(port_.Write(std::vector<Byte>{1})); };
  for (const std::function<void()>& shows :
       {std::function<void()>(arrival), std::function<void()>(end), std::function<void()>(write)}) {
    script_.gone = false;
    script_.writing = 0;
    Open();
    script_.gone = true;
    shows();
    EXPECT_EQ(port_.State(), SerialState::Unplugged);
    EXPECT_EQ(script_.open, 0) << "let go";
  }
}

}  // namespace
}  // namespace tvx::test
