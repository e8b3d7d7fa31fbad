// Things in a folder that are no plain files, and a file that cannot be replaced, as each system has them.
#pragma once

#include <csignal>
#include <filesystem>
#include <string>

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#endif

namespace tvx::test {

#ifdef _WIN32

// Windows has no pipes in folders: a folder instead.
inline bool MakePipe(const std::string& name) {
  return std::filesystem::create_directory(name);
}
// A link needs rights there that a user does not have: a file of its own with the same content.
inline void MakeLink(const std::string& to, const std::string& name) {
  if (!std::filesystem::exists(name)) std::filesystem::copy_file(to, name);
}
// Gives a name to what is no file of its own: a link to `to`; under Windows a folder.
inline void TakeName(const std::string& name, const std::string&) {
  std::filesystem::create_directory(name);
}

// For as long as it lives, the file cannot be replaced: it is protected.
class NoReplacing {
 public:
  NoReplacing(const std::string& file, std::size_t) : file_(file) { Protect(true); }
  ~NoReplacing() { Protect(false); }

 private:
  void Protect(bool on) const {
    namespace fs = std::filesystem;
    fs::permissions(file_, fs::perms::owner_write, on ? fs::perm_options::remove : fs::perm_options::add);
  }
  std::string file_;
};

#else

inline bool MakePipe(const std::string& name) {
  return mkfifo(name.c_str(), 0600) == 0;
}
inline void MakeLink(const std::string& to, const std::string& name) {
  std::filesystem::create_symlink(to, name);
}
inline void TakeName(const std::string& name, const std::string& to) {
  MakeLink(to, name);
}

// For as long as it lives, the disk is full after `room` bytes of a file.
class NoReplacing {
 public:
  NoReplacing(const std::string&, std::size_t room) : ignored_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit full{room, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
  }
  ~NoReplacing() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, ignored_);
  }
  NoReplacing(const NoReplacing&) = delete;
  NoReplacing& operator=(const NoReplacing&) = delete;

 private:
  void (*ignored_)(int);
  rlimit before_{};
};

#endif

}  // namespace tvx::test
