#include "base/NamedTexts.h"

#include <algorithm>

namespace tvx {
namespace {

struct Place {
  std::size_t first = std::string_view::npos, end = 0;  // of "name=value", without the semicolon behind it
  bool Found() const { return first != std::string_view::npos; }
};

Place Find(std::string_view all, std::string_view name) {
  for (std::size_t first = 0; first < all.size();) {
    const std::size_t end = std::min(all.find(';', first), all.size());
    const std::string_view part = all.substr(first, end - first);
    if (part.size() > name.size() && part.starts_with(name) && part[name.size()] == '=') return {first, end};
    first = end + 1;
  }
  return {};
}

}  // namespace

std::string NamedText(std::string_view all, std::string_view name) {
  const Place place = Find(all, name);
  if (!place.Found()) return {};
  const std::size_t value = place.first + name.size() + 1;
  return std::string(all.substr(value, place.end - value));
}

void SetNamedText(std::string& all, std::string_view name, std::string_view value) {
  std::string part;
  if (!value.empty()) {
    part = std::string(name) + "=" + std::string(value);
    std::replace_if(
        part.begin(), part.end(), [](char c) { return c == ';' || c == '"'; }, ' ');
  }
  const Place place = Find(all, name);
  if (!place.Found()) {
    if (!part.empty()) all += (all.empty() ? "" : ";") + part;
    return;
  }
  std::size_t first = place.first, end = place.end;
  if (part.empty()) {  // one of the semicolons beside it goes as well
    if (end < all.size()) {
      ++end;
    } else if (first > 0) {
      --first;
    }
  }
  all.replace(first, end - first, part);
}

}  // namespace tvx
