// Reads records of typed fields, with errors that name line and field.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Bytes.h"
#include "config/LineReader.h"

namespace tvx {

// Reads a file line by line into typed fields, in file order. Each operation takes one logical line and
// throws ConfigReadError when the line does not hold exactly what is due; fields before the bad one are set
// then.
class RecordReader {
 public:
  explicit RecordReader(std::string_view text) : lines_(text) {}

  // The keyword of a line of one text value; empty where the line is anything else.
  std::string_view AnyKeyword();
  // A keyword that must stand here; ConfigReadError with an empty description otherwise.
  void ExpectKeyword(std::string_view expected);
  // A line of one whole number 0..32767.
  std::size_t Count(std::string_view name);
  // A line of one value.
  template <typename T>
  void Single(std::string_view name, T& field) {
    lines_.BeginLine();
    Value(name, field);
    lines_.EndLine();
  }
  // A line of the record's fields, as its list names them.
  template <typename Record>
  void Fields(Record& record) {
    lines_.BeginLine();
    Record::Fields(record, [this](std::string_view name, auto& field) { this->Value(name, field); });
    lines_.EndLine();
  }
  // A line of one value for each field that `list` names to the visitor it is given.
  template <typename List>
  void EachOnItsLine(List&& list) {
    list([this](std::string_view name, auto& field) { this->Single(name, field); });
  }
  // A line of several values, read by hand with Value.
  void BeginLine() { lines_.BeginLine(); }
  void EndLine() { lines_.EndLine(); }

  void Value(std::string_view name, std::string& field);
  void Value(std::string_view name, Byte& field);
  void Value(std::string_view name, std::int16_t& field);
  void Value(std::string_view name, float& field);
  void Value(std::string_view name, double& field);

  // A line of one byte; a line that is the text `asZero` counts as 0.
  void SingleOrText(std::string_view name, Byte& field, std::string_view asZero);

 private:
  RawValue Number(std::string_view name);
  RawValue Take(std::string_view name);

  LineReader lines_;
};

}  // namespace tvx
