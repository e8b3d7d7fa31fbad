#include "platform/qt/QtUdpSocket.h"

#include <utility>

#include "platform/HostName.h"
#include "platform/machine/DatagramCalls.h"

namespace tvx {

namespace {

// So many datagrams in one go; the rest waits for the event loop's next turn.
constexpr int kDatagramsPerCall = 64;
// More than the system's receive buffer holds: the end of a delivery even where a sender never stops.
constexpr int kDatagramsBeforeRebinding = 4096;
constexpr qint64 kPortUserMs = 2000;  // for so long it is taken for the same

bool IsPort(std::int32_t port) {
  return port >= 1 && port <= 65535;
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
  PrepareDatagramSocket(socket_.socketDescriptor());
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
  const auto waiting = PeekDatagram(socket_.socketDescriptor());
  if (!waiting) return {};
  const std::uint32_t remote = remote_.toIPv4Address();
  // A program on this computer answers from whichever of its addresses the way leads over.
  const bool isRemote =
      waiting->address == remote || (IsOwnAddress(remote) && IsOwnAddress(waiting->address));
  return {waiting->address, waiting->port, isRemote, waiting->waitedMs};
}

std::string QtUdpSocket::LocalAddress() const {
  const auto address = AddressTowards(remote_.toIPv4Address(), remotePort_);
  return address ? QHostAddress(*address).toString().toStdString() : std::string();
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
