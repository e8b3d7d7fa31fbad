// The "#n:path" lines of a Function's description: what copying an entry of the simulator's lists appends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Bytes.h"

namespace tvx {

// How many lines a Function of a data type holds: 4 data references, one for each sequence number, or 9
// commands; 0 for any other type.
int EntryLimit(Byte dataType);

// One more than the highest number of the lines "#n:" in a text; 1 for a text without such lines.
int NextEntryNumber(std::string_view lines);

// Appends the line "#n:path" with the next number, ended by CR LF; a last line that was not ended is ended
// first. False, and `lines` stays as it was, when `path` is no entry (ReferenceList.h).
bool AppendEntry(std::string& lines, std::string_view path);

// Of the first line that begins with "#" and will not be found, or will be read in another way than it was
// meant: what is wrong with it, in words. Empty when all are right. `limit` is EntryLimit.
std::string EntryProblem(std::string_view lines, int limit);

// The paths of the lines "#n:path" in a text, as they stand in it.
std::vector<std::string_view> EntryPaths(std::string_view lines);

// Whether a path ends with a number between brackets: an element of an array.
bool IsElement(std::string_view path);
// An element's path with another number, 0 or more: "a/b[0]" and 3 give "a/b[3]". Any other path stays.
std::string WithElement(std::string_view path, int element);

}  // namespace tvx
