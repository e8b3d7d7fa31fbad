#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/ConfigFile.h"
#include "config/ValueText.h"

namespace tvx {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

// Lines of values, commas between them.
class LineWriter {
 public:
  template <typename T>
  void Value(const T& value) {
    if (!lineStart_) out_ += ',';
    lineStart_ = false;
    AppendValue(out_, value);
  }
  void EndLine() {
    out_ += kLineEnd;
    lineStart_ = true;
  }
  template <typename T>
  void Single(const T& value) {
    Value(value);
    EndLine();
  }
  template <typename Record>
  void Fields(const Record& record) {
    Record::Fields(record, [this](std::string_view, const auto& field) { this->Value(field); });
    EndLine();
  }
  std::string Take() { return std::move(out_); }
  void Reserve(std::size_t bytes) { out_.reserve(bytes); }

 private:
  std::string out_;
  bool lineStart_ = true;
};

// How many records the file's count, a 16-bit number, can announce.
std::size_t Countable(std::size_t records) {
  return std::min<std::size_t>(records, 32767);
}

void WritePlates(LineWriter& out, const std::vector<PlateRecord>& plates) {
  if (plates.empty()) return;
  const std::size_t count = Countable(plates.size());
  out.Single(std::string_view("Plates"));
  out.Single(static_cast<std::int16_t>(count));
  for (std::size_t i = 0; i < count; ++i) {
    out.Value(std::string_view(plates[i].Name));
    for (std::size_t k = 0; k < PlateRecord::kStoredPoints; ++k) out.Value(plates[i].Value[k]);
    out.EndLine();
    for (std::size_t k = 0; k < PlateRecord::kStoredPoints; ++k) out.Value(plates[i].Position[k]);
    out.EndLine();
  }
}

void WriteYokeEnd(LineWriter& out, const YokeRecord& yoke) {
  YokeRecord::TailNumbers(yoke, [&out](std::string_view, const auto& field) { out.Single(field); });
  for (const auto& effect : yoke.Effects) {
    out.Single(effect.Frequency);
    out.Single(effect.Level);
  }
}

void WriteForceFeedback(LineWriter& out, const ConfigModel& model) {
  const auto single = [&out](std::string_view, const auto& field) { out.Single(field); };
  out.Single(std::string_view("GeneralFFB"));
  GeneralFFBRecord::Fields(model.GeneralFFB, single);
  out.Single(std::string_view("Yoke1"));
  YokeRecord::Head(model.Yoke1, single);
  out.Single(model.Yoke1.StallMargin);
  out.Single(model.Yoke1.GustTime);
  WriteYokeEnd(out, model.Yoke1);
  out.Single(std::string_view("Yoke2"));
  YokeRecord::Head(model.Yoke2, single);
  out.Single(model.Yoke2.TailZero);  // one line, where the reader takes two: see ReadYoke2Tail
  WriteYokeEnd(out, model.Yoke2);
}

}  // namespace

std::string WriteConfigText(const ConfigModel& model) {
  LineWriter out;
  out.Reserve(128u << 10);
  out.Single(std::string_view("General"));
  out.Fields(model.General);
  const std::size_t iomCount = Countable(static_cast<std::size_t>(std::max(model.IOMCount(), 0)));
  out.Single(std::string_view("IOM"));
  out.Single(static_cast<std::int16_t>(iomCount));
  for (std::size_t i = 0; i < iomCount; ++i) out.Fields(model.IOModuleInputs[i]);
  out.Single(std::string_view("Functions"));
  for (const auto& record : model.Functions) out.Fields(record);
  out.Single(std::string_view("Gaugetypes"));
  for (const auto& record : model.Gaugetypes) out.Fields(record);
  out.Single(std::string_view("Gauges"));
  for (const auto& record : model.Gauges) out.Fields(record);
  out.Single(std::string_view("Engine Cluster Settings"));
  for (const auto& record : model.EngineCluster) out.Fields(record);
  WritePlates(out, model.Plates);
  WriteForceFeedback(out, model);
  out.Single(std::string_view("end"));
  return out.Take();
}

std::string BuildConfigHeader(std::string_view simulatorName, std::string_view simulatorVersion,
                              std::string_view dateTime) {
  std::string header = "Program Name: ";
  header += kProgramTitle;
  header += " , Version: ";
  header += kProgramVersion;
  header += "      ,Connected Simulator: ";
  header += simulatorName;
  header += " ,Version: ";
  header += simulatorVersion;
  header += " ,Date/Time saved: ";
  header += dateTime;
  header += "\r\n";
  return header;
}

}  // namespace tvx
