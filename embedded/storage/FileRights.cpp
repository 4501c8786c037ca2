#include "embedded/storage/FileRights.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <grp.h>
#include <pwd.h>
#include <string_view>
#include <tuple>

namespace embedded {

namespace {

constexpr mode_t kPermissions = 07777;
constexpr char kAccessList[] = "system.posix_acl_access";
constexpr uid_t kNobodyElse = static_cast<uid_t>(-1);
constexpr gid_t kNoOtherGroup = static_cast<gid_t>(-1);

// An entry of an access list, as the kernel keeps it behind a version of four bytes. All numbers
// have the lowest byte first, as on every machine that this is built for.
struct Entry {
  enum Kind : std::uint16_t {
    Owner = 1,
    OneUser = 2,
    Group = 4,
    OneGroup = 8,
    Mask = 16,
    Others = 32
  };
  std::uint16_t kind;
  std::uint16_t rights;
  std::uint32_t whom;

  bool IsMasked() const { return kind == OneUser || kind == Group || kind == OneGroup; }
};
constexpr std::uint32_t kListVersion = 2;
constexpr std::uint32_t kNobody = 0xFFFFFFFF;

std::vector<Entry> ReadList(const std::string& bytes) {
  constexpr std::size_t kHead = sizeof kListVersion;
  std::vector<Entry> entries(bytes.size() < kHead ? 0 : (bytes.size() - kHead) / sizeof(Entry));
  if (!entries.empty()) {
    std::memcpy(entries.data(), bytes.data() + kHead, entries.size() * sizeof(Entry));
  }
  return entries;
}

std::string WriteList(const std::vector<Entry>& entries) {
  std::string bytes(sizeof kListVersion + entries.size() * sizeof(Entry), '\0');
  std::memcpy(bytes.data(), &kListVersion, sizeof kListVersion);
  std::memcpy(bytes.data() + sizeof kListVersion, entries.data(), entries.size() * sizeof(Entry));
  return bytes;
}

std::uint16_t RightsIn(mode_t mode, int shift) {
  return static_cast<std::uint16_t>((mode >> shift) & 7);
}

std::vector<Entry> ListOfMode(mode_t mode) {
  return {{Entry::Owner, RightsIn(mode, 6), kNobody},
          {Entry::Group, RightsIn(mode, 3), kNobody},
          {Entry::Others, RightsIn(mode, 0), kNobody}};
}

// In the order that the kernel asks for, with a mask that takes nothing away.
void Complete(std::vector<Entry>& entries) {
  std::uint16_t mask = 0;
  for (const Entry& entry : entries) {
    if (entry.IsMasked()) mask = static_cast<std::uint16_t>(mask | entry.rights);
  }
  entries.push_back({Entry::Mask, mask, kNobody});
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
    return std::tie(a.kind, a.whom) < std::tie(b.kind, b.whom);
  });
}

// Without its mask, which has taken its rights away.
void ApplyMask(std::vector<Entry>& entries) {
  const auto mask = std::find_if(entries.begin(), entries.end(),
                                 [](const Entry& entry) { return entry.kind == Entry::Mask; });
  if (mask == entries.end()) return;
  const std::uint16_t rights = mask->rights;
  entries.erase(mask);
  for (Entry& entry : entries) {
    if (entry.IsMasked()) entry.rights = static_cast<std::uint16_t>(entry.rights & rights);
  }
}

std::uint16_t& RightsOf(std::vector<Entry>& entries, std::uint16_t kind, std::uint32_t whom) {
  for (Entry& entry : entries) {
    if (entry.kind == kind && (whom == kNobody || entry.whom == whom)) return entry.rights;
  }
  return entries.emplace_back(Entry{kind, 0, whom}).rights;
}

class Keeper {
 public:
  Keeper(const Descriptor& file, const std::filesystem::path& former, const struct stat& status)
      : file_(file), former_(former), status_(status) {}

  std::vector<std::string> Keep() {
    struct stat now {};
    if (::fstat(file_.Number(), &now) != 0) return {"nothing of its rights could be kept"};
    const bool keepsGroup = now.st_gid == status_.st_gid || SetOwner(kNobodyElse, status_.st_gid);
    const bool keepsOwner = now.st_uid == status_.st_uid || SetOwner(status_.st_uid, kNoOtherGroup);
    if (!keepsGroup) Miss("group", status_.st_gid);
    if (!keepsOwner) Miss("owner", status_.st_uid);
    KeepMode(keepsGroup);
    KeepAttributes(keepsOwner && keepsGroup);
    if (!keepsOwner || !keepsGroup) KeepAccess(keepsOwner, keepsGroup);
    return std::move(missed_);
  }

