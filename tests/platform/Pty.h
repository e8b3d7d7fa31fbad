// A pseudo-terminal, whose far end plays the hardware.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

#include "base/Bytes.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx {

class Pty {
 public:
  Pty() : far_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (far_ >= 0 && grantpt(far_) == 0 && unlockpt(far_) == 0) device_ = ptsname(far_);
  }
  ~Pty() { Unplug(); }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  const std::string& Device() const { return device_; }
  void Unplug() {
    if (far_ >= 0) close(std::exchange(far_, -1));
  }
  // How many bytes the line took.
  std::size_t Send(ByteView bytes) {
    const ssize_t count = write(far_, bytes.data(), bytes.size());
    return count > 0 ? static_cast<std::size_t>(count) : 0;
  }
  // Appends what has arrived to `Got`.
  const std::vector<Byte>& Collect() {
    Byte room[4096];
    for (ssize_t count = 0; (count = read(far_, room, sizeof room)) > 0;)
      Got.insert(Got.end(), room, room + count);
    return Got;
  }
  std::vector<Byte> Got;

 private:
  int far_;
  std::string device_;
};

}  // namespace tvx
