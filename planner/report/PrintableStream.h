#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace biwplan {

// Hands text on to another stream, which outlives it, as PrintableLines makes it. A character may
// come in pieces; a flush ends it. When the other stream fails, so does this one.
class PrintableStream : public std::ostream {
 public:
  explicit PrintableStream(std::ostream& iTarget) : std::ostream(&buffer_), buffer_(iTarget) {}

 private:
  class Buffer : public std::streambuf {
   public:
    explicit Buffer(std::ostream& ioTarget);
    ~Buffer() override { Write(pending_); }

   protected:
    int_type overflow(int_type iByte) override;
    std::streamsize xsputn(const char* iBytes, std::streamsize iCount) override;
    int sync() override;

   private:
    bool Write(std::string_view text);

    std::ostream& target_;
    // The beginning of a character.
    std::string pending_;
  };

  Buffer buffer_;
};

}  // namespace biwplan
