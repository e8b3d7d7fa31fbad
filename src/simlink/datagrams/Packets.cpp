#include "simlink/datagrams/Packets.h"

#include <algorithm>
#include <charconv>

#include "base/Rounding.h"

namespace tvx {
namespace {

// Appends to a datagram. Every builder checks its lengths first, so no write can run over its end.
class Writer {
 public:
  explicit Writer(Datagram& out) : out_(out) { out_.size = 0; }

  Writer& Text(std::string_view text) {
    for (const char c : text) U8(static_cast<Byte>(c));
    return *this;
  }
  Writer& U8(Byte value) {
    out_.bytes[out_.size++] = value;
    return *this;
  }
  Writer& Fill(Byte value, std::size_t upToSize) {
    while (out_.size < upToSize) U8(value);
    return *this;
  }
  Writer& FloatLE(float value) {
    FloatToLittleEndian(value, std::span<Byte, 4>(out_.bytes.data() + out_.size, 4));
    out_.size += 4;
    return *this;
  }
  Writer& Int32BE(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int shift = 24; shift >= 0; shift -= 8) U8(static_cast<Byte>(bits >> shift));
    return *this;
  }

 private:
  Datagram& out_;
};

bool IsByte(int value) {
  return value >= 0 && value <= 255;
}

bool BuildGroupSelection(std::string_view header, int group, Datagram& out) {
  if (!IsByte(group)) return false;
  Writer(out).Text(header).U8(static_cast<Byte>(group)).Fill(0, kDselSize);
  return true;
}

bool BuildDataHeader(int group, int valueNumber, Datagram& out) {
  if (!IsByte(group) || valueNumber < 0 || valueNumber >= kDataValuesPerGroup) return false;
  Writer(out).Text("DATA0").U8(static_cast<Byte>(group)).Fill(0, 9);
  return true;
}

// A writer that goes on behind what the datagram already holds.
Writer Continue(Datagram& out) {
  const std::size_t size = out.size;
  Writer writer(out);
  out.size = size;
  return writer;
}

}  // namespace

bool BuildDSEL(int group, Datagram& out) {
  return BuildGroupSelection("DSEL0", group, out);
}

bool BuildUSEL(int group, Datagram& out) {
  return BuildGroupSelection("USEL0", group, out);
}

bool BuildDataFloat(int group, int valueNumber, float value, Datagram& out) {
  if (!BuildDataHeader(group, valueNumber, out)) return false;
  Writer writer = Continue(out);
  for (int k = 0; k < kDataValuesPerGroup; ++k) {
    writer.FloatLE(k == valueNumber ? value : static_cast<float>(kLeaveUnchanged));
  }
  return true;
}

// ODDITY: integers go out most significant byte first, singles least significant first. The two senders have
// always differed, and simulators at the other end are set up for that.
bool BuildDataInt(int group, int valueNumber, std::int32_t value, Datagram& out) {
  if (!BuildDataHeader(group, valueNumber, out)) return false;
  Writer writer = Continue(out);
  for (int k = 0; k < kDataValuesPerGroup; ++k) writer.Int32BE(k == valueNumber ? value : kLeaveUnchanged);
  return true;
}

// ODDITY: the host text is laid over fifteen ASCII zeros, so a short one is followed by the character 0.
bool BuildCHAR(int character, std::string_view remoteHost, Datagram& out) {
  if (!IsByte(character)) return false;
  Writer(out)
      .Text("CHAR0")
      .U8(static_cast<Byte>(character))
      .Text(remoteHost.substr(0, 15))
      .Fill('0', kCharSize);
  return true;
}

// The fifth byte is zero here, as in RREF; 64 is the data output's number, and the last number switches it
// on.
bool BuildISE4(std::string_view address, std::string_view port, Datagram& out) {
  constexpr Byte kDataOutput = 64;
  if (address.size() > 15 || port.size() > 7) return false;
  Writer(out)
      .Text("ISE4")
      .U8(0)
      .U8(kDataOutput)
      .Fill(0, 9)
      .Text(address)
      .Fill(0, 25)
      .Text(port)
      .Fill(0, 33)
      .U8(1)
      .Fill(0, kIse4Size);
  return true;
}

bool BuildCMND(std::string_view path, Datagram& out) {
  if (path.size() > kCommandPathLimit) return false;
  Writer(out).Text("CMND0").Text(path);
  return true;
}

bool BuildDREF(std::string_view path, float value, Datagram& out) {
  if (path.size() > kDrefPathLimit) return false;
  Writer(out).Text("DREF0").FloatLE(value).Text(path).Fill(0, kDrefSize);
  return true;
}

// ODDITY: the second byte is the quotient rounded to nearest, halves to even: exact for 0..128, one too high
// for 129..255.
int RrefIdentifierOnWire(std::int32_t identifier) {
  const auto high = static_cast<std::int32_t>(RoundHalfEven(identifier / 256.0));
  return (identifier & 0xFF) + 256 * (high & 0xFF);
}

// ODDITY: the fifth byte is zero here, where every other packet carries an ASCII 0.
bool BuildRREF(std::string_view path, std::int32_t frequency, std::int32_t identifier, Datagram& out) {
  if (path.size() > kRrefPathLimit) return false;
  const int onWire = RrefIdentifierOnWire(identifier);
  Writer(out)
      .Text("RREF")
      .U8(0)
      .U8(static_cast<Byte>(frequency & 0xFF))
      .Fill(0, 9)
      .U8(static_cast<Byte>(onWire & 0xFF))
      .U8(static_cast<Byte>(onWire >> 8))
      .Fill(0, 13)
      .Text(path)
      .Fill(0, kRrefSize);
  return true;
}

std::optional<std::string_view> CutEntry(std::string_view lines, int number) {
  std::array<char, 16> key{'#'};
  char* end = std::to_chars(key.data() + 1, key.data() + key.size() - 1, number).ptr;
  *end++ = ':';
  const std::size_t at = lines.find(std::string_view(key.data(), static_cast<std::size_t>(end - key.data())));
  if (at == std::string_view::npos) return std::nullopt;
  const std::size_t lineEnd = lines.find("\r\n", at + 2);
  if (lineEnd == std::string_view::npos) return std::nullopt;
  // ODDITY: the text starts 3 characters after the key's start, whatever the key's length.
  return lines.substr(at + 3, lineEnd - (at + 3));
}

DatagramKind Classify(ByteView datagram) {
  if (datagram.size() < kSmallestDatagram) return DatagramKind::TooShort;
  // The fifth byte differs between versions of the simulator and is not looked at.
  const std::array<char, 4> tag{static_cast<char>(datagram[0]), static_cast<char>(datagram[1]),
                                static_cast<char>(datagram[2]), static_cast<char>(datagram[3])};
  const std::string_view text(tag.data(), tag.size());
  if (text == "DATA") return DatagramKind::Data;
  if (text == "RREF") return DatagramKind::Rref;
  if (text == "DREF") return DatagramKind::Dref;
  return DatagramKind::Other;
}

int RecordCount(std::size_t bytes, std::size_t recordSize) {
  if (bytes < kHeaderSize || recordSize == 0) return 0;
  const std::size_t whole = (bytes - kHeaderSize) / recordSize;
  const std::size_t rest = (bytes - kHeaderSize) % recordSize;
  const bool up = 2 * rest > recordSize || (2 * rest == recordSize && whole % 2 == 1);
  return static_cast<int>(up ? whole + 1 : whole);
}

}  // namespace tvx
