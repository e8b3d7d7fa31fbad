// The Functions by number, and how often they may have changed.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "config/Records.h"

namespace tvx {

inline constexpr int kFunctions = 301;  // Function numbers 0..300

// An array whose every way to a record that can be written counts as a change. Who keeps something that was
// worked out from the records compares Revision() and works it out again. A reference that was taken to write
// must be used up before the event loop goes on: what is written through it later is not counted.
class FunctionTable {
 public:
  using Records = std::array<FunctionRecord, static_cast<std::size_t>(kFunctions)>;

  FunctionTable() = default;
  FunctionTable(const FunctionTable&) = default;
  FunctionTable& operator=(const FunctionTable& other) {
    Write() = other.records_;
    return *this;
  }
  ~FunctionTable() = default;

  static constexpr std::size_t size() { return static_cast<std::size_t>(kFunctions); }
  const FunctionRecord& operator[](std::size_t number) const { return records_[number]; }
  FunctionRecord& operator[](std::size_t number) { return Write()[number]; }
  Records::const_iterator begin() const { return records_.begin(); }
  Records::const_iterator end() const { return records_.end(); }
  Records::iterator begin() { return Write().begin(); }
  Records::iterator end() { return Write().end(); }

  // Another number after every change; the same number means the same records.
  std::uint64_t Revision() const { return revision_; }

 private:
  Records& Write() {
    ++revision_;
    return records_;
  }

  Records records_{};
  std::uint64_t revision_ = 0;
};

}  // namespace tvx
