#include "platform/linux/serial/TtyCalls.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/serial.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/time.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>

namespace tvx {

namespace {

constexpr suseconds_t kCloseGraceUs = 200000;
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
  if (state == SerialState::Open) {
    tcflush(fd, TCIOFLUSH);
    return {fd, state};
  }
  if (state == SerialState::Failed) ioctl(fd, TIOCNXCL);  // the mark must not outlive us
  close(fd);
  return {-1, state};
}

void SetLowLatency(int fd, const std::string& path, const std::string& sysClass) {
  serial_struct line{};
  if (ioctl(fd, TIOCGSERIAL, &line) == 0 && (line.flags & ASYNC_LOW_LATENCY) == 0) {
    line.flags |= ASYNC_LOW_LATENCY;
    ioctl(fd, TIOCSSERIAL, &line);
  }
  // Some drivers have a file for it instead; only root and those whom a rule lets may write it.
  const std::string name = std::filesystem::path(path).filename();
  const int file = open((sysClass + "/" + name + "/device/latency_timer").c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) return;
  [[maybe_unused]] const ssize_t written = write(file, "1", 1);
  close(file);
}

std::optional<bool> ReadCarrier(int fd) {
  int lines = 0;
  if (ioctl(fd, TIOCMGET, &lines) != 0) return std::nullopt;
  return (lines & TIOCM_CAR) != 0;
}

// The driver waits for output in close(), up to 30 s on USB adapters, and has no call to give it up. But it
// stops waiting at a signal.
void CloseTty(int fd) {
  struct sigaction interrupt {};
  interrupt.sa_handler = [](int) {};
  sigaction(SIGALRM, &interrupt, nullptr);
  const itimerval grace{{0, kCloseGraceUs}, {0, kCloseGraceUs}};
  setitimer(ITIMER_REAL, &grace, nullptr);
  int left = 0;
  if (ioctl(fd, TIOCOUTQ, &left) == 0 && left > 0) {
    tcdrain(fd);
    tcflush(fd, TCOFLUSH);
  }
  ioctl(fd, TIOCNXCL);
  close(fd);
  const itimerval off{};
  setitimer(ITIMER_REAL, &off, nullptr);
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
