// The engine cluster's channels and options as its forms edit them, and a try of each needle.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hwbus/cluster/EngineCluster.h"

namespace tvx {

// Every change takes effect at once and marks the configuration as changed; the user saves it with the rest.
class EngineClusterPresenter {
 public:
  static constexpr int kNoPlate = -1;  // the value is the position

  EngineClusterPresenter(ConfigModel& model, EngineCluster& cluster) : model_(model), cluster_(cluster) {}
  // `changed` is called after every change, so that all forms show the same.
  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }
  // The model was edited elsewhere: the cluster takes it over, and the forms are told.
  void Refresh();

  // --- a channel, 0..7 ---
  const EngineClusterRecord& Channel(int channel) const {
    return model_.EngineCluster[static_cast<std::size_t>(channel)];
  }
  void SetEnabled(int channel, bool on);
  // 0..300; no effect for another number. The first Function of a channel switches it on, without a Plate;
  // 0 switches it off.
  void SetFunction(int channel, int function);
  // A Plate that there is, or kNoPlate; no effect for another number.
  void SetPlate(int channel, int plate);
  // Keeps what a channel shows, and gives that to another one; false before anything was kept.
  void CopyChannel(int channel) { copied_ = Channel(channel); }
  bool PasteChannel(int channel);
  // The Plates, kNoPlate first of all, and the channel's own number where no Plate has it.
  std::vector<std::pair<int, std::string>> PlateItemsOf(int channel) const;
  // What the list shows as chosen.
  int PlateOf(int channel) const;
  // Why an enabled channel will not show anything sensible; empty where it will.
  std::string_view Remark(int channel) const;
  // "Needle 8"; in the dual version with its engine.
  std::string NeedleName(int channel) const;

  // --- the options, setting 8 ---
  bool Dual() const { return cluster_.DualEngine(); }
  void SetDual(bool dual);
  bool Backlight() const { return Options().Value2 != 0; }
  void SetBacklight(bool on);
  // The further bits of byte 38, 0..255.
  int ExtraBits() const { return Options().Value3 & 0xFF; }
  // What a typed text stands for; std::nullopt where it is no whole number 0..255.
  static std::optional<int> ReadExtraBits(std::string_view text);
  // What is to be said beside the text.
  static std::string_view ExtraBitsRemark(std::string_view text);
  // False, and no change, where the text is no such number.
  bool SetExtraBits(std::string_view text);

  // --- trying ---
  enum class Spot { Lowest, Middle, Highest };
  // Moves the channel's needle to a place of its Plate, without one of the whole range. Only while halted:
  // running, the next frame would take it back.
  void Try(int channel, Spot spot);
  // While the channel is calibrated.
  void MoveNeedle(int channel, int position);
  // "63.00 at 771": where the needle stands, while running or after a try; otherwise empty.
  std::string Reading(int channel) const;

 private:
  struct Tried {
    int channel;
    double value;
  };
  EngineClusterRecord& Edited(int channel) { return model_.EngineCluster[static_cast<std::size_t>(channel)]; }
  EngineClusterRecord& EditedOptions();
  const EngineClusterRecord& Options() const;
  void Changed();

  ConfigModel& model_;
  EngineCluster& cluster_;
  Callback<> changed_;
  std::optional<Tried> tried_;
  std::optional<EngineClusterRecord> copied_;
};

}  // namespace tvx
