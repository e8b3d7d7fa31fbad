// How often this test program allocated. Only programs that link AllocationCount.cpp count (COUNTS in
// tests/CMakeLists.txt); in the others it stays 0.
#pragma once

#include <cstddef>

namespace tvx {

inline std::size_t allocations = 0;
inline int allocationPauses = 0;

// While one lives, what is allocated does not count: for fakes that record what the program did.
class AllocationPause {
 public:
  AllocationPause() { ++allocationPauses; }
  ~AllocationPause() { --allocationPauses; }
  AllocationPause(const AllocationPause&) = delete;
  AllocationPause& operator=(const AllocationPause&) = delete;
};

}  // namespace tvx
