// An empty folder that is the current one for as long as this lives.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace tvx {

class ScratchFolder {
 public:
  ScratchFolder() : before_(std::filesystem::current_path()) {
    std::random_device random;
    do {
      folder_ = std::filesystem::temp_directory_path() / ("tvx-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder_));
    folder_ = std::filesystem::canonical(folder_);
    std::filesystem::current_path(folder_);
  }
  ~ScratchFolder() {
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(folder_);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string Path() const { return folder_.string(); }
  // Writes a file, its folder too.
  static void Put(const std::filesystem::path& path, const std::string& text = {}) {
    if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
  }
  // Makes a link, its folder too, or leads it elsewhere.
  static void Link(const std::filesystem::path& target, const std::filesystem::path& link) {
    if (link.has_parent_path()) std::filesystem::create_directories(link.parent_path());
    std::filesystem::remove(link);
    std::filesystem::create_symlink(target, link);
  }
  static void Link(int comNumber, const std::string& device) {
    Link(device, "comports/com" + std::to_string(comNumber));
  }

 private:
  std::filesystem::path before_, folder_;
};

}  // namespace tvx
