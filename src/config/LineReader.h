// The line syntax that the configuration file and the start-up file share.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tvx {

// A file that does not hold what is due. The text is the description for the user: line, field, what is
// wrong; empty for an unexpected keyword.
class ConfigReadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One value as it stands in the file.
struct RawValue {
  std::string_view text;  // without the quotes, and without the blanks around it
  bool quoted = false;
  std::size_t line = 0;  // where it begins, counted from 1
};

// Cuts a text into values. A logical line ends with LF or CR LF outside quotes; a quoted text runs to its
// closing quote, across line ends.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : text_(text) {}

  // Begins the next logical line; ConfigReadError at the end of the file.
  void BeginLine();
  // True while the line that was begun has a further value.
  bool MoreValues() const { return more_; }
  // The next value of the line, which the file calls `name`. ConfigReadError where a text has no closing
  // quote, or is followed by anything but a comma, blanks or the line's end.
  RawValue Next(std::string_view name);
  // ConfigReadError when values of the line are left.
  void EndLine() const;

  // Number of the physical line on which the line that was begun begins, from 1.
  std::size_t LineBegun() const { return lineBegun_; }

 private:
  RawValue NextQuoted(std::string_view name);
  void SkipBlanks();
  void EndValue();

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  std::size_t lineBegun_ = 1;
  bool more_ = false;
};

}  // namespace tvx
