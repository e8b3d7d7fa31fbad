// What the program has said lately, with the time: its messages and questions, and how its links stood.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Registration.h"
#include "platform/Host.h"

namespace tvx {

class SaidLog {
 public:
  static constexpr std::size_t kKept = 1000;            // lines; the oldest is forgotten
  static constexpr std::size_t kLongest = 500;          // bytes of a line's text; what is longer is cut
  static constexpr std::int64_t kStateEveryMs = 10000;  // a state that changes faster is noted so often

  explicit SaidLog(const Clock& clock) : clock_(clock) {}

  // In one line; an empty text is not noted.
  void Note(std::string_view text);
  // The state of something that is told again and again: noted where it differs from what was noted last
  // under this name by more than its figures.
  void NoteState(std::string_view name, std::string_view text);
  // A message or question that stands on the screen now; also tells whoever watches.
  void NoteBox(std::string_view text);
  // "2026-11-22 05:57:02  text", a line for each, the oldest first.
  const std::deque<std::string>& Lines() const { return lines_; }
  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }
  Registration WatchBoxes(std::function<void(std::string_view)> shown) {
    return shown_.Give(std::move(shown));
  }

 private:
  struct State {
    std::string name, withoutFigures;
    std::int64_t notedMs = 0;
  };
  const Clock& clock_;
  std::deque<std::string> lines_;
  std::vector<State> states_;  // one for each name
  Callback<> changed_;
  Callback<std::string_view> shown_;
};

// Message boxes whose texts, and what was answered, are noted.
class NotedBoxes final : public MessageBoxes {
 public:
  NotedBoxes(MessageBoxes& boxes, SaidLog& log) : boxes_(boxes), log_(log) {}
  void Show(std::string_view text) override;
  int Ask(std::string_view text) override;
  int AskToGoOn(std::string_view text) override;
  std::optional<std::string> AskText(std::string_view text, std::string_view preset) override;
  void Dismiss() override { boxes_.Dismiss(); }

 private:
  int Answered(int answer);

  MessageBoxes& boxes_;
  SaidLog& log_;
};

}  // namespace tvx
