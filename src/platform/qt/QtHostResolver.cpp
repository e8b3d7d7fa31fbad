#include "platform/qt/QtHostResolver.h"

#include <QHostInfo>
#include <memory>

namespace tvx {
namespace {

HostLookup ResultOf(const QHostInfo& info) {
  for (const QHostAddress& address : info.addresses()) {
    if (address.protocol() == QAbstractSocket::IPv4Protocol) return {address.toString().toStdString(), {}};
  }
  if (info.error() == QHostInfo::NoError) return {{}, "it has no IPv4 address"};
  return {{}, info.errorString().toStdString()};
}

}  // namespace

Registration QtHostResolver::Lookup(const std::string& name, Done done) {
  const auto owned = std::make_shared<const Done>(std::move(done));
  QHostInfo::lookupHost(QString::fromStdString(name), &context_,
                        [wanted = std::weak_ptr<const Done>(owned)](const QHostInfo& info) {
                          if (const auto wants = wanted.lock()) (*wants)(ResultOf(info));
                        });
  return Registration(owned);
}

}  // namespace tvx
