// Looks up names over Qt, which keeps threads of its own for it.
#pragma once

#include <QObject>

#include "platform/HostResolver.h"

namespace tvx {

// An address that was found is taken for right for a minute, without a further question to the network.
class QtHostResolver final : public HostResolver {
 public:
  Registration Lookup(const std::string& name, Done done) override;

 private:
  QObject context_;  // no result comes once it is gone
};

}  // namespace tvx
