#include "planner/history/Delta.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "planner/history/Compression.h"
#include "planner/history/Damage.h"

namespace biwplan {

namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Each with its end.
Lines SplitLines(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return lines;
}

struct Anchor {
  std::size_t oldLine;
  std::size_t newLine;
};

struct Occurrence {
  std::size_t oldLine = kNone;
  std::size_t newLine = kNone;
  bool isOften = false;

  void Note(std::size_t Occurrence::*place, std::size_t line) {
    isOften = isOften || this->*place != kNone;
    this->*place = line;
  }
};

// Lines that stand once in either text, in the order of the old one.
std::vector<Anchor> UniqueLines(const Lines& old, const Lines& fresh) {
  std::unordered_map<std::string_view, Occurrence> found(old.size() + fresh.size());
  for (std::size_t i = 0; i < old.size(); ++i) found[old[i]].Note(&Occurrence::oldLine, i);
  for (std::size_t i = 0; i < fresh.size(); ++i) found[fresh[i]].Note(&Occurrence::newLine, i);
  std::vector<Anchor> anchors;
  for (std::size_t i = 0; i < old.size(); ++i) {
    const Occurrence& each = found[old[i]];
    if (!each.isOften && each.newLine != kNone) anchors.push_back({i, each.newLine});
  }
  return anchors;
}

// The longest part of them that ascends in the new text, too.
std::vector<Anchor> Ascending(const std::vector<Anchor>& anchors) {
  std::vector<std::size_t> ends;  // of the ascending parts of each length, the lowest
  std::vector<std::size_t> former(anchors.size(), kNone);
  for (std::size_t i = 0; i < anchors.size(); ++i) {
    const auto place = std::lower_bound(ends.begin(), ends.end(), i, [&](auto a, auto b) {
      return anchors[a].newLine < anchors[b].newLine;
    });
    if (place != ends.begin()) former[i] = *(place - 1);
    if (place == ends.end()) {
      ends.push_back(i);
    } else {
      *place = i;
    }
  }
  std::vector<Anchor> kept;
  for (std::size_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = former[i]) {
    kept.push_back(anchors[i]);
  }
  std::reverse(kept.begin(), kept.end());
  return kept;
}

// How long both are alike from their beginning, and then from their end; whole lines.
std::size_t CommonBeginning(std::string_view a, std::string_view b) {
  const auto length = static_cast<std::size_t>(
      std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
  if (length == a.size() && length == b.size()) return length;
  return a.substr(0, length).rfind('\n') + 1;
}

std::size_t CommonEnd(std::string_view a, std::string_view b) {
  const auto length = static_cast<std::size_t>(
      std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin());
  const auto isWhole = [length](std::string_view text) {
    return length == text.size() || text[text.size() - length - 1] == '\n';
  };
  if (isWhole(a) && isWhole(b)) return length;
  const std::size_t end = a.substr(a.size() - length).find('\n');
  return end == std::string_view::npos ? 0 : length - end - 1;
}

// Drops what the hunk has in common at its ends.
Hunk Trimmed(Hunk hunk, std::string_view old, std::string_view fresh) {
  const auto a = [&] { return old.substr(hunk.oldBegin, hunk.oldEnd - hunk.oldBegin); };
  const auto b = [&] { return fresh.substr(hunk.newBegin, hunk.newEnd - hunk.newBegin); };
  const std::size_t beginning = CommonBeginning(a(), b());
  hunk.oldBegin += beginning;
  hunk.newBegin += beginning;
  const std::size_t end = CommonEnd(a(), b());
  hunk.oldEnd -= end;
  hunk.newEnd -= end;
  return hunk;
}

bool IsEmpty(const Hunk& hunk) {
  return hunk.oldBegin == hunk.oldEnd && hunk.newBegin == hunk.newEnd;
}

void AppendNumber(std::string& bytes, std::size_t number) {
  for (; number >= 0x80; number >>= 7) bytes += static_cast<char>(number | 0x80);
  bytes += static_cast<char>(number);
}

// Reads what PackDelta wrote.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  std::size_t Number() {
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
      const auto byte = static_cast<unsigned char>(Take(1)[0]);
      number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
      if (byte < 0x80) return static_cast<std::size_t>(number);
    }
    throw DamagedHistory();
  }
  std::string_view Take(std::size_t size) {
    if (size > bytes_.size()) throw DamagedHistory();
    const std::string_view taken = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
    return taken;
  }
  std::string_view Rest() const { return bytes_; }

 private:
  std::string_view bytes_;
};

}  // namespace

std::vector<Hunk> Compare(std::string_view iOld, std::string_view iNew) {
  const Hunk whole = Trimmed({0, iOld.size(), 0, iNew.size()}, iOld, iNew);
  const Lines old = SplitLines(iOld.substr(whole.oldBegin, whole.oldEnd - whole.oldBegin));
  const Lines fresh = SplitLines(iNew.substr(whole.newBegin, whole.newEnd - whole.newBegin));
  std::vector<Hunk> hunks;
  Hunk next{whole.oldBegin, 0, whole.newBegin, 0};
  const auto endAt = [&](std::size_t oldEnd, std::size_t newEnd) {
    next.oldEnd = oldEnd;
    next.newEnd = newEnd;
    const Hunk hunk = Trimmed(next, iOld, iNew);
    if (!IsEmpty(hunk)) hunks.push_back(hunk);
  };
  for (const Anchor& anchor : Ascending(UniqueLines(old, fresh))) {
    const std::string_view line = old[anchor.oldLine];
    const auto oldPlace = static_cast<std::size_t>(line.data() - iOld.data());
    const auto newPlace = static_cast<std::size_t>(fresh[anchor.newLine].data() - iNew.data());
    endAt(oldPlace, newPlace);
    next = {oldPlace + line.size(), 0, newPlace + line.size(), 0};
  }
  endAt(whole.oldEnd, whole.newEnd);
  return hunks;
}

std::string PackDelta(const std::vector<Hunk>& iHunks, std::string_view iOld,
                      std::string_view iNew) {
  std::string bytes;
  std::size_t behind = 0;
  for (const Hunk& hunk : iHunks) {
    const std::string_view old = iOld.substr(hunk.oldBegin, hunk.oldEnd - hunk.oldBegin);
    const std::string_view fresh = iNew.substr(hunk.newBegin, hunk.newEnd - hunk.newBegin);
    AppendNumber(bytes, hunk.oldBegin - behind);
    AppendNumber(bytes, old.size());
    AppendNumber(bytes, fresh.size());
    bytes += old;
    bytes += fresh;
    behind = hunk.oldEnd;
  }
  return Compress(bytes);
}

std::string ApplyDelta(std::string_view iDelta, std::string_view iText, Direction iDirection) {
  const std::string bytes = Decompress(iDelta);
  Reader delta(bytes);
  Reader text(iText);
  std::string result;
  result.reserve(iText.size() + bytes.size());
  while (!delta.Rest().empty()) {
    result += text.Take(delta.Number());
    const std::size_t oldSize = delta.Number();
    const std::size_t newSize = delta.Number();
    const std::string_view old = delta.Take(oldSize);
    const std::string_view fresh = delta.Take(newSize);
    const bool isForward = iDirection == Direction::Forward;
    if (text.Take(isForward ? oldSize : newSize) != (isForward ? old : fresh)) {
      throw DamagedHistory();
    }
    result += isForward ? fresh : old;
  }
  return result += text.Rest();
}

}  // namespace biwplan
