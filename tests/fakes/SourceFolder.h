// Where the project's files are, for tests that compare with committed ones.
#pragma once

#include <cstdlib>
#include <filesystem>

namespace tvx {

// ctest says it in TVX_SOURCE_DIR; a test program that is started by hand is started in the project's folder.
inline std::filesystem::path SourceFolder() {
  const char* folder = std::getenv("TVX_SOURCE_DIR");
  return folder != nullptr ? std::filesystem::path(folder) : std::filesystem::current_path();
}

}  // namespace tvx
