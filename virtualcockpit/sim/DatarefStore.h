// The simulator's values by name: those that the flight flies, and those that may be set.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "virtualcockpit/sim/flight/FlightState.h"

namespace tvx::vc {

// Who decides on a value.
enum class Source {
  Flown,     // the flight alone; writing is refused
  Scripted,  // the flight, until it is written; then it stays until the flight is restarted
  Free,      // whoever writes it
};

// A name of the built-in table. An array's element is named with its number: "name[0]".
struct DatarefRow {
  std::string_view name;
  double FlightState::*member;  // nullptr for a free value
  double scale;                 // of the member; of a free value its first value
  Source source;
};

class DatarefStore {
 public:
  static constexpr int kNone = -1;
  static constexpr std::size_t kLimit = 20000;  // names; more are refused

  DatarefStore();

  // The value's place, or kNone. An array's name without a number is its first element; an element that the
  // table does not name exists when the array does, as a free zero. Never throws on a strange name.
  int Find(std::string_view name);
  // The same for a name that does not exist just now.
  int PlaceOf(std::string_view name);
  // Makes a name known as a free zero where it is not known yet. An empty or overlong name is not taken.
  void Define(std::string_view name);
  // Whether the names that were defined exist beside the built-in ones; true at first.
  void SetDefinedExist(bool exist) { definedExist_ = exist; }

  // Whether a name exists now; one that does not is not found, and keeps its value. An unknown name is left
  // alone.
  void SetPresent(std::string_view name, bool present);
  bool Present(int place) const {
    const Entry& entry = entries_[static_cast<std::size_t>(place)];
    return entry.present && (definedExist_ || !entry.defined);
  }
  void MakeAllPresent();
  // Every value as it was at first.
  void Reset();

  double Value(int place) const { return entries_[static_cast<std::size_t>(place)].value; }
  // True when the value was taken; NaN and infinities are refused too.
  bool Write(int place, double value);
  // Value by name, for tests and commands; std::nullopt for an unknown name.
  std::optional<double> ValueOf(std::string_view name);

  // Takes over the flown values, and the scripted ones that nobody has written.
  void Refresh(const FlightState& state);
  // The script has its values back (the flight was restarted).
  void ReleaseScripted();
  std::size_t Count() const { return entries_.size(); }

 private:
  struct Entry {
    double FlightState::*member = nullptr;
    double scale = 1;
    Source source = Source::Free;
    double value = 0;
    bool written = false;
    bool present = true, defined = false;
    double first = 0;      // the value of a free one at first
    int twin = kNone;      // the place of the same value's other name
    double twinScale = 1;  // the other's value is this one's times it
  };
  int Add(std::string name, const Entry& entry);
  static double TwinValue(const Entry& entry);

  std::vector<Entry> entries_;
  bool definedExist_ = true;
  std::unordered_map<std::string, int> places_;
};

}  // namespace tvx::vc
