// A tty that stands for the kernel and follows a test's script: it hangs, fails, takes half, or comes back
// elsewhere.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/TtyDevice.h"

namespace tvx {

class FaultTty final : public TtyDevice {
 public:
  // What a test and the tty's owner share: the owner may be gone first.
  struct Script {
    // What each opening comes to, in turn; empty: it hangs until Answer.
    std::deque<TtyAnswer> openings;
    TtyName name{"/dev/fault0", "dialout", true};
    std::deque<std::size_t> room;  // how much each write takes, in turn; afterwards everything
    bool gone = false;             // reading and writing find no device
    LineCounts counts;

    std::vector<std::string> log;  // "open 5", "open 5 twice", "close", "ask carrier"
    std::vector<Byte> input, output;
    bool watchingWrite = false;
    FaultTty* tty = nullptr;

    void Answer(const TtyAnswer& answer) const {
      if (tty != nullptr && tty->pending_) {
        tty->pending_ = false;
        tty->callbacks_.opened(answer);
      }
    }
    void Carrier(std::optional<bool> carrier) const { tty->callbacks_.carrier(carrier); }
    void Arrive(ByteView bytes) {
      input.insert(input.end(), bytes.begin(), bytes.end());
      tty->callbacks_.readable();
    }
    void Writable() const { tty->callbacks_.writable(); }
    void Gone() const { tty->callbacks_.gone(); }
  };

  explicit FaultTty(Script& script) : script_(script) { script_.tty = this; }
  ~FaultTty() override { script_.tty = nullptr; }

  void SetCallbacks(Callbacks callbacks) override { callbacks_ = std::move(callbacks); }
  void Open(int comNumber, SerialReset reset) override {
    script_.log.push_back("open " + std::to_string(comNumber) + (reset == SerialReset::Yes ? " twice" : ""));
    pending_ = true;
    if (script_.openings.empty()) return;
    const TtyAnswer answer = script_.openings.front();
    script_.openings.pop_front();
    script_.Answer(answer);
  }
  void Close() override {
    script_.log.push_back("close");
    pending_ = false;
  }
  TtyName Name() const override { return script_.name; }
  void AskCarrier() override { script_.log.push_back("ask carrier"); }
  std::optional<std::size_t> Read(std::span<Byte> out) override {
    if (script_.gone) return std::nullopt;
    const std::size_t count = std::min(out.size(), script_.input.size());
    const auto end = script_.input.begin() + static_cast<std::ptrdiff_t>(count);
    std::copy(script_.input.begin(), end, out.begin());
    script_.input.erase(script_.input.begin(), end);
    return count;
  }
  std::optional<std::size_t> Write(ByteView bytes) override {
    if (script_.gone) return std::nullopt;
    std::size_t count = bytes.size();
    if (!script_.room.empty()) {
      count = std::min(count, script_.room.front());
      script_.room.pop_front();
    }
    script_.output.insert(script_.output.end(), bytes.begin(),
                          bytes.begin() + static_cast<std::ptrdiff_t>(count));
    return count;
  }
  void WatchWrite(bool enabled) override { script_.watchingWrite = enabled; }
  LineCounts Counts() const override { return script_.counts; }

 private:
  Script& script_;
  Callbacks callbacks_;
  bool pending_ = false;
};

}  // namespace tvx
