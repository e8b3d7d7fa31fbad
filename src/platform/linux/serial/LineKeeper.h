// The process that keeps one serial line. It makes the calls that may wait for the adapter, so that the
// program never does; and as it holds the line too, the program can close it, or end, at once.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "platform/TtyDevice.h"

namespace tvx {

// What the program asks a keeper, one byte each. That the program's end of the socket closes means: let go.
enum class KeeperRequest : char { Carrier = 'c' };

// What a keeper answers. The first answer is to the opening; the device's descriptor comes with it.
struct KeeperReport {
  SerialState state = SerialState::Failed;
  signed char carrier = -1;  // 0, 1; -1: the device has none

  std::optional<bool> Carrier() const { return carrier < 0 ? std::nullopt : std::optional(carrier > 0); }
};

// A packet over a socket, with a descriptor where `fd` is not -1. False where it could not be sent.
bool SendPacket(int socket, const void* data, std::size_t size, int fd = -1);
// Receives one, into `data`; its descriptor, or -1, into `fd`. 0: the other end is closed; -1: an error.
ssize_t ReceivePacket(int socket, void* data, std::size_t size, int& fd, int flags = 0);

// The whole life of a keeper: opens the line, reports, serves requests, closes it when the program lets go.
// It may have been forked from a program with threads, and uses no more of what they might have held than the
// C library makes safe.
void KeepLine(int socket, const std::string& path, SerialReset reset);

}  // namespace tvx
