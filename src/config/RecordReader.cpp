#include "config/RecordReader.h"

#include <algorithm>

#include "config/ValueText.h"

namespace tvx {
namespace {

[[noreturn]] void Fail(std::size_t line, std::string_view name, std::string_view what) {
  throw ConfigReadError("line " + std::to_string(line) + ", " + std::string(name) + ": " + std::string(what));
}

// The value for a message: cut when long, unprintable characters as '?'.
std::string Shown(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string shown(text.substr(0, longest));
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }, '?');
  if (text.size() > longest) shown += "...";
  return '"' + shown + '"';
}

[[noreturn]] void FailConversion(const RawValue& raw, std::string_view name, std::string_view due) {
  Fail(raw.line, name, Shown(raw.text) + " is not " + std::string(due));
}

}  // namespace

RawValue RecordReader::Take(std::string_view name) {
  if (!lines_.MoreValues()) Fail(lines_.LineBegun(), name, "the value is missing");
  const RawValue raw = lines_.Next(name);
  if (raw.text.empty() && !raw.quoted) Fail(raw.line, name, "the value is missing");
  return raw;
}

RawValue RecordReader::Number(std::string_view name) {
  const RawValue raw = Take(name);
  if (raw.quoted) Fail(raw.line, name, "the text " + Shown(raw.text) + " stands where a number is due");
  return raw;
}

void RecordReader::Value(std::string_view name, std::string& field) {
  const RawValue raw = Take(name);
  if (!raw.quoted) FailConversion(raw, name, "a text in double quotes");
  field.assign(raw.text);
}

void RecordReader::Value(std::string_view name, Byte& field) {
  const RawValue raw = Number(name);
  const auto value = ParseInteger<Byte>(raw.text);
  if (!value) FailConversion(raw, name, "a whole number between 0 and 255");
  field = *value;
}

void RecordReader::Value(std::string_view name, std::int16_t& field) {
  const RawValue raw = Number(name);
  const auto value = ParseInteger<std::int16_t>(raw.text);
  if (!value) FailConversion(raw, name, "a whole number between -32768 and 32767");
  field = *value;
}

void RecordReader::Value(std::string_view name, float& field) {
  const RawValue raw = Number(name);
  const auto value = ParseReal<float>(raw.text);
  if (!value) FailConversion(raw, name, "a number of single precision");
  field = *value;
}

void RecordReader::Value(std::string_view name, double& field) {
  const RawValue raw = Number(name);
  const auto value = ParseReal<double>(raw.text);
  if (!value) FailConversion(raw, name, "a number of double precision");
  field = *value;
}

std::size_t RecordReader::Count(std::string_view name) {
  lines_.BeginLine();
  const RawValue raw = Number(name);
  const auto value = ParseInteger<std::int16_t>(raw.text);
  if (!value || *value < 0) FailConversion(raw, name, "a whole number between 0 and 32767");
  lines_.EndLine();
  return static_cast<std::size_t>(*value);
}

std::string_view RecordReader::AnyKeyword() {
  lines_.BeginLine();
  const RawValue raw = lines_.Next("keyword");
  return raw.quoted && !lines_.MoreValues() ? raw.text : std::string_view();
}

void RecordReader::ExpectKeyword(std::string_view expected) {
  if (AnyKeyword() != expected) throw ConfigReadError("");
}

void RecordReader::SingleOrText(std::string_view name, Byte& field, std::string_view asZero) {
  const LineReader start = lines_;
  if (AnyKeyword() == asZero) {
    field = 0;
    return;
  }
  lines_ = start;
  Single(name, field);
}

}  // namespace tvx
