#include "planner/report/PrintableStream.h"

#include <algorithm>

#include "planner/report/Printable.h"
#include "planner/report/Pulse.h"

namespace biwplan {

namespace {

// An answer may be large; no copy of it is made as a whole.
constexpr std::size_t kPieceBytes = std::size_t{1} << 16;
constexpr std::size_t kMostCutOff = 4;

}  // namespace

// No text that is printable as it stands wants for memory.
PrintableStream::Buffer::Buffer(std::ostream& ioTarget) : target_(ioTarget) {
  pending_.reserve(kPieceBytes + kMostCutOff);
}

bool PrintableStream::Buffer::Write(std::string_view text) {
  if (!text.empty()) Pulse::Hide();
  if (IsPrintable(text)) {
    target_.write(text.data(), static_cast<std::streamsize>(text.size()));
  } else {
    target_ << PrintableLines(text);
  }
  return static_cast<bool>(target_);
}

PrintableStream::Buffer::int_type PrintableStream::Buffer::overflow(int_type iByte) {
  if (traits_type::eq_int_type(iByte, traits_type::eof())) return traits_type::not_eof(iByte);
  const char byte = traits_type::to_char_type(iByte);
  return xsputn(&byte, 1) == 1 ? iByte : traits_type::eof();
}

std::streamsize PrintableStream::Buffer::xsputn(const char* iBytes, std::streamsize iCount) {
  std::string_view text(iBytes, static_cast<std::size_t>(iCount));
  bool isWritten = true;
  while (!text.empty() && isWritten) {
    pending_ += text.substr(0, kPieceBytes);
    text.remove_prefix(std::min(text.size(), kPieceBytes));
    const std::size_t whole = pending_.size() - CutOffBytes(pending_);
    isWritten = Write(std::string_view(pending_).substr(0, whole));
    pending_.erase(0, whole);
  }
  return isWritten ? iCount : 0;
}

int PrintableStream::Buffer::sync() {
  const bool isWritten = Write(pending_);
  pending_.clear();
  return isWritten && target_.flush() ? 0 : -1;
}

}  // namespace biwplan
