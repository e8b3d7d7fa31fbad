#include "platform/AtomicFile.h"

#include <array>
#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/windows/calls/WinApi.h"

namespace tvx {
namespace {

constexpr std::string_view kTemporary = ".saving-";
constexpr std::size_t kTemporaryEnd = 6;  // letters that tell one from another
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::uint64_t kStale = 60ull * 10'000'000;  // a minute, in the file system's unit
// A virus scanner that looks at a new file holds it for some milliseconds.
constexpr int kRenameTries = 10;
constexpr DWORD kRenamePauseMs = 10;

std::string Reason(const std::string& path, DWORD code) {
  return '"' + path + "\": " + ErrorWords(code);
}

bool Exists(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES;
}

bool IsFolder(DWORD attributes) {
  return Exists(attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The file that a path leads to through links; the path itself where it leads nowhere.
std::wstring Resolved(const std::wstring& path) {
  const Handle file(CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file) return path;
  std::array<wchar_t, 32768> name{};
  const DWORD length = GetFinalPathNameByHandleW(file.Get(), name.data(), static_cast<DWORD>(name.size()), 0);
  return length > 0 && length < name.size() ? std::wstring(name.data(), length) : path;
}

bool WriteAll(HANDLE file, std::string_view content) {
  while (!content.empty()) {
    DWORD written = 0;
    const auto part = static_cast<DWORD>(std::min<std::size_t>(content.size(), 1u << 20));
    if (WriteFile(file, content.data(), part, &written, nullptr) == 0 || written == 0) return false;
    content.remove_prefix(written);
  }
  return true;
}

// Makes a new file and fills it; 0, or the error's code, and no file is left then.
DWORD Fill(const std::wstring& path, std::string_view content) {
  Handle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return GetLastError();
  if (WriteAll(file.Get(), content) && FlushFileBuffers(file.Get()) != 0 && file.Close()) return 0;
  const DWORD code = GetLastError();
  file.Close();
  DeleteFileW(path.c_str());
  return code != 0 ? code : ERROR_WRITE_FAULT;
}

// A name beside the file that no other program uses.
std::wstring TemporaryFor(const std::wstring& path) {
  static unsigned counter = 0;
  LARGE_INTEGER ticks{};
  QueryPerformanceCounter(&ticks);
  std::uint64_t number =
      static_cast<std::uint64_t>(ticks.QuadPart) * 1000 + GetCurrentProcessId() + ++counter;
  const std::size_t end = path.find_last_of(L"/\\");
  std::wstring name = (end == std::wstring::npos ? L"" : path.substr(0, end + 1)) + Wide(kTemporary);
  for (std::size_t i = 0; i < kTemporaryEnd; ++i, number /= 26)
    name += static_cast<wchar_t>(L'a' + number % 26);
  return name;
}

// 0, or the error's code.
DWORD RenameOver(const std::wstring& temporary, const std::wstring& target) {
  for (int left = kRenameTries;; --left) {
    if (MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) !=
        0)
      return 0;
    const DWORD code = GetLastError();
    if ((code != ERROR_SHARING_VIOLATION && code != ERROR_ACCESS_DENIED) || left == 0) return code;
    Sleep(kRenamePauseMs);
  }
}

bool IsTemporary(const std::wstring& name) {
  const std::wstring stem = Wide(kTemporary);
  return name.size() == stem.size() + kTemporaryEnd && name.starts_with(stem);
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, std::string& error, std::size_t limit) {
  const std::wstring name = Wide(path);
  const Handle file(CreateFileW(name.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  const DWORD code = GetLastError();
  // A folder cannot be opened at all; what is no file on a disk might have nobody at its other end.
  if (IsFolder(GetFileAttributesW(name.c_str())) || (file && GetFileType(file.Get()) != FILE_TYPE_DISK)) {
    error = '"' + path + "\" is not a file";
    return std::nullopt;
  }
  if (!file) {
    error = Reason(path, code);
    return std::nullopt;
  }
  std::string content;
  std::vector<char> block(64u << 10);
  while (content.size() <= limit) {
    DWORD got = 0;
    if (ReadFile(file.Get(), block.data(), static_cast<DWORD>(block.size()), &got, nullptr) == 0) {
      error = Reason(path, GetLastError());
      return std::nullopt;
    }
    if (got == 0) return content;
    content.append(block.data(), got);
  }
  error = '"' + path + "\" is larger than " + std::to_string(limit) + " bytes";
  return std::nullopt;
}

bool ReplaceFile(const std::string& path, std::string_view content, std::string& error) {
  const std::wstring target = Resolved(Wide(path));
  const DWORD old = GetFileAttributesW(target.c_str());
  if (IsFolder(old)) {
    error = '"' + path + "\" is not a file";
    return false;
  }
  DWORD code = target.empty() ? ERROR_PATH_NOT_FOUND : 0;
  // A file that the user protected is left alone.
  if (Exists(old) && (old & FILE_ATTRIBUTE_READONLY) != 0) code = ERROR_ACCESS_DENIED;
  if (code == 0) {
    const std::wstring temporary = TemporaryFor(target);
    code = Fill(temporary, content);
    if (code == 0) {
      if (Exists(old)) SetFileAttributesW(temporary.c_str(), old);
      code = RenameOver(temporary, target);
      if (code != 0) DeleteFileW(temporary.c_str());
    }
  }
  if (code != 0) error = Reason(path, code);
  return code == 0;
}

bool CreateNewFile(const std::string& path, std::string_view content, std::string& error) {
  const DWORD code = Fill(Wide(path), content);
  if (code != 0) error = Reason(path, code);
  return code == 0;
}

bool MoveToNewName(const std::string& path, const std::string& newName, std::string& error) {
  const std::wstring from = Wide(path);
  const DWORD attributes = GetFileAttributesW(from.c_str());
  if (!Exists(attributes)) {
    error = Reason(path, GetLastError());
    return false;
  }
  if (IsFolder(attributes)) {
    error = '"' + path + "\" is not a file";
    return false;
  }
  if (MoveFileExW(from.c_str(), Wide(newName).c_str(), 0) != 0) return true;
  error = Reason(newName, GetLastError());
  return false;
}

void RemoveStaleTemporaries(const std::string& folder) {
  namespace fs = std::filesystem;
  FILETIME time{};
  GetSystemTimeAsFileTime(&time);
  const auto number = [](const FILETIME& t) {
    return (std::uint64_t{t.dwHighDateTime} << 32) | t.dwLowDateTime;
  };
  std::error_code code;
  for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : fs::path(Wide(folder)), code), end;
       !code && entry != end; entry.increment(code)) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    const std::wstring path = entry->path().wstring();
    if (IsTemporary(entry->path().filename().wstring()) &&
        GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) != 0 &&
        !IsFolder(data.dwFileAttributes) && number(data.ftLastWriteTime) + kStale < number(time)) {
      DeleteFileW(path.c_str());
    }
  }
}

}  // namespace tvx
