// The stand-in simulator: datagrams in, datagrams out. No socket and no clock of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "virtualcockpit/sim/DataGroups.h"
#include "virtualcockpit/sim/DatarefStore.h"
#include "virtualcockpit/sim/Flight.h"
#include "virtualcockpit/sim/HandFlight.h"
#include "virtualcockpit/sim/SimDatagrams.h"

namespace tvx::vc {

// Where a datagram came from: IPv4 address and port, in the computer's own byte order.
struct Peer {
  std::uint32_t address = 0;
  std::uint16_t port = 0;
  auto operator<=>(const Peer&) const = default;
};
std::string PeerText(const Peer& peer);  // "127.0.0.1:49003"

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
  static constexpr int kTickMilliseconds = 50;
  static constexpr int kTicksPerSecond = 20;
  static constexpr std::size_t kMostSubscriptions = 4096;

  using Send = std::function<void(ByteView datagram, const Peer& to)>;
  explicit Simulator(Send send) : send_(std::move(send)) { Refresh(); }

  // A client's datagram, of any content.
  void OnDatagram(ByteView datagram, const Peer& from);
  // One tick, twenty times a second: flies on by the time that has passed since the last one (at most half a
  // second of it) and sends what is due. `nowMs` is a clock that never jumps back.
  void Tick(std::int64_t nowMs);
  // Forgets every client, as a simulator that is started anew.
  void ForgetClients();

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

  // The client that gets the data groups.
  const std::optional<Peer>& Client() const { return client_; }
  const std::set<int>& SelectedGroups() const { return selected_; }
  std::size_t Subscriptions() const { return subscriptions_.size(); }

 private:
  struct Subscription {
    Peer peer;
    std::int32_t index;
    int place;
    int frequency;  // 1..kTicksPerSecond
    int credit;     // at kTicksPerSecond and above it is due
  };

  void On(const UnknownRequest&, const Peer&);
  void On(const SelectRequest& request, const Peer& from);
  void On(const WriteGroupsRequest& request, const Peer&);
  void On(const CharacterRequest& request, const Peer&);
  void On(const CommandRequest& request, const Peer&);
  void On(const WriteDatarefRequest& request, const Peer&);
  void On(const SubscribeRequest& request, const Peer& from);
  void Cancel(const Peer& from, std::int32_t index);
  void SendGroups();
  void SendValues();
  void Flush(std::vector<IndexedValue>& values, const Peer& to);
  void Transmit(ByteView datagram, const Peer& to);
  void Refresh(double seconds = 0);

  Send send_;
  Flight flight_;
  FlightState state_;
  HandFlight hand_;
  DatarefStore store_;
  DataGroups groups_{store_};
  double seconds_ = 0;
  double speed_ = 1;
  bool paused_ = false;
  std::optional<std::int64_t> lastTick_;

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
