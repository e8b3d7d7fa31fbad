// Stand-ins for what the machine gives: message boxes, clock, timer.
#pragma once

#include <cstdint>
#include <ctime>
#include <deque>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/Host.h"
#include "tests/fakes/Texts.h"

namespace tvx {

// Records every text and answers questions from a queue (with `otherwise` when the queue is empty). A text
// that is asked for comes from `texts`; an empty queue cancels.
class FakeMessageBoxes : public MessageBoxes {
 public:
  Texts shown, asked, presets;
  std::deque<int> answers;
  std::deque<std::string> texts;
  int otherwise = kAnswerNo;
  std::function<void()> whileAsking;  // runs while a question stands

  void Show(std::string_view text) override { shown.emplace_back(text); }
  int Ask(std::string_view text) override {
    asked.emplace_back(text);
    if (whileAsking) whileAsking();
    if (answers.empty()) return otherwise;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
  }
  std::optional<std::string> AskText(std::string_view text, std::string_view preset) override {
    asked.emplace_back(text);
    presets.emplace_back(preset);
    if (texts.empty()) return std::nullopt;
    const std::string answer = texts.front();
    texts.pop_front();
    return answer;
  }
};

// Time that goes on only when a test says so.
class FakeClock : public Clock {
 public:
  std::int64_t now = 1000;  // ms
  std::tm local = Local();

  std::int64_t MonotonicMs() const override { return now; }
  std::tm LocalTime() const override { return local; }
  void Advance(std::int64_t milliseconds) { now += milliseconds; }

 private:
  static std::tm Local() {  // Tuesday 5 March 2024, 14:30:15
    std::tm t{};
    t.tm_year = 124;
    t.tm_mon = 2;
    t.tm_mday = 5;
    t.tm_wday = 2;
    t.tm_yday = 64;
    t.tm_hour = 14;
    t.tm_min = 30;
    t.tm_sec = 15;
    return t;
  }
};

class FakeTimer : public Timer {
 public:
  bool enabled = false;
  int interval = 0;  // ms

  void SetEnabled(bool on) override { enabled = on; }
  bool Enabled() const override { return enabled; }
  void SetInterval(int milliseconds) override { interval = milliseconds; }
};

}  // namespace tvx
