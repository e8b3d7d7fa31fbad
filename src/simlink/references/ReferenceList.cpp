#include "simlink/references/ReferenceList.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

#include "base/NumberFormat.h"
#include "base/SearchWords.h"
#include "platform/AtomicFile.h"

namespace tvx {
namespace {

constexpr std::size_t kShortestEntry = 3;
constexpr std::size_t kLongestEntry = 400;  // what a subscription holds

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

// Cuts a text into fields, one after the other.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : left_(text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (left_.starts_with(kByteOrderMark)) left_.remove_prefix(kByteOrderMark.size());
  }

  std::optional<std::string_view> Next() {
    SkipWhile([](char c) { return IsBlank(c) || c == '\r' || c == '\n'; });
    if (left_.empty()) return std::nullopt;
    return left_.front() == '"' ? Quoted() : Plain();
  }

 private:
  template <typename Wanted>
  void SkipWhile(Wanted wanted) {
    while (!left_.empty() && wanted(left_.front())) left_.remove_prefix(1);
  }
  std::string_view Quoted() {
    left_.remove_prefix(1);
    const std::size_t end = std::min(left_.find('"'), left_.size());
    const std::string_view field = left_.substr(0, end);
    left_.remove_prefix(std::min(end + 1, left_.size()));
    Plain();  // skips what stands between the quote and the field's end
    return field;
  }
  std::string_view Plain() {
    const std::size_t end = std::min(left_.find_first_of(",\r\n"), left_.size());
    std::string_view field = left_.substr(0, end);
    left_.remove_prefix(std::min(end + 1, left_.size()));
    while (!field.empty() && IsBlank(field.back())) field.remove_suffix(1);
    return field;
  }

  std::string_view left_;
};

char Small(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::optional<ListContent> ParseListFile(std::string_view text, std::string_view title) {
  FieldReader fields(text);
  if (fields.Next() != title) return std::nullopt;
  const auto count = fields.Next();
  if (!count) return std::nullopt;
  std::uint32_t promised = 0;
  const auto [end, error] = std::from_chars(count->data(), count->data() + count->size(), promised);
  if (error != std::errc() || end != count->data() + count->size()) return std::nullopt;
  ListContent content{{}, promised};
  while (content.entries.size() < promised) {
    const auto entry = fields.Next();
    if (!entry) break;
    content.entries.emplace_back(*entry);
  }
  return content;
}

std::string ListFileText(std::string_view title, const std::vector<std::string>& entries) {
  std::string text = '"' + std::string(title) + "\"," + std::to_string(entries.size()) + "\r\n";
  for (const std::string& entry : entries) text += '"' + entry + "\"\r\n";
  return text;
}

bool IsEntry(std::string_view text) {
  const auto isLetterOrDigit = [](char c) {
    return (Small(c) >= 'a' && Small(c) <= 'z') || (c >= '0' && c <= '9');
  };
  const auto mayStand = [](char c) { return c > ' ' && c < '\x7F' && c != '"' && c != ',' && c != '#'; };
  return text.size() >= kShortestEntry && text.size() <= kLongestEntry && isLetterOrDigit(text.front()) &&
         text.find('/') != std::string_view::npos && std::all_of(text.begin(), text.end(), mayStand);
}

void ReferenceList::Load(const ListFile& file, std::string_view missing) {
  missing_ = missing;
  std::string error;
  const auto text = ReadWholeFile(file.name, error);
  auto content = text ? ParseListFile(*text, file.title) : std::nullopt;
  found_ = content.has_value();
  content_ = found_ ? std::move(*content) : ListContent{};
  small_.clear();
  small_.reserve(content_.entries.size());
  for (const std::string& entry : content_.entries) small_.push_back(SmallLetters(entry));
  Filter(std::string(prefix_), std::string(search_));
}

void ReferenceList::Filter(std::string_view prefix, std::string_view search) {
  prefix_ = prefix;
  search_ = search;
  const std::vector<std::string> words = SearchWords(search);
  shown_.clear();
  for (std::size_t i = 0; i < content_.entries.size(); ++i) {
    if (content_.entries[i].starts_with(prefix_) && HoldsEvery(words, small_[i])) {
      shown_.push_back(i);
    }
  }
}

bool ReferenceList::Holds(std::string_view path) const {
  return std::find(content_.entries.begin(), content_.entries.end(), path) != content_.entries.end();
}

std::string_view ReferenceList::Message() const {
  if (!found_) return missing_;
  return shown_.empty() ? kSearchFoundNothing : std::string_view();
}

std::string ReferenceList::Line(std::size_t line) const {
  if (line >= Lines()) return {};
  if (!Message().empty()) return std::string(Message());
  const std::size_t entry = shown_[line];
  return FormatNumberText(static_cast<double>(entry), "0000") + ' ' + content_.entries[entry];
}

std::optional<std::string_view> ReferenceList::PathAt(std::size_t line) const {
  if (!Message().empty() || line >= shown_.size()) return std::nullopt;
  return content_.entries[shown_[line]];
}

}  // namespace tvx
