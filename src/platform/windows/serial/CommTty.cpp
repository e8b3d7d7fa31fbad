#include "platform/windows/serial/CommTty.h"

#include <algorithm>
#include <utility>

namespace tvx {
namespace {

constexpr Byte kMark = 0xFF;

}  // namespace

CommTty::CommTty(OpenComm open, const MakeHandleWatcher& makeWatcher, Resolve resolve)
    : open_(std::move(open)),
      resolve_(std::move(resolve)),
      openWatcher_(makeWatcher()),
      readWatcher_(makeWatcher()),
      writeWatcher_(makeWatcher()) {
  output_.reserve(kQueueRoom);
  openWatcher_->SetCallback([this] { OnOpened(); });
  readWatcher_->SetCallback([this] { OnInput(); });
  writeWatcher_->SetCallback([this] { OnWritten(); });
}

void CommTty::Open(int comNumber, SerialReset reset) {
  Close();
  const std::string device = resolve_(comNumber);
  name_ = {device, {}, true};
  if (device.empty()) return callbacks_.opened({SerialState::NotFound, std::nullopt});
  opening_ = open_(device, reset);
  if (!opening_) return callbacks_.opened({SerialState::NoHelper, std::nullopt});
  openWatcher_->Attach(opening_->DoneEvent());
}

void CommTty::Close() {
  for (HandleWatcher* watcher : {openWatcher_.get(), readWatcher_.get(), writeWatcher_.get()})
    watcher->Release();
  opening_.reset();
  line_.reset();
  input_.Clear();
  output_.clear();
  writing_ = watchWrite_ = false;
}

void CommTty::OnOpened() {
  openWatcher_->Release();
  OpenedLine opened = std::exchange(opening_, nullptr)->Take();
  line_ = std::move(opened.line);
  if (!line_) return callbacks_.opened({opened.state, std::nullopt});
  line_->TakeErrors();  // of before
  readWatcher_->Attach(line_->ReadEvent());
  writeWatcher_->Attach(line_->WriteEvent());
  if (!line_->BeginRead()) {
    Close();
    return callbacks_.opened({SerialState::Unplugged, std::nullopt});
  }
  callbacks_.opened({SerialState::Open, line_->Carrier()});
}

void CommTty::Mark(Byte value) {
  for (const Byte byte : {kMark, Byte{0}, value}) input_.Push(byte);
}

// The next read is under way before anybody is told: who is told may turn the event loop.
void CommTty::OnInput() {
  const auto count = line_->EndRead(chunk_);
  if (!count) return Gone();
  for (const Byte byte : std::span(chunk_).first(*count)) {
    input_.Push(byte);
    if (byte == kMark) input_.Push(kMark);
  }
  const LineErrors errors = line_->TakeErrors();
  if (errors.faulty) {
    ++counts_.errors;
    Mark(1);
  }
  if (errors.broke) {
    ++counts_.breaks;
    Mark(0);
  }
  if (!line_->BeginRead()) return Gone();
  if (input_.Size() > 0) callbacks_.readable();
}

std::optional<std::size_t> CommTty::Read(std::span<Byte> out) {
  if (!line_) return std::nullopt;
  return input_.Pop(out);
}

std::optional<std::size_t> CommTty::Write(ByteView bytes) {
  if (!line_) return std::nullopt;
  const std::size_t count = std::min(bytes.size(), kQueueRoom - output_.size());
  output_.insert(output_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
  if (!writing_ && !Launch()) return std::nullopt;
  return count;
}

bool CommTty::Launch() {
  writing_ = !output_.empty();
  return !writing_ || line_->BeginWrite(output_);
}

void CommTty::OnWritten() {
  const auto count = line_->EndWrite();
  if (!count) return Gone();
  if (*count == 0) return;
  output_.erase(output_.begin(),
                output_.begin() + static_cast<std::ptrdiff_t>(std::min(*count, output_.size())));
  if (!Launch()) return Gone();
  if (watchWrite_) callbacks_.writable();
}

void CommTty::AskCarrier() {
  if (line_) callbacks_.carrier(line_->Carrier());
}

void CommTty::Gone() {
  Close();
  callbacks_.gone();
}

}  // namespace tvx
