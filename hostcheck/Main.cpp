#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "hostcheck/HostCheck.h"

namespace hostcheck {

namespace {

constexpr char kUsage[] =
    "usage: [--list] [--only ID...] [--json] [--time-limit SECONDS]\n"
    "Checks whether the host keeps the contract of host/.\n"
    "  --list                 the checks, with the header that makes the promise\n"
    "  --only ID...           these checks, or all of a group such as \"identity\"\n"
    "  --json                 results as one JSON object\n"
    "  --time-limit SECONDS   for each check, 10 by default\n"
    "Ends with status 1 when a check failed.\n";

// A host that cannot be set up would take the time of each check.
constexpr char kNotRun[] = "not run, as the host could not be set up in time";

struct Request {
  bool list = false;
  bool json = false;
  bool help = false;
  double seconds = 10;
  std::vector<CheckInfo> checks{};
};

struct Result {
  CheckInfo check;
  Outcome outcome;
};

bool IsMeant(const CheckInfo& check, std::string_view name) {
  const std::string_view identifier = check.identifier;
  return identifier == name || (identifier.starts_with(name) && identifier[name.size()] == '.');
}

bool AddMeant(std::string_view name, std::vector<CheckInfo>& checks) {
  const auto before = checks.size();
  for (const CheckInfo& check : ListChecks()) {
    if (IsMeant(check, name)) checks.push_back(check);
  }
  return checks.size() > before;
}

std::optional<double> SecondsIn(const char* text) {
  char* end = nullptr;
  const double seconds = std::strtod(text, &end);
  if (end == text || *end || !(seconds > 0 && seconds <= 3600)) return std::nullopt;
  return seconds;
}

// Says what is wrong, and answers nothing then.
std::optional<Request> Read(int count, const char* const* arguments) {
  Request request;
  const auto refuse = [](const std::string& why) {
    std::cerr << why << "\n" << kUsage;
    return std::nullopt;
  };
  bool isOnly = false;
  for (int i = 1; i < count; ++i) {
    const std::string_view argument = arguments[i];
    if (argument.starts_with("--")) isOnly = false;
    if (argument == "--list") {
      request.list = true;
    } else if (argument == "--json") {
      request.json = true;
    } else if (argument == "--help") {
      request.help = true;
    } else if (argument == "--only") {
      isOnly = i + 1 < count && arguments[i + 1][0] != '-';
      if (!isOnly) return refuse("--only needs the identifier of a check; --list shows them.");
    } else if (argument == "--time-limit") {
      const auto seconds = i + 1 < count ? SecondsIn(arguments[++i]) : std::nullopt;
      if (!seconds) return refuse("--time-limit needs seconds, more than 0 and at most 3600.");
      request.seconds = *seconds;
    } else if (!isOnly) {
      return refuse("\"" + std::string(argument) + "\" means nothing here.");
    } else if (!AddMeant(argument, request.checks)) {
      return refuse("There is no check \"" + std::string(argument) + "\"; --list shows them.");
    }
  }
  if (request.checks.empty()) request.checks = ListChecks();
  return request;
}

const char* WordFor(Verdict verdict) {
  constexpr std::array words = {"pass", "fail", "skip"};
  return words[static_cast<std::size_t>(verdict)];
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (static_cast<unsigned char>(c) >= 0x20) {
      quoted += c;
      continue;
    }
    std::array<char, 8> escape;
    std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c) & 0x1fu);
    quoted += escape.data();
  }
  return quoted + "\"";
}

void PrintLine(const Result& result) {
  std::cout << WordFor(result.outcome.verdict) << "  " << result.check.identifier;
  if (!result.outcome.reason.empty()) std::cout << "  " << result.outcome.reason;
  if (result.outcome.verdict == Verdict::Fail) {
    std::cout << "\n      " << result.check.header << ": " << result.check.promise;
  }
  std::cout << std::endl;
}

void PrintJson(const std::vector<Result>& results) {
  std::cout << "{\"checks\": [";
  const char* separator = "\n";
  for (const auto& [check, outcome] : results) {
    std::cout << separator << "  {\"id\": " << Quoted(check.identifier)
              << ", \"result\": " << Quoted(WordFor(outcome.verdict))
              << ", \"reason\": " << Quoted(outcome.reason)
              << ", \"header\": " << Quoted(check.header)
              << ", \"promise\": " << Quoted(check.promise) << "}";
    separator = ",\n";
  }
  std::cout << "\n]}" << std::endl;
}

void PrintChecks(const std::vector<CheckInfo>& checks) {
  for (const CheckInfo& check : checks) {
    std::cout << check.identifier << "  " << check.header << "  " << check.promise << "\n";
  }
}

long Count(const std::vector<Result>& results, Verdict verdict) {
  return std::count_if(results.begin(), results.end(),
                       [=](const Result& result) { return result.outcome.verdict == verdict; });
}

}  // namespace

int HostCheckMain(int iCount, const char* const* iArguments, const HooksFactory& iMake) {
  const std::optional<Request> request = Read(iCount, iArguments);
  if (!request) return 2;
  if (request->help) std::cout << kUsage;
  if (request->list) PrintChecks(request->checks);
  if (request->help || request->list) return 0;
  std::vector<Result> results;
  for (const CheckInfo& check : request->checks) {
    const bool isStuck = !results.empty() && results.back().outcome.isStuck;
    results.push_back({check, isStuck ? Outcome{Verdict::Fail, kNotRun, true}
                                      : RunCheck(check.identifier, iMake, request->seconds)});
    if (!request->json) PrintLine(results.back());
  }
  const long failed = Count(results, Verdict::Fail);
  if (request->json) {
    PrintJson(results);
  } else {
    std::cout << results.size() << " checks: " << Count(results, Verdict::Pass) << " passed, "
              << failed << " failed, " << Count(results, Verdict::Skip) << " skipped" << std::endl;
  }
  return failed > 0 ? 1 : 0;
}

}  // namespace hostcheck
