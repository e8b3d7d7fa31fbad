// Whole files, read and replaced in one piece.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tvx {

// The content of a regular file, or std::nullopt with the reason in words in `error`. Folders, pipes and
// files larger than `limit` bytes are refused.
std::optional<std::string> ReadWholeFile(const std::string& path, std::string& error,
                                         std::size_t limit = 16u << 20);

// Replaces `path` by `content`: written beside it, brought to the disk, then renamed over it, so that a crash
// or a full disk leaves the old file whole. A symbolic link is followed; the old file's permissions are kept.
// False on failure, with the reason in `error`; no half-written file is left then.
bool ReplaceFile(const std::string& path, std::string_view content, std::string& error);

}  // namespace tvx
