// Hears a multicast group, over Qt.
#pragma once

#include <QHostAddress>
#include <QStringList>
#include <QUdpSocket>
#include <string_view>

#include "platform/MulticastListener.h"

namespace tvx {

class QtMulticastListener final : public MulticastListener {
 public:
  // A dotted IPv4 address and a port. An address that is no multicast group is listened at as it is.
  QtMulticastListener(std::string_view group, std::uint16_t port);
  ~QtMulticastListener() override;
  QtMulticastListener(const QtMulticastListener&) = delete;
  QtMulticastListener& operator=(const QtMulticastListener&) = delete;

  bool Open() override;
  void Close() override;
  std::string LastError() const override { return lastError_; }

 private:
  bool Bind();
  void JoinEverywhere();
  void Read();

  QHostAddress group_;
  std::uint16_t port_;
  QUdpSocket socket_;
  QStringList joined_;  // names of network cards
  std::string lastError_;
};

}  // namespace tvx
