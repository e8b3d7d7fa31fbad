#include "platform/linux/TerminationSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

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

TerminationSignals::TerminationSignals(std::unique_ptr<FdWatcher> watcher, std::function<void()> ended) {
  if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
  watcher_ = std::move(watcher);
  watcher_->SetCallbacks(
      [ended = std::move(ended)] {
        char bytes[16];
        if (::read(pipeEnds[0], bytes, sizeof bytes) > 0) ended();
      },
      {});
  watcher_->Attach(pipeEnds[0]);
  Handle(OnSignal);
}

TerminationSignals::~TerminationSignals() {
  if (!watcher_) return;
  Handle(SIG_DFL);
  watcher_.reset();
  for (int& end : pipeEnds) {
    ::close(end);
    end = -1;
  }
}

}  // namespace tvx
