#include "tools/monkey/Watchdog.h"

#include <pthread.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

#if __has_include(<sanitizer/common_interface_defs.h>)
#include <sanitizer/common_interface_defs.h>
#endif

#include "tools/monkey/Journal.h"

namespace tvx::monkey {
namespace {

int journal = -1;
pthread_t mainThread;
std::int64_t aliveAt = 0;   // by OwnMs
std::int64_t endFrom = -1;  // by OwnMs; -1: not expected

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
  if (endFrom >= 0 ? now - endFrom < Watchdog::kEndMs : now - aliveAt < Watchdog::kStillMs) return;
  Say(endFrom >= 0 ? "fault the program does not end\n" : "fault no event is handled any more\n");
#if defined(__SANITIZE_ADDRESS__)
  __sanitizer_print_stack_trace();
#endif
  _exit(Watchdog::kStatus);
}

void SetTimer(int microseconds) {
  const itimerval every{{0, microseconds}, {0, microseconds}};
  setitimer(ITIMER_REAL, &every, nullptr);
}

}  // namespace

Watchdog::Watchdog(int toJournal) {
  journal = toJournal;
  mainThread = pthread_self();
  endFrom = -1;
  Alive();
  struct sigaction action {};
  action.sa_handler = OnAlarm;
  action.sa_flags = SA_RESTART;
  sigaction(SIGALRM, &action, nullptr);
  SetTimer(250'000);
}

Watchdog::~Watchdog() {
  SetTimer(0);
}

void Watchdog::Alive() {
  aliveAt = OwnMs();
}

void Watchdog::ExpectEnd() {
  if (endFrom < 0) endFrom = OwnMs();
}

bool Watchdog::EndExpected() const {
  return endFrom >= 0;
}

std::int64_t Watchdog::SinceEndExpectedMs() const {
  return endFrom < 0 ? 0 : OwnMs() - endFrom;
}

}  // namespace tvx::monkey
