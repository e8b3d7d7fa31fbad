#include "virtualcockpit/EndSignals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace tvx::vc {

namespace {

sigset_t Ends() {
  sigset_t ends;
  ::sigemptyset(&ends);
  ::sigaddset(&ends, SIGTERM);
  ::sigaddset(&ends, SIGINT);
  return ends;
}

}  // namespace

void EndSignals::HoldBack() {
  const sigset_t ends = Ends();
  ::pthread_sigmask(SIG_BLOCK, &ends, nullptr);
}

EndSignals::EndSignals(std::function<void()> onEnd) {
  const sigset_t ends = Ends();
  handle_ = ::signalfd(-1, &ends, SFD_NONBLOCK | SFD_CLOEXEC);
  if (handle_ < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(handle_, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this, onEnd = std::move(onEnd)] {
    signalfd_siginfo info;
    while (::read(handle_, &info, sizeof info) == sizeof info) {
    }
    onEnd();
  });
}

EndSignals::~EndSignals() {
  notifier_.reset();
  if (handle_ >= 0) ::close(handle_);
}

}  // namespace tvx::vc
