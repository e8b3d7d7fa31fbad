#include "platform/linux/serial/KeptTty.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/linux/serial/LineKeeper.h"
#include "platform/linux/serial/TtyCalls.h"

namespace tvx {

namespace {

// What a read or write that moved `count` bytes came to: a line that is full or empty is no error.
std::optional<std::size_t> Moved(ssize_t count) {
  if (count >= 0) return static_cast<std::size_t>(count);
  if (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) return 0;
  return std::nullopt;
}

}  // namespace

KeptTty::KeptTty(LineKeepers& keepers, Resolve resolve)
    : keepers_(keepers),
      resolve_(std::move(resolve)),
      reports_(keepers.MakeFdWatcher()),
      line_(keepers.MakeFdWatcher()) {
  reports_->SetCallbacks([this] { OnReport(); }, {});
  line_->SetCallbacks([this] { callbacks_.readable(); }, [this] { callbacks_.writable(); });
}

void KeptTty::Open(int comNumber, SerialReset reset) {
  Close();
  const ComPortTarget target = resolve_(comNumber);
  name_ = {target.device, "dialout", !target.byOrder};
  std::error_code error;
  path_ = target.path.empty() ? std::string() : std::filesystem::canonical(target.path, error).string();
  if (path_.empty() || error) return callbacks_.opened({SerialState::NotFound, std::nullopt});
  keepers_.Start(this, path_, reset, [this](int socket) { OnStarted(socket); });
}

void KeptTty::OnStarted(int socket) {
  if (socket < 0) return callbacks_.opened({SerialState::NoHelper, std::nullopt});
  socket_ = socket;
  reports_->Attach(socket_);
}

// The keeper has the line too. So this close is not the last one, and does not wait.
void KeptTty::Close() {
  keepers_.Cancel(this);
  reports_->Release();
  line_->Release();
  carrierAsked_ = false;
  if (fd_ >= 0) close(std::exchange(fd_, -1));
  if (socket_ >= 0) keepers_.LetGo(path_, std::exchange(socket_, -1));
}

void KeptTty::OnReport() {
  KeeperReport report;
  int fd = -1;
  const ssize_t count = ReceivePacket(socket_, &report, sizeof report, fd, MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
  const bool opening = fd_ < 0;
  if (count <= 0) {  // the keeper has ended
    Close();
    return opening ? callbacks_.opened({SerialState::NoHelper, std::nullopt}) : callbacks_.gone();
  }
  if (!opening) {
    carrierAsked_ = false;
    return callbacks_.carrier(report.Carrier());
  }
  if (report.state == SerialState::NoPermission) name_.group = GroupOfDevice(path_);
  fd_ = fd;
  if (fd_ >= 0) {
    line_->Attach(fd_);
  } else {
    Close();
  }
  callbacks_.opened({report.state, report.Carrier()});
}

void KeptTty::AskCarrier() {
  if (fd_ < 0 || carrierAsked_) return;
  const KeeperRequest request = KeeperRequest::Carrier;
  carrierAsked_ = SendPacket(socket_, &request, sizeof request);
}

std::optional<std::size_t> KeptTty::Read(std::span<Byte> out) {
  const ssize_t count = ::read(fd_, out.data(), out.size());
  if (count == 0) return std::nullopt;  // a line never ends: the device is gone
  return Moved(count);
}

std::optional<std::size_t> KeptTty::Write(ByteView bytes) {
  ssize_t count = 0;
  do {
    count = ::write(fd_, bytes.data(), bytes.size());
  } while (count < 0 && errno == EINTR);
  return Moved(count);
}

LineCounts KeptTty::Counts() const {
  return ReadLineCounts(fd_);
}

}  // namespace tvx
