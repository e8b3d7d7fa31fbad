// Bytes on a line, written and read by people.
#pragma once

#include <sstream>
#include <string_view>

#include "tests/fakes/Texts.h"

namespace tvx {

// What is on the wire, in words: "P =5020 .. 0F" is a letter, a number of two bytes (the high one first), two
// zeros and a byte in hexadecimal digits.
inline Bytes Wire(std::string_view text) {
  Bytes bytes;
  std::istringstream words{std::string(text)};
  for (std::string word; words >> word;) {
    if (word[0] == '.') {
      bytes.resize(bytes.size() + word.size());
    } else if (word[0] == '=') {
      const int number = std::stoi(word.substr(1));
      bytes.insert(bytes.end(), {static_cast<Byte>(number >> 8), static_cast<Byte>(number)});
    } else {
      bytes.push_back(static_cast<Byte>(word.size() == 1 ? word[0] : std::stoi(word, nullptr, 16)));
    }
  }
  return bytes;
}
}  // namespace tvx
