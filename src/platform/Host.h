// The rest of what the machine gives: message boxes, timers, clock.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace tvx {

// Answer codes of a Yes/No question.
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // A modal box with one OK button. Returns at once: the program goes on while the box stands, so that an
  // unattended run is never held up by one. A text that is being shown already is not shown twice.
  virtual void Show(std::string_view text) = 0;
  // A Yes/No question. Returns kAnswerYes or kAnswerNo (closing the box is No); events are handled meanwhile.
  // No is what Enter answers: Yes may destroy something.
  virtual int Ask(std::string_view text) = 0;
  // The same for a question whose Yes destroys nothing: Enter answers Yes.
  virtual int AskToGoOn(std::string_view text) { return Ask(text); }
  // Asks for a line of text: the question, and the text that the box begins with. std::nullopt when the user
  // cancels, and where nobody can be asked. Events are handled meanwhile.
  virtual std::optional<std::string> AskText(std::string_view, std::string_view) { return std::nullopt; }
  // The program ends: every box is taken away, a question with No or without a text, and from now on none is
  // put up and nobody is asked.
  virtual void Dismiss() {}
};

// A repeating timer that a form owns and the logic switches. It never fires by itself here: its form calls
// the logic's tick operation.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Enabled() const = 0;
  virtual void SetInterval(int milliseconds) = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  // Milliseconds on a clock that never jumps.
  virtual std::int64_t MonotonicMs() const = 0;
  // The computer's local calendar time.
  virtual std::tm LocalTime() const = 0;
};

}  // namespace tvx