 private:
  bool SetOwner(uid_t user, gid_t group) {
    return FileCalls::Current().SetOwner(file_.Number(), user, group) == 0;
  }
  void Miss(const char* what, unsigned long number) {
    missed_.push_back(std::string("its ") + what + " (" + std::to_string(number) +
                      ") could not be kept");
  }

  // Another group gets no rights that were meant for the former one.
  void KeepMode(bool keepsGroup) {
    mode_t mode = status_.st_mode & kPermissions;
    if (!keepsGroup) mode &= ~((~mode & 07) << 3) & ~static_cast<mode_t>(S_ISGID);
    if (FileCalls::Current().SetMode(file_.Number(), mode) == 0) return;
    missed_.emplace_back("its mode could not be kept");
  }

  std::string Attribute(const char* name) const {
    FileCalls& calls = FileCalls::Current();
    const ssize_t size = calls.GetAttribute(former_.c_str(), name, nullptr, 0);
    std::string value(size < 0 ? 0 : static_cast<std::size_t>(size), '\0');
    const ssize_t got = calls.GetAttribute(former_.c_str(), name, value.data(), value.size());
    value.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return value;
  }
  void KeepAttributes(bool withAccess) {
    FileCalls& calls = FileCalls::Current();
    const ssize_t size = calls.ListAttributes(former_.c_str(), nullptr, 0);
    if (size <= 0) return;
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t got = calls.ListAttributes(former_.c_str(), names.data(), names.size());
    names.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    for (std::size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
      const char* const name = names.c_str() + at;
      if (!withAccess && name == std::string_view(kAccessList)) continue;
      const std::string value = Attribute(name);
      if (calls.SetAttribute(file_.Number(), name, value.data(), value.size()) == 0) continue;
      // Labels of the system's own are given by the system.
      if (std::string_view(name).starts_with("security.")) continue;
      missed_.push_back("its attribute " + std::string(name) + " could not be kept");
    }
  }

  // Who had access by what could not be kept gets it by an entry of the access list.
  void KeepAccess(bool keepsOwner, bool keepsGroup) {
    std::vector<Entry> entries = ReadList(Attribute(kAccessList));
    bool isNeeded = !entries.empty();
    if (!isNeeded) entries = ListOfMode(status_.st_mode);
    ApplyMask(entries);
    const std::uint16_t owner = RightsOf(entries, Entry::Owner, kNobody);
    const std::uint16_t group = RightsOf(entries, Entry::Group, kNobody);
    const std::uint16_t others = RightsOf(entries, Entry::Others, kNobody);
    if (!keepsGroup && (group & ~others) != 0) {
      RightsOf(entries, Entry::Group, kNobody) = group & others;
      RightsOf(entries, Entry::OneGroup, status_.st_gid) = group;
      isNeeded = true;
    }
    const bool isInGroup = keepsGroup && (owner & ~group) == 0 && IsOwnerInGroup();
    if (!keepsOwner && (owner & ~others) != 0 && !isInGroup) {
      RightsOf(entries, Entry::OneUser, status_.st_uid) = owner;
      isNeeded = true;
    }
    if (!isNeeded) return;
    Complete(entries);
    const std::string bytes = WriteList(entries);
    const int result =
        FileCalls::Current().SetAttribute(file_.Number(), kAccessList, bytes.data(), bytes.size());
    if (result != 0) missed_.emplace_back("who had access by that may have none now");
  }

  bool IsOwnerInGroup() const {
    constexpr int kMostGroups = 1024;
    std::vector<char> room(4096);
    std::vector<gid_t> groups(kMostGroups);
    struct passwd entry {};
    struct passwd* user = nullptr;
    ::getpwuid_r(status_.st_uid, &entry, room.data(), room.size(), &user);
    int count = kMostGroups;
    if (!user || ::getgrouplist(user->pw_name, user->pw_gid, groups.data(), &count) < 0) {
      return false;
    }
    const auto end = groups.begin() + count;
    return std::find(groups.begin(), end, status_.st_gid) != end;
  }

  const Descriptor& file_;
  const std::filesystem::path& former_;
  const struct stat& status_;
  std::vector<std::string> missed_;
};

}  // namespace

std::vector<std::string> KeepRights(const Descriptor& iNew, const std::filesystem::path& iFormer,
                                    const struct stat& iStatus) {
  return Keeper(iNew, iFormer, iStatus).Keep();
}

}  // namespace embedded
