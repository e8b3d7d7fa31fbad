#include "platform/linux/CrashWords.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

namespace tvx {
namespace {

// All that a signal handler touches.
PreparedWords said;
std::atomic<int> speaker = -1;  // the socket
static_assert(std::atomic<int>::is_always_lock_free);

// Those that end a program by default, but for the ones that ask it to end.
constexpr std::array kFatal = {SIGSEGV, SIGABRT, SIGBUS,  SIGILL,  SIGFPE, SIGSYS,
                               SIGTRAP, SIGQUIT, SIGXCPU, SIGXFSZ, SIGHUP};
std::array<struct sigaction, kFatal.size()> before{};
// A stack that has run over is a fault too, and needs another one for its handler.
std::array<char, 64 * 1024> otherStack;

bool SendTo(const UdpTarget& target, ByteView bytes) {
  sockaddr_in to{};
  to.sin_family = AF_INET;
  to.sin_addr.s_addr = htonl(target.address);
  to.sin_port = htons(static_cast<std::uint16_t>(target.port));
  const auto sent = sendto(speaker, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
                           reinterpret_cast<const sockaddr*>(&to), sizeof to);
  return sent == static_cast<ssize_t>(bytes.size());
}

// Runs at any moment, in any thread: only what is safe in a signal handler.
void Say() {
  said.SayOnce(SendTo);
}

void OnFatal(int signal, siginfo_t* info, void*) {
  const int saved = errno;
  Say();
  for (std::size_t i = 0; i < kFatal.size(); ++i) {
    if (kFatal[i] == signal) sigaction(signal, &before[i], nullptr);
  }
  // A fault comes again by itself when the handler returns, with all that the next handler wants to know.
  // What was sent by somebody has to be sent again; it waits until this handler has returned.
  if (info->si_code <= 0) raise(signal);
  errno = saved;
}

}  // namespace

CrashWords::CrashWords(TargetNow target) : target_(std::move(target)) {
  if (speaker < 0) speaker = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

CrashWords::~CrashWords() {
  said.Forget();
  if (const int socket = speaker.exchange(-1); socket >= 0) close(socket);
}

void CrashWords::Prepare(const UdpTarget& target, std::span<const ByteView> datagrams) {
  said.Prepare(target, datagrams);
}

bool CrashWords::Send(const UdpTarget& target, ByteView datagram) {
  return SendTo(target, datagram);
}

void CrashWords::CatchFatalSignals() {
  stack_t present{};
  if (sigaltstack(nullptr, &present) == 0 && (present.ss_flags & SS_DISABLE) != 0) {
    stack_t stack{};
    stack.ss_sp = otherStack.data();
    stack.ss_size = otherStack.size();
    sigaltstack(&stack, nullptr);
  }
  struct sigaction action {};
  action.sa_sigaction = OnFatal;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < kFatal.size(); ++i) {
    sigaction(kFatal[i], nullptr, &before[i]);
    const bool plain = (before[i].sa_flags & SA_SIGINFO) == 0;
    if (plain && before[i].sa_handler == SIG_IGN) continue;
    sigaction(kFatal[i], &action, nullptr);
  }
  std::atexit(Say);
}

}  // namespace tvx
