// The stand-in simulator: datagrams in, datagrams out. No socket and no clock of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "virtualcockpit/pace/Chance.h"
#include "virtualcockpit/sim/DataGroups.h"
#include "virtualcockpit/sim/DatarefStore.h"
#include "virtualcockpit/sim/Peer.h"
#include "virtualcockpit/sim/SimDatagrams.h"
#include "virtualcockpit/sim/flight/Flight.h"
#include "virtualcockpit/sim/flight/HandFlight.h"

namespace tvx::vc {

// Where the data groups go.
struct DataOutput {
  bool toWhoeverSelects = true;  // the client that selected a group last; `target` does not count then
  bool enabled = true;
  std::optional<Peer> target;
  bool operator==(const DataOutput&) const = default;
};

// What came and went since the start.
struct SimulatorCounters {
  std::uint64_t received = 0, sent = 0;
  std::uint64_t selections = 0, groupWrites = 0, characters = 0, commands = 0, datarefWrites = 0;
  std::uint64_t subscriptions = 0, cancellations = 0;
  std::uint64_t unknown = 0;  // datagrams that are no known request
  std::uint64_t idents = 0;   // the transponder's identification, asked for
  std::uint64_t refused = 0;  // known requests that could not be met: no such name or group, a flown value
};

class Simulator {
 public:
  static constexpr int kTickMilliseconds = 50;  // of a simulator that is in no hurry
  static constexpr std::size_t kMostSubscriptions = 4096;

  using Send = std::function<void(ByteView datagram, const Peer& to)>;
  explicit Simulator(Send send);

  // A client's datagram, of any content.
  void OnDatagram(ByteView datagram, const Peer& from);
  // One frame: flies on by the time that has passed since the last one (at most half a second of it) and
  // sends what is due, each value at most once. `nowMs` is a clock that never jumps back.
  void Tick(std::int64_t nowMs);
  // As a simulator that is started anew: forgets every client; `groups` and `values` say whether it also
  // forgets which groups are sent and what was written. The data output's target stays.
  void Restart(bool groups = true, bool values = false);
  // Another aircraft is loaded: the names listed do not exist any more, all others do (again). What clients
  // had asked for under those names is given up.
  void ChangeAircraft(std::span<const std::string> missing);
  // The same, with about so many in a hundred of the datarefs that clients ask for missing; returns which.
  std::vector<std::string> ChangeAircraft(double percentMissing, Chance& chance);

  // Which aircraft it says that it flies: its ICAO type and the path of its file, a letter each.
  void NameAircraft(std::string_view icao, std::string_view path);

  void SetOutput(const DataOutput& output) { output_ = output; }
  const DataOutput& Output() const { return output_; }

  void SetPaused(bool paused);
  bool Paused() const { return paused_; }
  // 0.1 .. 50 times the real time; anything else is cut to that.
  void SetSpeed(double factor);
  double Speed() const { return speed_; }
  // Flies from the given second on; scripted values are the script's again.
  void RestartFlight(double atSeconds = 0);

  const FlightState& State() const { return state_; }
  DatarefStore& Datarefs() { return store_; }
  DataGroups& Groups() { return groups_; }
  const SimulatorCounters& Counters() const { return counters_; }

  // The last of each kind, for whoever watches.
  struct GroupWrite {
    std::int32_t group;
    int slot;
    double value;
    bool integer;
  };
  struct DatarefWrite {
    std::string name;
    float value;
  };
  const std::optional<GroupWrite>& LastGroupWrite() const { return lastGroupWrite_; }
  const std::optional<DatarefWrite>& LastDatarefWrite() const { return lastDatarefWrite_; }
  const std::string& LastCommand() const { return lastCommand_; }
  std::optional<Byte> LastCharacter() const { return lastCharacter_; }

  void CountIdent() { ++counters_.idents; }

  // The client that selected a data group last.
  const std::optional<Peer>& Client() const { return client_; }
  const std::set<int>& SelectedGroups() const { return selected_; }
  std::size_t Subscriptions() const { return subscriptions_.size(); }

 private:
  struct Subscription {
    Peer peer;
    std::int32_t index;
    int place;
    std::string name;
    double periodMs;
    double dueMs;
  };

  void On(const UnknownRequest&, const Peer&);
  void On(const SelectRequest& request, const Peer& from);
  void On(const WriteGroupsRequest& request, const Peer&);
  void On(const CharacterRequest& request, const Peer&);
  void On(const CommandRequest& request, const Peer&);
  void On(const WriteDatarefRequest& request, const Peer&);
  void On(const SubscribeRequest& request, const Peer& from);
  void On(const OutputTargetRequest& request, const Peer&);
  void Select(std::int32_t group, bool select);
  bool WriteOutputSelection(std::string_view name, float value);
  void Cancel(const Peer& from, std::int32_t index);
  void SendGroups(std::int64_t nowMs);
  void SendValues(std::int64_t nowMs);
  void Flush(std::vector<IndexedValue>& values, const Peer& to);
  void Transmit(ByteView datagram, const Peer& to);
  void Refresh(double seconds = 0);
  void WriteAircraft();

  Send send_;
  Flight flight_;
  FlightState state_;
  HandFlight hand_;
  DatarefStore store_;
  DataGroups groups_{store_};
  std::string aircraftIcao_, aircraftPath_;
  double seconds_ = 0;
  double speed_ = 1;
  bool paused_ = false;
  std::optional<std::int64_t> lastTick_;

  DataOutput output_;
  double groupsDueMs_ = 0;
  std::optional<Peer> client_;
  std::set<int> selected_;
  std::vector<Subscription> subscriptions_;  // those of one peer stand together
  SimulatorCounters counters_;
  std::optional<GroupWrite> lastGroupWrite_;
  std::optional<DatarefWrite> lastDatarefWrite_;
  std::string lastCommand_;
  std::optional<Byte> lastCharacter_;
};

// Runs a command where it does something; false for a command that is only counted (SimCommands.cpp).
bool RunSimCommand(std::string_view name, Simulator& simulator);
// The commands of autopilot and transponder (SimRadioCommands.cpp).
bool RunRadioCommand(std::string_view name, Simulator& simulator);

}  // namespace tvx::vc
