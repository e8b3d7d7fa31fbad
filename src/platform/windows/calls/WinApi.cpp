#include "platform/windows/calls/WinApi.h"

#include <array>

namespace tvx {

std::wstring Wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Utf8(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int room = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(room), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), room, nullptr, nullptr);
  return narrow;
}

std::string ErrorWords(unsigned long code) {
  constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  std::array<wchar_t, 512> text{};
  DWORD length = 0;
  for (const DWORD language : {DWORD{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)}, DWORD{0}}) {
    length = FormatMessageW(kFlags, nullptr, code, language, text.data(), static_cast<DWORD>(text.size()),
                            nullptr);
    if (length > 0) break;
  }
  std::string words = Utf8({text.data(), length});
  while (!words.empty() && std::string_view(" .\r\n").find(words.back()) != std::string_view::npos)
    words.pop_back();
  return words.empty() ? "error " + std::to_string(code) : words;
}

}  // namespace tvx
