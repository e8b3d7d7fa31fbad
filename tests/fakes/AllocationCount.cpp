// Counts every allocation of this test program. A file of its own, so that the compiler cannot inline half of
// a pair and take the other for a mismatch.
#include "tests/fakes/AllocationCount.h"

#include <cstdlib>
#include <new>

void* operator new(std::size_t size) {
  if (tvx::allocationPauses == 0) ++tvx::allocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
