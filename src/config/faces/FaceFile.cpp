#include "config/faces/FaceFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/NumberText.h"
#include "config/ValueText.h"
#include "platform/AtomicFile.h"

namespace tvx {
namespace {

constexpr int kHighestPosition = 1079;
constexpr std::string_view kHead =
    "# Ready faces of this installation: name, Function, its short name, points as value:position.\n";

std::vector<std::string_view> Split(std::string_view text, char at) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = text.find(at);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<FaceMark> MarkOf(std::string_view text) {
  const auto parts = Split(text, ':');
  if (parts.size() != 2) return std::nullopt;
  const auto value = ParseReal<double>(parts[0]);
  const auto position = ParseInteger<std::int16_t>(parts[1]);
  if (!value || !position || *position < 0 || *position > kHighestPosition) return std::nullopt;
  return FaceMark{*value, *position};
}

bool Rising(const std::vector<FaceMark>& marks) {
  return marks.size() >= 2 && marks.size() <= ReadyFace::kMostMarks &&
         std::adjacent_find(marks.begin(), marks.end(), [](const FaceMark& a, const FaceMark& b) {
           return a.value >= b.value;
         }) == marks.end();
}

std::optional<ReadyFace> FaceIn(std::string_view line) {
  const auto fields = Split(line, '\t');
  if (fields.size() < 5 || fields[0].empty()) return std::nullopt;
  const auto function = ParseInteger<std::int16_t>(fields[1]);
  if (!function || *function < 0 || *function >= kFunctions) return std::nullopt;
  ReadyFace face{std::string(fields[0]), *function, std::string(fields[2]), {}};
  for (std::size_t i = 3; i < fields.size(); ++i) {
    const auto mark = MarkOf(fields[i]);
    if (!mark) return std::nullopt;
    face.marks.push_back(*mark);
  }
  return Rising(face.marks) ? std::optional(face) : std::nullopt;
}

// A tab or an end of line would begin another field or face.
bool Writable(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

}  // namespace

std::vector<ReadyFace> ReadFaces(std::string_view text, std::vector<int>* unread) {
  std::vector<ReadyFace> faces;
  int number = 0;
  for (std::string_view line : Split(text, '\n')) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.empty() || line.front() == '#') continue;
    if (const auto face = FaceIn(line)) {
      faces.push_back(*face);
    } else if (unread != nullptr) {
      unread->push_back(number);
    }
  }
  return faces;
}

std::string FaceLine(const ReadyFace& face) {
  std::string line = face.name + '\t' + std::to_string(face.function) + '\t' + face.functionName;
  for (const FaceMark& mark : face.marks) {
    line += '\t';
    AppendValue(line, mark.value);
    line += ':';
    AppendValue(line, mark.position);
  }
  return line + '\n';
}

std::vector<ReadyFace> AllFaces() {
  std::vector<ReadyFace> faces = BuiltInFaces();
  std::string error;
  if (const auto text = ReadWholeFile(std::string(kFaceFileName), error)) {
    for (ReadyFace& face : ReadFaces(*text)) faces.push_back(std::move(face));
  }
  return faces;
}

std::string SaveFace(const ReadyFace& face) {
  const bool named = face.name.find_first_not_of(' ') != std::string::npos && face.name.front() != '#';
  if (!named || !Writable(face.name)) return "The face needs another name.";
  if (!Writable(face.functionName)) return "The Function of the face needs another name.";
  if (!Rising(face.marks)) return "The Plate is not calibrated: its values must rise.";
  for (const ReadyFace& other : AllFaces()) {
    if (other.name == face.name) return "There is a ready face of this name already: " + face.name + '.';
  }
  const std::string path(kFaceFileName);
  std::string error;
  std::error_code ignored;
  std::string content(kHead);
  if (std::filesystem::exists(path, ignored)) {
    const auto old = ReadWholeFile(path, error);
    if (!old) return path + " cannot be read: " + error;
    content = *old;
    if (!content.empty() && content.back() != '\n') content += '\n';
  }
  return ReplaceFile(path, content + FaceLine(face), error) ? std::string()
                                                            : path + " cannot be written: " + error;
}

ReadyFace FaceOf(const ConfigModel& model, const PlateRecord& plate, int function) {
  ReadyFace face{plate.Name, static_cast<std::int16_t>(function), {}, MarksOf(plate)};
  if (const FunctionRecord* record = model.FunctionOf(function)) face.functionName = record->ShortName;
  return face;
}

}  // namespace tvx
