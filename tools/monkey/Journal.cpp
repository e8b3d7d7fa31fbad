#include "tools/monkey/Journal.h"

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

namespace tvx::monkey {
namespace {

// Nanoseconds that the main thread waited for a processor; 0 where the system does not tell.
std::int64_t WaitedNs() {
  const int file = open("/proc/self/schedstat", O_RDONLY | O_CLOEXEC);
  if (file < 0) return 0;
  char text[96];
  const ssize_t length = read(file, text, sizeof text);
  close(file);
  std::int64_t waited = 0;
  int field = 0;  // "run waited slices"
  for (ssize_t i = 0; i < length && field < 2; ++i) {
    if (text[i] == ' ') {
      ++field;
    } else if (field == 1) {
      waited = waited * 10 + (text[i] - '0');
    }
  }
  return waited;
}

std::int64_t NowNs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

}  // namespace

std::int64_t OwnMs() {
  static const std::int64_t start = NowNs() - WaitedNs();
  return (NowNs() - WaitedNs() - start) / 1'000'000;
}

Journal::Journal(const char* file)
    : file_(open(file, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644)) {}

Journal::~Journal() {
  if (file_ >= 0) close(file_);
}

void Journal::Write(std::string_view kind, std::string_view text) {
  std::string line(kind);
  line += ' ';
  for (const char letter : text) line += letter == '\n' || letter == '\r' ? ' ' : letter;
  line += '\n';
  [[maybe_unused]] const ssize_t written = write(file_, line.data(), line.size());
}

void Journal::Fault(std::string_view text) {
  if (!faulty_) Write("fault", text);
  faulty_ = true;
}

}  // namespace tvx::monkey
