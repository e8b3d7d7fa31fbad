#include "platform/linux/serial/LineServer.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <utility>

#include "platform/linux/serial/LineKeeper.h"

namespace tvx {

namespace {

// Keeps `end`, under the number that is returned, and gives back whatever else the program had open: others
// may wait for it to be closed.
int KeepOnly(int end) {
  constexpr int kFirst = STDERR_FILENO + 1;
  const int kept = fcntl(end, F_DUPFD_CLOEXEC, kFirst);
  const int null = open("/dev/null", O_RDWR);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(null, standard);
  if (kept > kFirst) close_range(kFirst, static_cast<unsigned>(kept) - 1, 0);
  close_range(static_cast<unsigned>(kept) + 1, UINT_MAX, 0);
  return kept;
}

// The end of the program ends this one, nothing else does: a line must be closed in order.
void StandApart() {
  setsid();
  prctl(PR_SET_NAME, kKeeperName);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGCHLD}) std::signal(number, SIG_IGN);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  [[maybe_unused]] const int moved = chdir("/");
}

// A request: '0' or '1' for the reset, then the path; the keeper's end of its socket comes with it.
[[noreturn]] void Serve(int end) {
  StandApart();
  const int socket = KeepOnly(end);
  std::array<char, PATH_MAX + 1> request{};
  for (;;) {
    int line = -1;
    const ssize_t count = ReceivePacket(socket, request.data(), request.size(), line);
    if (count <= 0) _exit(0);
    if (line < 0) continue;
    if (fork() == 0) {
      close(socket);
      KeepLine(line, std::string(request.data() + 1, static_cast<std::size_t>(count) - 1),
               request[0] == '1' ? SerialReset::Yes : SerialReset::No);
      _exit(0);
    }
    close(line);
  }
}

}  // namespace

LineServer::LineServer() {
  SplitOff();
}

LineServer::~LineServer() {
  if (socket_ >= 0) close(socket_);
}

// Forked twice, so that it is no child of the program's, which would have to wait for its end.
void LineServer::SplitOff() {
  int ends[2] = {-1, -1};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return;
  const pid_t between = fork();
  if (between == 0) {
    if (fork() == 0) Serve(ends[1]);
    _exit(0);
  }
  close(ends[1]);
  if (between > 0) {
    while (waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  if (socket_ >= 0) close(socket_);
  socket_ = ends[0];
}

int LineServer::StartKeeper(const std::string& path, SerialReset reset) {
  int ends[2] = {-1, -1};
  if (path.size() > PATH_MAX || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return -1;
  const std::string request = (reset == SerialReset::Yes ? "1" : "0") + path;
  bool sent = SendPacket(socket_, request.data(), request.size(), ends[1]);
  if (!sent) {  // somebody ended it
    SplitOff();
    sent = SendPacket(socket_, request.data(), request.size(), ends[1]);
  }
  close(ends[1]);
  if (sent) return ends[0];
  close(ends[0]);
  return -1;
}

}  // namespace tvx
