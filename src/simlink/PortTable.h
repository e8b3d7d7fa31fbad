// The simulator ports: which values they hold, how values reach them and leave them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "config/Model.h"
#include "platform/Host.h"
#include "simlink/DuePorts.h"
#include "simlink/OtherValues.h"
#include "simlink/PortRow.h"
#include "simlink/PortTraffic.h"
#include "simlink/Subscriptions.h"
#include "simlink/datagrams/LinkSocket.h"
#include "simlink/datagrams/Packets.h"

namespace tvx {

inline constexpr int kDataGroups = 151;  // group index 0..150

// Datagrams of values that were abandoned.
struct GivenUp {
  std::uint64_t datagrams = 0;
  Port port = kNoPort;  // whose value did not fit, of the last one; kNoPort: a record that was none
};

// Every operation on one port does nothing where that port is not open.
class PortTable {
 public:
  PortTable(const ConfigModel& model, LinkSocket& socket, SubscriptionKeeper& keeper,
            Subscriptions& subscriptions, MessageBoxes& boxes);

  // --- opening ---
  // The code that ports opened from now on are marked with, Opener.h.
  void SetCurrentOpener(std::int16_t opener) { currentOpener_ = opener; }
  std::int16_t CurrentOpener() const { return currentOpener_; }
  // Opens a port on a Function (1..300) and sequence number (0 becomes 1, seen by the caller), and asks for
  // its dataref. `port` becomes its number, or kNoPort when the Function number is below 1, the Function is
  // not defined or 32767 ports are open. A number above 300 leaves `port` as it was, and so does a dataref
  // Function without a line for the sequence number, which is not opened. A factor of 0 is opened with a
  // warning.
  void OpenSimPort(int function, Byte& sequenceNr, Port& port);
  // The same for a caller that keeps no sequence number; kNoPort where no port was given.
  Port OpenSimPort(int function, int sequenceNr);
  void EnableReadSimPort(Port port);   // selects its data group, unless it is a dataref
  void DisableReadSimPort(Port port);  // port 0 stays enabled
  // Reads another source from the next datagram on. Sends no packet: a data group that was not selected yet
  // is only selected by the next EnableReadSimPort.
  void NewSeqNr(Port port, Byte sequenceNr);
  // Holds the port's value, or lets it be refreshed and read again.
  void BlockPort(Port port, bool blocked);
  void Clear();  // closes all ports; sends no packet

  // --- values ---
  // The value, scaled: (raw + add) * multiply / divide. False, and `value` stays as it was, when the port is
  // not enabled, blocked, or of a type that has no value. A divide factor of 0, or what the simulator sent,
  // can make it an infinity or NaN.
  bool GetPort(Port port, float& value) const;
  bool GetPortRaw(Port port, float& value) const;
  // Whether what the port reads has ever come from the simulator: its dataref, or its data group for any
  // port.
  bool HasArrived(Port port) const { return TrafficOf(port).HasCome(); }
  // How these values come; of a port that is not open, none has.
  const PortTraffic& TrafficOf(Port port) const;
  // Writes a value to the simulator; the raw value sent comes back in `value`: value * divide / multiply -
  // add. A raw value that is no finite number or does not fit the Function's data type is not sent: then it
  // gives false, and `value` stays as it was.
  bool PutPort(Port port, float& value);

  // --- what is known ---
  int PortCount() const { return static_cast<int>(rows_.size()); }
  const PortRow& PortAt(int port) const { return rows_[static_cast<std::size_t>(port)]; }
  std::uint16_t PortsOpened() const { return portsOpened_; }  // ever; stops at 65535
  float DataValue(int group, int valueNumber) const;          // 0 outside 0..150, 0..7
  std::int16_t MacroValue() const { return macroValue_; }     // of all ports on macro 3

  // --- what arrives; never allocates ---
  // Take a whole datagram of their kind, which came at `nowMs`. False where it stops making sense: what came
  // before that counts.
  bool DecodeRref(ByteView datagram, std::int64_t nowMs);
  bool DecodeData(ByteView datagram, std::int64_t nowMs);
  const GivenUp& GivenUpDatagrams() const { return givenUp_; }
  std::uint64_t ValuesLost() const;  // of all groups and of the datarefs of open ports
  void ForgetGivenUp() { givenUp_ = {}; }
  void SetOtherValues(OtherValues* others) { others_ = others; }

 private:
  // What refreshing a port needs, worked out from its row and its Function.
  struct Reading {
    static constexpr std::int16_t kNoGroup = -1;          // is not refreshed
    static constexpr std::int16_t kOutsideTheTable = -2;  // abandons the datagram
    std::int16_t group = kNoGroup;
    Byte value = 0;
    Byte dataType = 0;
  };
  PortRow* OpenRow(Port port);  // null for a port that is not open
  const PortRow* ReadableRow(Port port) const;
  const FunctionRecord& FunctionOf(const PortRow& row) const;
  std::optional<float> RawOrMacro(const PortRow& row, const FunctionRecord& function) const;
  void PutMacro(PortRow& row, const FunctionRecord& function, float value);
  std::optional<float> SendRaw(PortRow& row, const FunctionRecord& function, float raw);
  Reading ReadingOf(const PortRow& row) const;
  bool IsRead(int group) const;  // by an enabled port
  void FindReaders();
  std::span<const Port> ReadersOf(std::size_t group) const;
  bool Refresh(Port port);
  void RefuseFrom(ByteView datagram, int first);
  bool GiveUp(Port port);

  const ConfigModel& model_;
  LinkSocket& socket_;
  SubscriptionKeeper& keeper_;
  Subscriptions& subscriptions_;
  MessageBoxes& boxes_;
  std::vector<PortRow> rows_;
  std::int16_t currentOpener_ = 0;
  std::int16_t macroValue_ = 0;
  std::uint16_t portsOpened_ = 0;
  std::array<std::array<float, kDataValuesPerGroup>, kDataGroups> dataValues_{};
  std::array<PortTraffic, kDataGroups> groupTraffic_{};
  std::vector<PortTraffic> traffic_;  // of datarefs, by port
  GivenUp givenUp_;
  OtherValues* others_ = nullptr;
  // Who reads which group; found anew after readersKnown_ was cleared or a Function may have changed.
  bool readersKnown_ = false;
  std::uint64_t readersRevision_ = 0;
  std::vector<Reading> readings_;  // by port
  std::vector<Port> readers_;      // group after group; those of group g end at readersEnd_[g]
  std::array<std::uint16_t, kDataGroups> readersEnd_{};
  DuePorts due_;  // whose slot may differ from what their source says
};

}  // namespace tvx
