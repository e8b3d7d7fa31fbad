#include "platform/qt/QtMulticastListener.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>

namespace tvx {
namespace {

constexpr int kDatagramsPerCall = 64;  // the rest waits for the event loop's next turn
constexpr qint64 kLargestDatagram = 2048;

bool CanHear(const QNetworkInterface& card) {
  const auto flags = card.flags();
  return (flags & QNetworkInterface::IsUp) &&
         (flags & (QNetworkInterface::CanMulticast | QNetworkInterface::IsLoopBack));
}

// What comes without a sender's address has not travelled: this computer has no network.
bool IsOwn(const QHostAddress& address) {
  return address.isLoopback() || address == QHostAddress(QHostAddress::AnyIPv4) ||
         QNetworkInterface::allAddresses().contains(address);
}

}  // namespace

QtMulticastListener::QtMulticastListener(std::string_view group, std::uint16_t port)
    : group_(QString::fromUtf8(group.data(), static_cast<qsizetype>(group.size()))), port_(port) {
  QObject::connect(&socket_, &QUdpSocket::readyRead, &socket_, [this] { Read(); });
}

QtMulticastListener::~QtMulticastListener() {
  Close();
}

bool QtMulticastListener::Open() {
  lastError_.clear();
  if (socket_.state() != QAbstractSocket::BoundState && !Bind()) return false;
  if (!group_.isMulticast()) return true;
  JoinEverywhere();
  if (!joined_.isEmpty()) return true;
  Close();
  lastError_ = "no network card can hear the group " + group_.toString().toStdString();
  return false;
}

// Bound to the group's address, so that nothing else that is sent to the port arrives; Windows cannot do
// that.
bool QtMulticastListener::Bind() {
#ifdef Q_OS_WIN
  const QHostAddress where(QHostAddress::AnyIPv4);
#else
  const QHostAddress& where = group_;
#endif
  if (socket_.bind(where, port_, QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint))
    return true;
  lastError_ = "port " + std::to_string(port_) + ": " + socket_.errorString().toStdString();
  Close();
  return false;
}

// A card that went away has lost its membership; it is joined again when it is back.
void QtMulticastListener::JoinEverywhere() {
  QStringList joined;
  for (const QNetworkInterface& card : QNetworkInterface::allInterfaces()) {
    if (!CanHear(card)) continue;
    if (joined_.contains(card.name()) || socket_.joinMulticastGroup(group_, card)) joined << card.name();
  }
  joined_ = joined;
}

void QtMulticastListener::Close() {
  joined_.clear();
  socket_.close();
}

void QtMulticastListener::Read() {
  for (int i = 0; i < kDatagramsPerCall && socket_.hasPendingDatagrams(); ++i) {
    const QNetworkDatagram datagram = socket_.receiveDatagram(kLargestDatagram);
    const QByteArray bytes = datagram.data();
    const QHostAddress from = datagram.senderAddress();
    RaiseArrival({reinterpret_cast<const Byte*>(bytes.constData()), static_cast<std::size_t>(bytes.size())},
                 {from.toString().toStdString(), IsOwn(from)});
  }
}

}  // namespace tvx
