#include "platform/linux/TtyDevice.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/serial.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace tvx {

namespace {

constexpr tcflag_t kLineBits = CSIZE | CSTOPB | PARENB;
constexpr tcflag_t kLineSettings = CS8 | CSTOPB;

SerialState StateOfOpenError(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENXIO:
    case ENODEV:
      return SerialState::NotFound;
    case EACCES:
    case EPERM:
      return SerialState::NoPermission;
    case EBUSY:
      return SerialState::Busy;
    default:
      return SerialState::Failed;
  }
}

bool IsPseudoTerminal(int fd) {
  struct stat info {};
  if (fstat(fd, &info) != 0) return false;
  const unsigned kind = major(info.st_rdev);
  return kind >= 136 && kind <= 143;
}

// Locks the device, which keeps out programs that ask for the lock too, and marks it exclusive, which keeps
// out all others. The mark stays for as long as any program holds the device open. With a pseudo-terminal
// that may be the program at its other end, and then a program that died could not open it again; so only
// real devices are marked.
bool TakeForOneself(int fd) {
  if (flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  if (!IsPseudoTerminal(fd)) ioctl(fd, TIOCEXCL);
  return true;
}

bool Configure(int fd) {
  termios settings{};
  if (tcgetattr(fd, &settings) != 0) return false;
  cfmakeraw(&settings);
  settings.c_iflag |= PARMRK | INPCK;
  settings.c_iflag &= ~static_cast<tcflag_t>(IGNPAR | IXOFF | IXANY);
  settings.c_cflag &= ~static_cast<tcflag_t>(CRTSCTS | PARODD | kLineBits);
  settings.c_cflag |= kLineSettings | CREAD | CLOCAL;
  settings.c_cc[VMIN] = 1;
  settings.c_cc[VTIME] = 0;
  cfsetispeed(&settings, B38400);
  cfsetospeed(&settings, B38400);
  if (tcsetattr(fd, TCSANOW, &settings) != 0) return false;
  // tcsetattr succeeds as soon as anything could be set: look what came of it.
  termios result{};
  return tcgetattr(fd, &result) == 0 && (result.c_cflag & kLineBits) == kLineSettings &&
         cfgetospeed(&result) == B38400;
}

}  // namespace

OpenedTty OpenTty(const std::string& path) {
  const int fd = open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (fd < 0) return {-1, StateOfOpenError(errno)};
  SerialState state = SerialState::Open;
  if (isatty(fd) == 0) {
    state = SerialState::Failed;
  } else if (!TakeForOneself(fd)) {
    state = SerialState::Busy;
  } else if (!Configure(fd)) {
    state = SerialState::Failed;
  }
  if (state == SerialState::Open) return {fd, state};
  if (state == SerialState::Failed) ioctl(fd, TIOCNXCL);  // the mark must not outlive us
  close(fd);
  return {-1, state};
}

void CloseTty(int fd) {
  int left = 0;
  if (ioctl(fd, TIOCOUTQ, &left) == 0 && left > 0) tcflush(fd, TCOFLUSH);
  ioctl(fd, TIOCNXCL);
  close(fd);
}

std::string GroupOfDevice(const std::string& path) {
  const std::string usual = "dialout";
  struct stat info {};
  if (stat(path.c_str(), &info) != 0 || info.st_gid == 0) return usual;
  std::array<char, 4096> room{};
  group entry{};
  group* found = nullptr;
  if (getgrgid_r(info.st_gid, &entry, room.data(), room.size(), &found) != 0 || found == nullptr)
    return usual;
  return found->gr_name;
}

LineCounts ReadLineCounts(int fd) {
  serial_icounter_struct counts{};
  if (ioctl(fd, TIOCGICOUNT, &counts) != 0) return {};
  return {static_cast<std::uint32_t>(counts.brk),
          static_cast<std::uint32_t>(counts.frame) + static_cast<std::uint32_t>(counts.parity)};
}

}  // namespace tvx
