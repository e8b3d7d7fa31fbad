// The process of one life.
#pragma once

#include <cstdint>

namespace tvx::monkey {

// Lives the life with this seed in the current folder, which is empty at first. Returns the process's status:
// 0 where the program did well.
int Live(std::uint64_t seed, int argc, char** argv);

}  // namespace tvx::monkey
