#include "base/SearchWords.h"

#include <algorithm>
#include <utility>

namespace tvx {
namespace {

char Small(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string SmallLetters(std::string_view text) {
  std::string small(text);
  std::transform(small.begin(), small.end(), small.begin(), Small);
  return small;
}

std::vector<std::string> SearchWords(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : SmallLetters(text)) {
    if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
      word += c;
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  if (!word.empty()) words.push_back(word);
  return words;
}

bool HoldsEvery(const std::vector<std::string>& words, std::string_view smallText) {
  return std::all_of(words.begin(), words.end(), [smallText](const std::string& word) {
    return smallText.find(word) != std::string_view::npos;
  });
}

}  // namespace tvx
