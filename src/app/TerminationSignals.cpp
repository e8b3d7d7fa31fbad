#include "app/TerminationSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>
#include <csignal>

namespace tvx {
namespace {

int pipeEnds[2] = {-1, -1};

// Runs at any moment of the program: only writes a byte.
void OnSignal(int) {
  const int saved = errno;
  const char byte = 1;
  [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
  errno = saved;
}

void Handle(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGINT, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> ended) {
  if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [ended = std::move(ended)] {
    char bytes[16];
    if (::read(pipeEnds[0], bytes, sizeof bytes) > 0) ended();
  });
  Handle(OnSignal);
}

TerminationSignals::~TerminationSignals() {
  if (!notifier_) return;
  Handle(SIG_DFL);
  notifier_.reset();
  for (int& end : pipeEnds) {
    ::close(end);
    end = -1;
  }
}

}  // namespace tvx
