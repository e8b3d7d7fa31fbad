#include "virtualcockpit/bus/PtyLine.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace tvx::vc {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPseudoTerminals = "/dev/pts/";

// Whether the place may be taken: free, or a link that leads to some pseudo-terminal.
bool MayReplace(const fs::path& link, std::string& error) {
  std::error_code failure;
  const auto status = fs::symlink_status(link, failure);
  if (!fs::exists(status)) return true;
  if (fs::is_symlink(status)) {
    const std::string target = fs::read_symlink(link, failure).string();
    if (target.starts_with(kPseudoTerminals)) return true;
    error = link.string() + " leads to " + target + " and stays as it is";
  } else {
    error = link.string() + " is no link and stays as it is";
  }
  return false;
}

void MakeRaw(int handle) {
  termios settings{};
  if (::tcgetattr(handle, &settings) != 0) return;
  ::cfmakeraw(&settings);
  ::tcsetattr(handle, TCSANOW, &settings);
}

}  // namespace

bool PtyLine::Plug(const std::string& link) {
  Unplug();
  error_.clear();
  std::array<char, 128> name{};
  master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
  if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0 ||
      ::ptsname_r(master_, name.data(), name.size()) != 0) {
    error_ = std::string("no pseudo-terminal: ") + std::strerror(errno);
    Unplug();
    return false;
  }
  device_ = name.data();
  slave_ = ::open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
  if (slave_ < 0) {
    error_ = device_ + ": " + std::strerror(errno);
    Unplug();
    return false;
  }
  MakeRaw(slave_);
  if (!link.empty() && MakeLink(link)) link_ = link;
  return true;
}

bool PtyLine::MakeLink(const std::string& link) {
  const fs::path path(link);
  const fs::path fresh(link + ".new");
  std::error_code failure;
  if (path.has_parent_path()) fs::create_directories(path.parent_path(), failure);
  if (failure || !MayReplace(path, error_)) {
    if (failure) error_ = path.parent_path().string() + ": " + failure.message();
    return false;
  }
  fs::remove(fresh, failure);
  fs::create_symlink(device_, fresh, failure);
  if (!failure) fs::rename(fresh, path, failure);
  if (failure) error_ = link + ": " + failure.message();
  return !failure;
}

void PtyLine::Unplug() {
  std::error_code failure;
  if (!link_.empty() && fs::read_symlink(link_, failure) == fs::path(device_)) fs::remove(link_, failure);
  if (slave_ >= 0) ::close(slave_);
  if (master_ >= 0) ::close(master_);
  master_ = slave_ = -1;
  device_.clear();
  link_.clear();
}

std::size_t PtyLine::Read(std::span<Byte> buffer) {
  if (master_ < 0) return 0;
  const ssize_t count = ::read(master_, buffer.data(), buffer.size());
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void PtyLine::Write(ByteView bytes) {
  if (master_ < 0) return;
  const ssize_t count = ::write(master_, bytes.data(), bytes.size());
  if (count != static_cast<ssize_t>(bytes.size())) ++dropped_;
}

}  // namespace tvx::vc
