#include "config/LineReader.h"

#include <algorithm>

namespace tvx {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

[[noreturn]] void Fail(std::size_t line, std::string_view what) {
  throw ConfigReadError("line " + std::to_string(line) + ": " + std::string(what));
}

[[noreturn]] void Fail(std::size_t line, std::string_view name, std::string_view what) {
  throw ConfigReadError("line " + std::to_string(line) + ", " + std::string(name) + ": " + std::string(what));
}

}  // namespace

void LineReader::BeginLine() {
  if (at_ >= text_.size()) Fail(line_, "the file ends too early");
  lineBegun_ = line_;
  more_ = true;
}

RawValue LineReader::Next(std::string_view name) {
  SkipBlanks();
  if (at_ < text_.size() && text_[at_] == '"') return NextQuoted(name);
  const std::size_t begin = at_;
  at_ = std::min(text_.find_first_of(",\n", at_), text_.size());
  std::size_t end = at_;
  if (end > begin && (end == text_.size() || text_[end] == '\n') && text_[end - 1] == '\r') --end;
  while (end > begin && IsBlank(text_[end - 1])) --end;
  const RawValue value{text_.substr(begin, end - begin), false, line_};
  EndValue();
  return value;
}

RawValue LineReader::NextQuoted(std::string_view name) {
  const std::size_t line = line_;
  const std::size_t begin = at_ + 1;
  const std::size_t end = text_.find('"', begin);
  if (end == std::string_view::npos) Fail(line, name, "the text has no closing quote");
  const std::string_view content = text_.substr(begin, end - begin);
  line_ += static_cast<std::size_t>(std::count(content.begin(), content.end(), '\n'));
  at_ = end + 1;
  SkipBlanks();
  if (text_.substr(at_).starts_with("\r\n")) ++at_;
  if (at_ < text_.size() && text_[at_] != ',' && text_[at_] != '\n') {
    Fail(line, name, "something follows the text's closing quote");
  }
  EndValue();
  return {content, true, line};
}

void LineReader::EndLine() const {
  if (more_) Fail(lineBegun_, "more values than are due");
}

void LineReader::SkipBlanks() {
  while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
}

// Steps over the comma or the line end that follows a value.
void LineReader::EndValue() {
  more_ = at_ < text_.size() && text_[at_] == ',';
  if (at_ >= text_.size()) return;
  if (text_[at_] == '\n') ++line_;
  ++at_;
}

}  // namespace tvx
