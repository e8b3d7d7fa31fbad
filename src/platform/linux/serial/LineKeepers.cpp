#include "platform/linux/serial/LineKeepers.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/linux/serial/LineKeeper.h"

namespace tvx {

LineKeepers::LineKeepers(LineServer& server, MakeWatcher makeWatcher)
    : server_(server), makeWatcher_(std::move(makeWatcher)) {}

LineKeepers::~LineKeepers() {
  for (const auto& line : leaving_) {
    line->watcher->Release();
    if (line->socket >= 0) close(line->socket);
  }
}

bool LineKeepers::IsLeaving(const std::string& path) const {
  return std::any_of(leaving_.begin(), leaving_.end(),
                     [&](const auto& line) { return line->socket >= 0 && line->path == path; });
}

void LineKeepers::Start(const void* owner, const std::string& path, SerialReset reset, Started started) {
  if (IsLeaving(path)) {
    waiting_.push_back({owner, path, reset, std::move(started)});
  } else {
    started(server_.StartKeeper(path, reset));
  }
}

void LineKeepers::Cancel(const void* owner) {
  std::erase_if(waiting_, [owner](const Waiting& waiting) { return waiting.owner == owner; });
}

void LineKeepers::LetGo(const std::string& path, int socket) {
  shutdown(socket, SHUT_WR);
  const auto free =
      std::find_if(leaving_.begin(), leaving_.end(), [](const auto& line) { return line->socket < 0; });
  Leaving& line = free != leaving_.end() ? **free : *leaving_.emplace_back(std::make_unique<Leaving>());
  line.path = path;
  line.socket = socket;
  if (!line.watcher) {
    line.watcher = makeWatcher_();
    line.watcher->SetCallbacks([this, &line] { OnGone(line); }, {});
  }
  line.watcher->Attach(socket);
}

// A late answer of the keeper's may come first: an opening that nobody wants any more, with its descriptor.
void LineKeepers::OnGone(Leaving& line) {
  KeeperReport late;
  int fd = -1;
  if (ReceivePacket(line.socket, &late, sizeof late, fd, MSG_DONTWAIT) > 0) {
    if (fd >= 0) close(fd);
    return;
  }
  line.watcher->Release();
  close(std::exchange(line.socket, -1));
  StartWaiting(std::string(line.path));
}

// All who wait for the device, once nobody lets go of it any more: one gets it, the others are told that it
// is busy.
void LineKeepers::StartWaiting(const std::string& path) {
  while (!IsLeaving(path)) {
    const auto next = std::find_if(waiting_.begin(), waiting_.end(),
                                   [&](const Waiting& waiting) { return waiting.path == path; });
    if (next == waiting_.end()) return;
    const Waiting turn = std::move(*next);
    waiting_.erase(next);
    turn.started(server_.StartKeeper(path, turn.reset));
  }
}

}  // namespace tvx
