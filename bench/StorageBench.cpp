#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "embedded/storage/CsvReader.h"
#include "embedded/storage/DocumentFile.h"
#include "planner/import/PartsList.h"
#include "planner/import/WeldList.h"
#include "tests/support/Plant.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// A file for the length of one benchmark.
class ScratchFile {
 public:
  ScratchFile() : path_(fs::temp_directory_path() / "tuv-bench.json") {}
  ~ScratchFile() { fs::remove(path_); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  const fs::path& Path() const { return path_; }

  std::string Read() const {
    std::ifstream stream(path_, std::ios::binary);
    std::string text(fs::file_size(path_), '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
  }
  void Write(const std::string& text) const {
    std::ofstream(path_, std::ios::binary).write(text.data(), static_cast<long>(text.size()));
  }

 private:
  fs::path path_;
};

embedded::Owned<embedded::Document> DocumentOfSize(const benchmark::State& state) {
  return tests::Plant::OfSize(static_cast<int>(state.range())).Document();
}

// Each round reads or writes one file.
template <class Round>
void Repeat(benchmark::State& state, const Round& round) {
  for (auto _ : state) round();
  state.counters["elements"] = static_cast<double>(state.range());
}

void Load(benchmark::State& state) {
  const ScratchFile file;
  embedded::SaveDocument(*DocumentOfSize(state), file.Path());
  Repeat(state, [&] { benchmark::DoNotOptimize(embedded::LoadDocument(file.Path())); });
}

void Parse(benchmark::State& state) {
  const ScratchFile file;
  embedded::SaveDocument(*DocumentOfSize(state), file.Path());
  Repeat(state, [&] { benchmark::DoNotOptimize(json::parse(file.Read())); });
}

void Save(benchmark::State& state) {
  const ScratchFile file;
  const auto document = DocumentOfSize(state);
  Repeat(state, [&] { embedded::SaveDocument(*document, file.Path()); });
}

void Dump(benchmark::State& state) {
  const ScratchFile file;
  const json tree = json::parse(embedded::WriteDocument(*DocumentOfSize(state)));
  Repeat(state, [&] { file.Write(tree.dump()); });
}

// A weld list as a spreadsheet writes it.
std::string WeldListText(const benchmark::State& state) {
  std::string text = "weld_id,x,y,z,parts\n";
  for (long i = 0; i < state.range(); ++i) {
    text += "SW-" + std::to_string(i) + "," + std::to_string(i % 4500) + ".25,-" +
            std::to_string(i % 900) + ".5," + std::to_string(i % 1400) + ",P1;P2\n";
  }
  return text;
}

void ReadWeldList(benchmark::State& state) {
  const std::string text = WeldListText(state);
  std::istringstream partsText("number\nP1\nP2\n");
  const auto parts = biwplan::ReadPartsList(partsText, "parts.csv");
  const auto index = parts.Index();
  Repeat(state, [&] {
    std::istringstream stream(text);
    benchmark::DoNotOptimize(biwplan::ReadWeldList(stream, "welds.csv", index));
  });
}

void SplitFields(benchmark::State& state) {
  const std::string text = WeldListText(state);
  Repeat(state, [&] {
    std::istringstream stream(text);
    embedded::CsvReader reader(stream, "welds.csv");
    while (reader.Next()) benchmark::DoNotOptimize(reader.Fields().data());
  });
}

void ReadLines(benchmark::State& state) {
  const std::string text = WeldListText(state);
  Repeat(state, [&] {
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) benchmark::DoNotOptimize(line.data());
  });
}

BENCHMARK(Load)->Arg(100'000);
BENCHMARK(Parse)->Arg(100'000);
BENCHMARK(Save)->Arg(100'000);
BENCHMARK(Dump)->Arg(100'000);
BENCHMARK(ReadWeldList)->Arg(100'000);
BENCHMARK(SplitFields)->Arg(100'000);
BENCHMARK(ReadLines)->Arg(100'000);

}  // namespace
