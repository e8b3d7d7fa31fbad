#include "platform/qt/QtUdpSocket.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <utility>

#include "platform/HostName.h"

namespace tvx {

namespace {

// So many datagrams in one go; the rest waits for the event loop's next turn.
constexpr int kDatagramsPerCall = 64;
// More than the system's receive buffer holds: the end of a delivery even where a sender never stops.
constexpr int kDatagramsBeforeRebinding = 4096;
constexpr std::size_t kControlRoom = 256;       // for the time of a datagram
constexpr std::int64_t kLongestWaitMs = 10000;  // more is a clock that was set
constexpr qint64 kPortUserMs = 2000;            // for so long it is taken for the same

bool IsPort(std::int32_t port) {
  return port >= 1 && port <= 65535;
}

// Whether an IPv4 address is one of this computer's now: only those can be bound to. Cards come and go, so no
// answer is kept. Never allocates.
bool IsOwnAddress(std::uint32_t address) {
  if (address >> 24 == 127) return true;
  if (address == 0) return false;
  const int trial = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (trial < 0) return false;
  sockaddr_in own{};
  own.sin_family = AF_INET;
  own.sin_addr.s_addr = htonl(address);
  const bool bound = ::bind(trial, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0;
  ::close(trial);
  return bound;
}

// How long ago the computer received what `message` tells of. 0 where it does not say, or where the clock was
// set meanwhile.
std::int64_t WaitedMs(msghdr& message) {
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr; part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_TIMESTAMPNS) continue;
    timespec received{}, now{};
    std::memcpy(&received, CMSG_DATA(part), sizeof received);
    clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t ms =
        (now.tv_sec - received.tv_sec) * 1000 + (now.tv_nsec - received.tv_nsec) / 1'000'000;
    return ms >= 0 && ms < kLongestWaitMs ? ms : 0;
  }
  return 0;
}

// Holds a flag for as long as a scope lasts.
class Flag {
 public:
  explicit Flag(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~Flag() { flag_ = before_; }
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace

QtUdpSocket::QtUdpSocket(PortUser portUser) : portUser_(std::move(portUser)) {
  QObject::connect(&socket_, &QUdpSocket::readyRead, &socket_, [this] { DeliverWaiting(kDatagramsPerCall); });
  QObject::connect(&socket_, &QUdpSocket::errorOccurred, &socket_,
                   [this](QAbstractSocket::SocketError code) { OnError(code); });
}

QtUdpSocket::~QtUdpSocket() {
  Close();
}

bool QtUdpSocket::SetUp(const UdpEndpoints& endpoints) {
  const auto address = ParseIPv4(endpoints.remoteHost);
  const bool samePort = IsOpen() && endpoints.localPort == localPort_;
  if (IsOpen() && !samePort) DeliverWaiting(kDatagramsBeforeRebinding);
  if (!address) return Fail("\"" + endpoints.remoteHost + "\" is no IPv4 address");
  if (!IsPort(endpoints.remotePort)) return Fail("the remote port must be 1 to 65535");
  if (!IsPort(endpoints.localPort)) return Fail("the local port must be 1 to 65535");
  if (!samePort && !Bind(endpoints.localPort)) return false;
  remote_ = QHostAddress(*address);
  remotePort_ = endpoints.remotePort;
  lastError_.clear();
  takenPort_ = 0;
  return true;
}

bool QtUdpSocket::Bind(std::int32_t localPort) {
  const Flag quiet(quiet_);
  Close();
  // Not shared: a second program on the port would take datagrams away without a sign of it.
  if (!socket_.bind(QHostAddress(QHostAddress::AnyIPv4), static_cast<quint16>(localPort),
                    QAbstractSocket::DontShareAddress)) {
    const bool taken = socket_.error() == QAbstractSocket::AddressInUseError;
    if (takenPort_ != localPort) takenSince_.invalidate();
    Fail("local port " + std::to_string(localPort) +
         (taken ? " is used by another program" : ": " + socket_.errorString().toStdString()));
    if (taken) takenPort_ = localPort;
    return false;
  }
  localPort_ = localPort;
  const int on = 1;  // what arrives is to carry the time
  ::setsockopt(static_cast<int>(socket_.socketDescriptor()), SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof on);
  return true;
}

bool QtUdpSocket::Fail(std::string words) {
  Close();
  takenPort_ = 0;
  lastError_ = std::move(words);
  return false;
}

// Sending fails many times in a row where the port is taken, so its user is looked for only when words are
// wanted.
std::string QtUdpSocket::LastError() const {
  if (takenPort_ == 0 || !portUser_) return lastError_;
  if (!takenSince_.isValid() || takenSince_.hasExpired(kPortUserMs)) {
    takenBy_ = portUser_(takenPort_);
    takenSince_.start();
  }
  return takenBy_.empty() ? lastError_ : lastError_ + ": " + takenBy_;
}

void QtUdpSocket::SetRemotePort(std::int32_t remotePort) {
  remotePort_ = remotePort;
}

void QtUdpSocket::Close() {
  ++life_;
  localPort_ = 0;
  const Flag quiet(quiet_);
  socket_.close();
}

bool QtUdpSocket::IsOpen() const {
  return localPort_ != 0;
}

bool QtUdpSocket::Send(ByteView datagram) {
  if (!IsOpen() || !IsPort(remotePort_)) return false;
  const Flag quiet(quiet_);
  const auto size = static_cast<qint64>(datagram.size());
  return socket_.writeDatagram(reinterpret_cast<const char*>(datagram.data()), size, remote_,
                               static_cast<quint16>(remotePort_)) == size;
}

std::size_t QtUdpSocket::Receive(std::span<Byte> out) {
  if (!IsOpen() || !socket_.hasPendingDatagrams()) return 0;
  ++received_;
  // Without the sender's address: to fill one in would allocate.
  const qint64 count =
      socket_.readDatagram(reinterpret_cast<char*>(out.data()), static_cast<qint64>(out.size()));
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::optional<UdpTarget> QtUdpSocket::Target() const {
  if (!IsOpen() || !IsPort(remotePort_)) return std::nullopt;
  return UdpTarget{remote_.toIPv4Address(), remotePort_};
}

UdpSender QtUdpSocket::WaitingSender() const {
  if (!IsOpen()) return {};
  sockaddr_in from{};
  char byte = 0;
  iovec data{&byte, sizeof byte};
  alignas(cmsghdr) std::array<char, kControlRoom> control{};
  msghdr message{};
  message.msg_name = &from;
  message.msg_namelen = sizeof from;
  message.msg_iov = &data;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  const auto peeked =
      ::recvmsg(static_cast<int>(socket_.socketDescriptor()), &message, MSG_PEEK | MSG_DONTWAIT);
  if (peeked < 0 || from.sin_family != AF_INET) return {};
  const std::uint32_t address = ntohl(from.sin_addr.s_addr);
  const std::uint32_t remote = remote_.toIPv4Address();
  // A program on this computer answers from whichever of its addresses the way leads over.
  const bool isRemote = address == remote || (IsOwnAddress(remote) && IsOwnAddress(address));
  return {address, ntohs(from.sin_port), isRemote, WaitedMs(message)};
}

// The system says by which way it would send, without sending anything.
std::string QtUdpSocket::LocalAddress() const {
  const int way = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (way < 0) return {};
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(remote_.toIPv4Address());
  address.sin_port = htons(static_cast<std::uint16_t>(remotePort_));
  socklen_t size = sizeof address;
  const bool known = ::connect(way, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                     ::getsockname(way, reinterpret_cast<sockaddr*>(&address), &size) == 0;
  ::close(way);
  return known ? QHostAddress(ntohl(address.sin_addr.s_addr)).toString().toStdString() : std::string();
}

void QtUdpSocket::DeliverWaiting(int most) {
  const unsigned life = life_;
  const std::uint64_t atFirst = received_;
  for (int i = 0; i < most && life == life_ && IsOpen() && socket_.hasPendingDatagrams(); ++i) {
    const std::uint64_t before = received_;
    const auto size = static_cast<std::size_t>(socket_.pendingDatagramSize());
    RaiseArrival(size);
    if (life == life_ && received_ == before) Receive({});
  }
  // A datagram that the system woke us for and then threw away (a wrong checksum). Qt tells of no other
  // before a read has been tried.
  if (life == life_ && IsOpen() && received_ == atFirst) socket_.readDatagram(nullptr, 0);
}

void QtUdpSocket::OnError(QAbstractSocket::SocketError code) {
  switch (code) {
    case QAbstractSocket::ConnectionRefusedError:  // nobody listened to a datagram sent earlier
    case QAbstractSocket::NetworkError:            // no way to it
    case QAbstractSocket::TemporaryError:
    case QAbstractSocket::DatagramTooLargeError:  // one that was cut
      return;
    default:
      if (!quiet_) RaiseError(static_cast<int>(code), socket_.errorString().toStdString());
  }
}

}  // namespace tvx
