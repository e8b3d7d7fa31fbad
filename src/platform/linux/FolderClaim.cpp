#include "platform/linux/FolderClaim.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <string>
#include <utility>

namespace tvx {

namespace {

constexpr int kMostAtOnce = 16;
constexpr int kPauseMs = 10;

struct Name {
  sockaddr_un address{};
  socklen_t size = 0;
};

// By the folder's number, not by its path: a link to it is the same folder. A name that begins with a zero
// byte stands in no file system.
Name NameOf(const std::string& folder) {
  struct stat info {};
  if (stat(folder.c_str(), &info) != 0) return {};
  const std::string text = std::string(1, '\0') + "torvex-control " + std::to_string(info.st_dev) + ":" +
                           std::to_string(info.st_ino);
  Name name;
  name.address.sun_family = AF_UNIX;
  std::copy(text.begin(), text.end(), name.address.sun_path);
  name.size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + text.size());
  return name;
}

int NewSocket() {
  return socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

}  // namespace

FolderClaim::~FolderClaim() {
  if (watcher_) watcher_->Release();
  if (socket_ >= 0) close(socket_);
}

// Where no claim can be had at all, the program runs without one.
bool FolderClaim::Take(const std::string& folder) {
  const Name name = NameOf(folder);
  socket_ = name.size > 0 ? NewSocket() : -1;
  if (socket_ < 0) return true;
  if (bind(socket_, reinterpret_cast<const sockaddr*>(&name.address), name.size) == 0) {
    listen(socket_, kMostAtOnce);
    return true;
  }
  const bool taken = errno == EADDRINUSE;
  close(std::exchange(socket_, -1));
  return !taken;
}

FolderClaim::Start FolderClaim::TakeOrAsk(const std::string& folder, int milliseconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  for (;;) {
    if (Take(folder)) return Start::First;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (AskToShow(folder, static_cast<int>(std::max<long>(left, 1)))) return Start::Shown;
    if (Clock::now() >= end) return Start::NoAnswer;
    poll(nullptr, 0, kPauseMs);
  }
}

void FolderClaim::Listen(std::unique_ptr<FdWatcher> watcher, std::function<void()> asked) {
  if (socket_ < 0) return;
  watcher_ = std::move(watcher);
  asked_ = std::move(asked);
  watcher_->SetCallbacks([this] { OnAsked(); }, {});
  watcher_->Attach(socket_);
}

void FolderClaim::OnAsked() {
  const int caller = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (caller < 0) return;
  asked_();
  [[maybe_unused]] const ssize_t sent = send(caller, "1", 1, MSG_NOSIGNAL | MSG_DONTWAIT);
  close(caller);
}

bool FolderClaim::AskToShow(const std::string& folder, int milliseconds) {
  const Name name = NameOf(folder);
  const int socket = name.size > 0 ? NewSocket() : -1;
  if (socket < 0) return false;
  bool shown = false;
  if (connect(socket, reinterpret_cast<const sockaddr*>(&name.address), name.size) == 0) {
    pollfd answer{socket, POLLIN, 0};
    char byte = 0;
    shown = poll(&answer, 1, milliseconds) == 1 && recv(socket, &byte, 1, 0) == 1;
  }
  close(socket);
  return shown;
}

}  // namespace tvx
