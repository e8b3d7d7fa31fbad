// What nearly every test uses: GoogleTest, the standard library's containers, and the words that a text
// holds.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

#include "tests/fakes/Texts.h"

namespace tvx {

// Whether the words stand in the text; a test that fails by it shows the text.
inline testing::AssertionResult Holds(std::string_view text, std::string_view words) {
  const bool holds = text.find(words) != std::string_view::npos;
  return (holds ? testing::AssertionSuccess() : testing::AssertionFailure())
         << '"' << words << "\" in \"" << text << '"';
}
inline testing::AssertionResult Begins(std::string_view text, std::string_view words) {
  const bool begins = text.starts_with(words);
  return (begins ? testing::AssertionSuccess() : testing::AssertionFailure())
         << '"' << words << "\" begins \"" << text << '"';
}

}  // namespace tvx
