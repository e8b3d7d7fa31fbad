// Windows' own header, kept small, and the texts and handles that go with it.
#pragma once

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
// clang-format off
#include <winsock2.h>
#include <windows.h>
// clang-format on

#include <string>
#include <string_view>
#include <utility>

// A macro of the header's that would rename a function of the program.
#undef ReplaceFile

namespace tvx {

// UTF-8 as Windows wants texts, and back. What is not valid becomes a replacement character.
std::wstring Wide(std::string_view text);
std::string Utf8(std::wstring_view text);
// The words of a Windows error code, in English where the system has them, without a full stop.
std::string ErrorWords(unsigned long code);

// Closes a handle at the end of its life.
class Handle {
 public:
  explicit Handle(HANDLE handle = nullptr) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  ~Handle() { Close(); }
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    if (this != &other) {
      Close();
      handle_ = std::exchange(other.handle_, nullptr);
    }
    return *this;
  }

  HANDLE Get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }
  bool Close() {
    const HANDLE handle = std::exchange(handle_, nullptr);
    return handle == nullptr || CloseHandle(handle) != 0;
  }

 private:
  HANDLE handle_;
};

}  // namespace tvx
