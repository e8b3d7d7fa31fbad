// One end of a serial line that leads nowhere else: a pseudo-terminal, whose other end a program opens as its
// port.
#pragma once

#include <string>

#include "base/Bytes.h"

namespace tvx::vc {

class PtyLine {
 public:
  PtyLine() = default;
  ~PtyLine() { Unplug(); }
  PtyLine(const PtyLine&) = delete;
  PtyLine& operator=(const PtyLine&) = delete;

  // Makes a new pseudo-terminal. Where `link` is not empty, a symbolic link of that name (its folder is made
  // when missing) leads to it from then on; a link that leads to a real device, and anything that is no link,
  // is left alone and the line goes without. False with the reason in words in LastError(); a line without
  // its link is true with the reason in LastError().
  bool Plug(const std::string& link = {});
  // Closes it: the program at the other end sees a hang-up. The link goes too, if it still leads here.
  void Unplug();

  bool Plugged() const { return master_ >= 0; }
  int Handle() const { return master_; }                 // of this end; -1 while unplugged
  const std::string& Device() const { return device_; }  // the other end's path
  const std::string& Link() const { return link_; }      // empty where there is none
  const std::string& LastError() const { return error_; }

  // What the program has written, as much as fits into the buffer; never waits. Returns 0 when nothing has
  // come.
  std::size_t Read(std::span<Byte> buffer);
  // Writes without waiting: what the line does not take is dropped, and the loss counted.
  void Write(ByteView bytes);
  std::uint64_t Dropped() const { return dropped_; }

 private:
  bool MakeLink(const std::string& link);

  int master_ = -1;
  int slave_ = -1;  // kept open, so that the line does not hang up while no program has it open
  std::string device_, link_, error_;
  std::uint64_t dropped_ = 0;
};

}  // namespace tvx::vc
