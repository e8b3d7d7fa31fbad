#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <vector>

namespace tvx {
namespace {

constexpr std::string_view kTemporary = ".saving-";
constexpr std::string_view kTemporaryEnd = "XXXXXX";
constexpr std::time_t kStaleSeconds = 60;

// Closes a file descriptor at the end of its life.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Get() const { return fd_; }
  bool Close() {
    const int fd = fd_;
    fd_ = -1;
    return fd < 0 || close(fd) == 0;
  }

 private:
  int fd_;
};

std::string Reason(const std::string& path, int code) {
  return '"' + path + "\": " + std::generic_category().message(code);
}

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// The file that `path` leads to, through symbolic links, whether it exists or not; std::nullopt where they go
// in circles.
std::optional<std::string> Resolved(std::string path) {
  for (int links = 0; links < 40; ++links) {
    char target[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), target, sizeof target);
    if (length < 0) return path;
    const std::string to(target, static_cast<std::size_t>(length));
    path = !to.empty() && to.front() == '/' ? to : FolderOf(path) + '/' + to;
  }
  return std::nullopt;
}

bool WriteAll(int fd, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = write(fd, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Gives the new file the old one's owner, where the system allows it, and its permissions; a file that is new
// altogether gets what the user's mask leaves.
bool TakeOverMode(int fd, const struct stat* old) {
  if (old == nullptr) {
    const mode_t mask = umask(0);
    umask(mask);
    return fchmod(fd, 0666 & ~mask) == 0;
  }
  if (fchown(fd, old->st_uid, old->st_gid) != 0 && errno != EPERM) return false;
  return fchmod(fd, old->st_mode & 07777) == 0;
}

// Writes `content` into the new file `temporary` and renames it to `path`. 0, or the error's code.
int WriteAndRename(int fd, const std::string& temporary, const std::string& path, const struct stat* old,
                   std::string_view content) {
  Descriptor file(fd);
  if (!WriteAll(fd, content) || !TakeOverMode(fd, old) || fsync(fd) != 0 || !file.Close() ||
      rename(temporary.c_str(), path.c_str()) != 0) {
    return errno != 0 ? errno : EIO;
  }
  return 0;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, std::string& error, std::size_t limit) {
  // Without blocking: opening a pipe without a writer would otherwise wait for one.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  struct stat status {};
  if (file.Get() < 0 || fstat(file.Get(), &status) != 0) {
    error = Reason(path, errno);
    return std::nullopt;
  }
  if (!S_ISREG(status.st_mode)) {
    error = '"' + path + "\" is not a file";
    return std::nullopt;
  }
  std::string content;
  std::vector<char> block(64u << 10);
  while (content.size() <= limit) {
    const ssize_t got = read(file.Get(), block.data(), block.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      error = Reason(path, errno);
      return std::nullopt;
    }
    if (got == 0) return content;
    content.append(block.data(), static_cast<std::size_t>(got));
  }
  error = '"' + path + "\" is larger than " + std::to_string(limit) + " bytes";
  return std::nullopt;
}

bool ReplaceFile(const std::string& path, std::string_view content, std::string& error) {
  const auto target = Resolved(path);
  if (!target || target->empty()) {
    error = Reason(path, target ? ENOENT : ELOOP);
    return false;
  }
  struct stat status {};
  const bool exists = stat(target->c_str(), &status) == 0;
  if (exists && !S_ISREG(status.st_mode)) {
    error = '"' + path + "\" is not a file";
    return false;
  }
  // Renaming needs no permission on the file itself: a file that the user protected is left alone.
  if (exists && faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0) {
    error = Reason(path, errno);
    return false;
  }
  const std::string folder = FolderOf(*target);
  std::string temporary = folder + '/' + std::string(kTemporary) + std::string(kTemporaryEnd);
  const int fd = mkostemp(temporary.data(), O_CLOEXEC);
  if (fd < 0) {
    error = Reason(path, errno);
    return false;
  }
  if (const int code = WriteAndRename(fd, temporary, *target, exists ? &status : nullptr, content)) {
    unlink(temporary.c_str());
    error = Reason(path, code);
    return false;
  }
  // Brings the new name to the disk. Not every file system can; the file is replaced either way.
  const Descriptor folderHandle(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folderHandle.Get() >= 0) fsync(folderHandle.Get());
  return true;
}

bool CreateNewFile(const std::string& path, std::string_view content, std::string& error) {
  Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
  if (file.Get() < 0) {
    error = Reason(path, errno);
    return false;
  }
  if (WriteAll(file.Get(), content) && fsync(file.Get()) == 0 && file.Close()) return true;
  error = Reason(path, errno);
  unlink(path.c_str());
  return false;
}

bool MoveToNewName(const std::string& path, const std::string& newName, std::string& error) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) {
    error = Reason(path, errno);
    return false;
  }
  if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
    error = '"' + path + "\" is not a file";
    return false;
  }
  int failed = renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, newName.c_str(), RENAME_NOREPLACE);
  if (failed != 0 && (errno == EINVAL || errno == ENOSYS)) {  // the file system does not know how
    errno = EEXIST;
    if (lstat(newName.c_str(), &status) != 0) failed = rename(path.c_str(), newName.c_str());
  }
  if (failed != 0) error = Reason(newName, errno);
  return failed == 0;
}

void RemoveStaleTemporaries(const std::string& folder) {
  namespace fs = std::filesystem;
  const std::time_t now = std::time(nullptr);
  std::error_code code;
  for (fs::directory_iterator entry(folder.empty() ? "." : folder, code), end; !code && entry != end;
       entry.increment(code)) {
    const std::string name = entry->path().filename().string();
    struct stat status {};
    if (name.size() == kTemporary.size() + kTemporaryEnd.size() && name.starts_with(kTemporary) &&
        lstat(entry->path().c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_mtime + kStaleSeconds < now) {
      unlink(entry->path().c_str());
    }
  }
}

}  // namespace tvx
