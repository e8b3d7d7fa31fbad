#include "platform/windows/FaultWords.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "platform/windows/calls/WinApi.h"

namespace tvx {
namespace {

// Everything that a handler touches.
struct Said {
  sockaddr_in to{};
  std::size_t count = 0;
  std::array<std::size_t, LastWords::kMost> sizes{};
  std::array<std::array<Byte, LastWords::kLongest>, LastWords::kMost> bytes{};
};
Said said;
std::atomic<SOCKET> speaker = INVALID_SOCKET;
// What is prepared is whole. Taken back before anything of it is changed, and by whoever says it.
std::atomic<bool> ready = false;
LPTOP_LEVEL_EXCEPTION_FILTER before = nullptr;

sockaddr_in AddressOf(const UdpTarget& target) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(target.address);
  address.sin_port = htons(static_cast<std::uint16_t>(target.port));
  return address;
}

bool SendTo(SOCKET socket, const sockaddr_in& to, const Byte* bytes, std::size_t size) {
  const int length = static_cast<int>(size);
  return sendto(socket, reinterpret_cast<const char*>(bytes), length, 0,
                reinterpret_cast<const sockaddr*>(&to), sizeof to) == length;
}

void Say() {
  if (!ready.exchange(false)) return;
  for (std::size_t i = 0; i < said.count; ++i) SendTo(speaker, said.to, said.bytes[i].data(), said.sizes[i]);
}

LONG WINAPI OnFault(EXCEPTION_POINTERS* fault) {
  Say();
  return before != nullptr ? before(fault) : EXCEPTION_CONTINUE_SEARCH;
}

void OnAbort(int) {
  Say();
}

}  // namespace

FaultWords::FaultWords(TargetNow target) : target_(std::move(target)) {
  WSADATA data{};
  WSAStartup(MAKEWORD(2, 2), &data);
  if (speaker != INVALID_SOCKET) return;
  const SOCKET made = socket(AF_INET, SOCK_DGRAM, 0);
  u_long on = 1;
  if (made != INVALID_SOCKET) ioctlsocket(made, FIONBIO, &on);
  speaker = made;
}

FaultWords::~FaultWords() {
  ready = false;
  if (const SOCKET socket = speaker.exchange(INVALID_SOCKET); socket != INVALID_SOCKET) closesocket(socket);
  WSACleanup();
}

void FaultWords::Prepare(const UdpTarget& target, std::span<const ByteView> datagrams) {
  ready = false;
  said.to = AddressOf(target);
  said.count = 0;
  for (const ByteView datagram : datagrams) {
    if (said.count == kMost || datagram.size() > kLongest) continue;
    std::copy(datagram.begin(), datagram.end(), said.bytes[said.count].begin());
    said.sizes[said.count++] = datagram.size();
  }
  ready = said.count > 0;
}

bool FaultWords::Send(const UdpTarget& target, ByteView datagram) {
  return SendTo(speaker, AddressOf(target), datagram.data(), datagram.size());
}

void FaultWords::CatchFaults() {
  before = SetUnhandledExceptionFilter(OnFault);
  std::signal(SIGABRT, OnAbort);
  std::atexit(Say);
}

}  // namespace tvx
