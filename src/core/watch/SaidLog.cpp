#include "core/watch/SaidLog.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tvx {
namespace {

bool IsFigure(char c) {
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

bool IsInsideLetter(char c) {  // a byte of a UTF-8 letter, other than its first
  return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

}  // namespace

void SaidLog::Note(std::string_view text) {
  if (text.empty()) return;
  const std::tm now = clock_.LocalTime();
  std::array<char, 32> time{};
  std::strftime(time.data(), time.size(), "%Y-%m-%d %H:%M:%S  ", &now);
  std::size_t length = std::min(text.size(), kLongest);
  while (length < text.size() && length > 0 && IsInsideLetter(text[length])) --length;
  std::string line = time.data();
  line += text.substr(0, length);
  std::erase(line, '\r');
  std::replace(line.begin(), line.end(), '\n', ' ');
  if (lines_.size() == kKept) lines_.pop_front();
  lines_.push_back(std::move(line));
  changed_();
}

void SaidLog::NoteState(std::string_view name, std::string_view text) {
  auto state = std::find_if(states_.begin(), states_.end(), [&](const State& s) { return s.name == name; });
  if (state == states_.end()) {
    states_.push_back({std::string(name), {}, clock_.MonotonicMs() - kStateEveryMs});
    state = states_.end() - 1;
  }
  std::string words(text);
  std::erase_if(words, IsFigure);
  if (words == state->withoutFigures) return;
  if (clock_.MonotonicMs() - state->notedMs < kStateEveryMs) return;
  state->notedMs = clock_.MonotonicMs();
  state->withoutFigures = std::move(words);
  Note(text);
}

void SaidLog::NoteBox(std::string_view text) {
  Note(text);
  shown_(text);
}

void NotedBoxes::Show(std::string_view text) {
  log_.NoteBox(text);
  boxes_.Show(text);
}

int NotedBoxes::Ask(std::string_view text) {
  log_.NoteBox(text);
  return Answered(boxes_.Ask(text));
}

int NotedBoxes::AskToGoOn(std::string_view text) {
  log_.NoteBox(text);
  return Answered(boxes_.AskToGoOn(text));
}

std::optional<std::string> NotedBoxes::AskText(std::string_view text, std::string_view preset) {
  log_.NoteBox(text);
  auto answer = boxes_.AskText(text, preset);
  log_.Note(answer ? "Answered: " + *answer : "Answered: Cancel");
  return answer;
}

int NotedBoxes::Answered(int answer) {
  log_.Note(answer == kAnswerYes ? "Answered: Yes" : "Answered: No");
  return answer;
}

}  // namespace tvx
