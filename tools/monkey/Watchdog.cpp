#include "tools/monkey/Watchdog.h"

#include <pthread.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstring>

#if __has_include(<sanitizer/common_interface_defs.h>)
#include <sanitizer/common_interface_defs.h>
#endif

#include "tools/monkey/Journal.h"

namespace tvx::monkey {
namespace {

constexpr int kTickMs = 250;

int journal = -1;
pthread_t mainThread;
// Written by the handler, and by the thread that it interrupts.
std::atomic<std::int64_t> counted = 0;   // ms that the process could use
std::atomic<std::int64_t> tickedAt = 0;  // by OwnMs
std::atomic<std::int64_t> aliveAt = 0;   // by `counted`
std::atomic<std::int64_t> endFrom = -1;  // by `counted`; -1: not expected

void Say(const char* words) {
  [[maybe_unused]] const ssize_t written = write(journal, words, std::strlen(words));
}

// Four times a second, whatever the program is in the middle of.
void OnAlarm(int signal) {
  if (pthread_equal(pthread_self(), mainThread) == 0) {  // any thread may be taken for it
    pthread_kill(mainThread, signal);
    return;
  }
  const std::int64_t now = OwnMs();
  // A process that was stopped for an hour, or a computer that slept, has not stood still for an hour.
  counted += std::min<std::int64_t>(now - tickedAt.exchange(now), 2 * kTickMs);
  if (endFrom >= 0 ? counted - endFrom < Watchdog::kEndMs : counted - aliveAt < Watchdog::kStillMs) return;
  Say(endFrom >= 0 ? "fault the program does not end\n" : "fault no event is handled any more\n");
#if defined(__SANITIZE_ADDRESS__)
  __sanitizer_print_stack_trace();
#endif
  _exit(Watchdog::kStatus);
}

void SetTimer(int milliseconds) {
  const itimerval every{{0, milliseconds * 1000}, {0, milliseconds * 1000}};
  setitimer(ITIMER_REAL, &every, nullptr);
}

}  // namespace

Watchdog::Watchdog(int toJournal) {
  journal = toJournal;
  mainThread = pthread_self();
  endFrom = -1;
  tickedAt = OwnMs();
  Alive();
  struct sigaction action {};
  action.sa_handler = OnAlarm;
  action.sa_flags = SA_RESTART;
  sigaction(SIGALRM, &action, nullptr);
  SetTimer(kTickMs);
}

Watchdog::~Watchdog() {
  SetTimer(0);
}

std::int64_t Watchdog::CountedMs() {
  return counted;
}

void Watchdog::Alive() {
  aliveAt = counted.load();
}

void Watchdog::ExpectEnd() {
  if (EndExpected()) return;
  endFrom = counted.load();
  endExpectedAt_ = OwnMs();
}

bool Watchdog::EndExpected() const {
  return endFrom >= 0;
}

std::int64_t Watchdog::SinceEndExpectedMs() const {
  return EndExpected() ? OwnMs() - endExpectedAt_ : 0;
}

}  // namespace tvx::monkey
