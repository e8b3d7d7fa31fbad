// What a value can be followed from: a place of the cockpit, as every window can name it.
#pragma once

namespace tvx {

struct Subject {
  enum class Kind {
    Gauge,     // number: the GaugeID; part: its needles or Functions first, from 0, then its other values
    Channel,   // number: a channel of the engine cluster, from 0
    Input,     // number: IOModuleRecord::Input of a switch, an axis or a lamp
    YokeAxis,  // number: the yoke, 1 or 2; part: 0 roll, 1 pitch
    Function,  // number: the Function; part: its sequence number
    OpenPort,  // number: an open simulator port, for whom it was opened
  };
  Kind kind = Kind::Function;
  int number = 0;
  int part = 0;

  bool operator==(const Subject&) const = default;
};

}  // namespace tvx
