#include "platform/windows/FaultWords.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "platform/windows/calls/WinApi.h"

namespace tvx {
namespace {

// All that a handler touches.
PreparedWords said;
std::atomic<SOCKET> speaker = INVALID_SOCKET;
LPTOP_LEVEL_EXCEPTION_FILTER before = nullptr;

bool SendTo(const UdpTarget& target, ByteView bytes) {
  sockaddr_in to{};
  to.sin_family = AF_INET;
  to.sin_addr.s_addr = htonl(target.address);
  to.sin_port = htons(static_cast<std::uint16_t>(target.port));
  const int size = static_cast<int>(bytes.size());
  return sendto(speaker, reinterpret_cast<const char*>(bytes.data()), size, 0,
                reinterpret_cast<const sockaddr*>(&to), sizeof to) == size;
}

void Say() {
  said.SayOnce(SendTo);
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
  said.Forget();
  if (const SOCKET socket = speaker.exchange(INVALID_SOCKET); socket != INVALID_SOCKET) closesocket(socket);
  WSACleanup();
}

void FaultWords::Prepare(const UdpTarget& target, std::span<const ByteView> datagrams) {
  said.Prepare(target, datagrams);
}

bool FaultWords::Send(const UdpTarget& target, ByteView datagram) {
  return SendTo(target, datagram);
}

void FaultWords::CatchFaults() {
  before = SetUnhandledExceptionFilter(OnFault);
  std::signal(SIGABRT, OnAbort);
  std::atexit(Say);
}

}  // namespace tvx
