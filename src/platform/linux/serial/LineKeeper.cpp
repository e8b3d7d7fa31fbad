#include "platform/linux/serial/LineKeeper.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/linux/serial/TtyCalls.h"

namespace tvx {

namespace {

signed char CarrierCode(int fd) {
  const std::optional<bool> carrier = ReadCarrier(fd);
  return carrier ? static_cast<signed char>(*carrier) : static_cast<signed char>(-1);
}

OpenedTty OpenLine(const std::string& path, SerialReset reset) {
  OpenedTty line = OpenTty(path);
  if (line.state != SerialState::Open || reset == SerialReset::No) return line;
  CloseTty(line.fd);
  return OpenTty(path);
}

}  // namespace

bool SendPacket(int socket, const void* data, std::size_t size, int fd) {
  alignas(cmsghdr) char room[CMSG_SPACE(sizeof(int))] = {};
  iovec part{const_cast<void*>(data), size};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  if (fd >= 0) {
    message.msg_control = room;
    message.msg_controllen = sizeof room;
    cmsghdr* header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof(int));
    std::memcpy(CMSG_DATA(header), &fd, sizeof fd);
  }
  ssize_t sent = 0;
  do {
    sent = sendmsg(socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
  } while (sent < 0 && errno == EINTR);
  return sent == static_cast<ssize_t>(size);
}

ssize_t ReceivePacket(int socket, void* data, std::size_t size, int& fd, int flags) {
  alignas(cmsghdr) char room[CMSG_SPACE(sizeof(int))] = {};
  iovec part{data, size};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = room;
  message.msg_controllen = sizeof room;
  fd = -1;
  ssize_t count = 0;
  do {
    count = recvmsg(socket, &message, MSG_CMSG_CLOEXEC | flags);
  } while (count < 0 && errno == EINTR);
  const cmsghdr* header = count > 0 ? CMSG_FIRSTHDR(&message) : nullptr;
  if (header != nullptr && header->cmsg_type == SCM_RIGHTS) std::memcpy(&fd, CMSG_DATA(header), sizeof fd);
  return count;
}

void KeepLine(int socket, const std::string& path, SerialReset reset) {
  const OpenedTty line = OpenLine(path, reset);
  KeeperReport report{line.state, -1};
  if (line.state == SerialState::Open) {
    SetLowLatency(line.fd, path);
    report.carrier = CarrierCode(line.fd);
  }
  bool wanted = SendPacket(socket, &report, sizeof report, line.fd);
  if (line.state != SerialState::Open) return;
  while (wanted) {
    KeeperRequest request{};
    int none = -1;
    if (ReceivePacket(socket, &request, sizeof request, none) <= 0) break;
    report.carrier = CarrierCode(line.fd);
    wanted = SendPacket(socket, &report, sizeof report);
  }
  CloseTty(line.fd);
}

}  // namespace tvx
