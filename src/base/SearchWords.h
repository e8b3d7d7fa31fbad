// Searching as one types: what is looked for are words, in any order; large and small letters are the same.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tvx {

// ASCII letters only; all else stays as it is.
std::string SmallLetters(std::string_view text);
// What stands between blanks, tabs and line ends, in small letters.
std::vector<std::string> SearchWords(std::string_view text);
// Whether `smallText`, in small letters already, has every one of the words. No words are in every text.
bool HoldsEvery(const std::vector<std::string>& words, std::string_view smallText);

}  // namespace tvx
