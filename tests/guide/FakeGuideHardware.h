// Adapters, a gauge bus and needles for the set-up guide, in memory.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "guide/GuideHardware.h"

namespace tvx {

struct FakeGuideHardware final : GuideHardware {
  std::vector<SerialDevice> adapters;
  std::vector<std::string> askedRoles, takenRoles;
  bool asking = false, searching = false;
  int searches = 0, searched = 0;
  std::vector<std::array<std::int32_t, 3>> sent;  // GaugeID, command, value
  int position = -1;

  std::vector<SerialDevice> FreeAdapters() override { return adapters; }
  void AskRole(const SerialDevice& adapter) override {
    askedRoles.push_back(adapter.path);
    asking = true;
  }
  bool AskingRole() override { return asking; }
  void StopAskingRole() override { asking = false; }
  std::string TakeRole(const SerialDevice& adapter) override {
    takenRoles.push_back(adapter.path);
    return "is something.";
  }
  bool SearchGauges() override {
    ++searches;
    return searching = true;
  }
  void StopSearch() override { searching = false; }
  bool SearchingGauges() override { return searching; }
  int SearchedAddresses() override { return searched; }
  std::string GaugesFoundWords() override { return "3 gauges."; }
  bool Command(int gaugeID, int command, std::int32_t value) override {
    sent.push_back({gaugeID, command, value});
    return true;
  }
  void MoveNeedle(const CalibrationTarget&, int to) override { position = to; }
};

}  // namespace tvx
