#include "config/setup/KeptFiles.h"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/LocalTime.h"

namespace tvx {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBackups = 10;
constexpr std::string_view kDatePattern = "0000-00-00";  // a 0 stands for any digit

// The date as it is written, and which one of that day.
using Place = std::pair<std::string, int>;

std::string_view EndingOf(KeptAs as) {
  return as == KeptAs::Backup ? ".bak" : as == KeptAs::Unread ? ".unread" : ".unsaved";
}

bool IsDate(std::string_view text) {
  return std::equal(text.begin(), text.end(), kDatePattern.begin(), kDatePattern.end(),
                    [](char c, char due) { return due == '0' ? c >= '0' && c <= '9' : c == due; });
}

// What stands between a file's name and the ending; std::nullopt for names of other files.
std::optional<Place> PlaceOf(std::string_view name, std::string_view file, std::string_view ending) {
  if (!name.starts_with(file) || !name.ends_with(ending)) return std::nullopt;
  name.remove_prefix(file.size());
  if (name.size() < 1 + kDatePattern.size() + ending.size() || name.front() != '.') return std::nullopt;
  name.remove_suffix(ending.size());
  const std::string_view date = name.substr(1, kDatePattern.size());
  std::string_view number = name.substr(1 + kDatePattern.size());
  if (!IsDate(date)) return std::nullopt;
  if (number.empty()) return Place(date, 1);
  int which = 0;
  const auto [end, error] = std::from_chars(number.data() + 1, number.data() + number.size(), which);
  if (number.front() != '_' || error != std::errc() || end != number.data() + number.size())
    return std::nullopt;
  return Place(date, which);
}

// In the order in which they were made.
std::vector<std::pair<Place, fs::path>> KeptOf(const fs::path& path, KeptAs as) {
  std::vector<std::pair<Place, fs::path>> kept;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : ".";
  std::error_code code;
  for (fs::directory_iterator entry(folder, code), end; !code && entry != end; entry.increment(code)) {
    if (auto place = PlaceOf(entry->path().filename().string(), path.filename().string(), EndingOf(as))) {
      kept.emplace_back(std::move(*place), entry->path());
    }
  }
  std::sort(kept.begin(), kept.end());
  return kept;
}

std::string Today() {
  const std::tm local = LocalTimeOf(std::time(nullptr));
  char text[16];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d", &local)};
}

}  // namespace

std::string NextKeptName(const std::string& path, KeptAs as) {
  // Where the clock was set back, the row goes on with its last date: the newest must not be the first to go.
  std::string date = Today();
  int number = 1;
  if (const auto kept = KeptOf(path, as); !kept.empty() && kept.back().first.first >= date) {
    date = kept.back().first.first;
    number = kept.back().first.second + 1;
  }
  std::string name = path + '.' + date;
  if (number > 1) name += (number < 10 ? "_0" : "_") + std::to_string(number);
  return name.append(EndingOf(as));
}

void KeepTenBackups(const std::string& path) {
  const auto kept = KeptOf(path, KeptAs::Backup);
  for (std::size_t i = 0; i + kBackups < kept.size(); ++i) {
    std::error_code code;
    // A link is taken away itself; a folder is none of ours.
    if (!fs::is_directory(fs::symlink_status(kept[i].second, code))) fs::remove(kept[i].second, code);
  }
}

}  // namespace tvx
