// What a life has done, a line for each thing, in a file that survives whatever happens to the process.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tvx::monkey {

// A line is a word that says what it is, and the rest: "do 17 1250 ms: click cmdRun on frmStatus".
class Journal {
 public:
  explicit Journal(const char* file);
  ~Journal();
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  void Write(std::string_view kind, std::string_view text);
  // The life has shown something that the program must not do. The first of them counts; the process goes on.
  void Fault(std::string_view text);
  bool Faulty() const { return faulty_; }
  int Handle() const { return file_; }  // for whoever may only write(2)

  static constexpr const char* kFile = "journal.txt";

 private:
  int file_;
  bool faulty_ = false;
};

// Milliseconds since the process started to look, without those that it was ready to run in but did not get a
// processor: what a busy computer takes away is no fault of the program. Safe in a signal handler.
std::int64_t OwnMs();

}  // namespace tvx::monkey
