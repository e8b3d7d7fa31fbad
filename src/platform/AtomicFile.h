// Whole files, read, replaced and put aside in one piece.
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
// or a full disk leaves the old file whole. A symbolic link is followed; the old file's permissions are kept
// (under Windows it gets its folder's).
// False on failure, with the reason in `error`; no half-written file is left then.
bool ReplaceFile(const std::string& path, std::string_view content, std::string& error);

// Writes a new file. False, with the reason in `error`, where there is anything of this name already, a link
// included; no half-written file is left then.
bool CreateNewFile(const std::string& path, std::string_view content, std::string& error);

// Gives a regular file another name in the same folder. A link is moved itself, and what it leads to is left
// alone. False, with the reason in `error`, for anything else, and where there is something of the new name.
bool MoveToNewName(const std::string& path, const std::string& newName, std::string& error);

// Takes away what ReplaceFile left in a folder when the program or the computer stopped in the middle of it:
// only what is older than a minute, as another program may just be saving there.
void RemoveStaleTemporaries(const std::string& folder);

}  // namespace tvx
