// Reading and laying out a store against the least work for it: walking over the same bytes from line end to
// line end, and copying them.
#include <benchmark/benchmark.h>

#include <cstring>

#include "store/store_format.h"
#include "store/store_reader.h"

namespace {

// What most machines have: a page whose texts are nearly all ASCII.
class AsciiPage : public store::CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override { return std::string(utf8); }
  std::string decode(std::string_view bytes) const override { return std::string(bytes); }
};

store::FolderTable tableOf(std::int64_t count) {
  store::FolderTable table;
  for (std::int64_t i = 0; i < count; ++i)
    table.append(
        {std::string(160, 'm'), "2005/01/02  09:05:07", "+31600000001", static_cast<std::int32_t>(i)});
  return table;
}

std::string layOut(const store::FolderTable& table) {
  std::string text = store::headerLine("PCINBOX");
  store::appendGroups(text, table.records());
  return store::fileBytes(std::move(text), AsciiPage());
}

std::string bytesOf(std::int64_t count) {
  return layOut(tableOf(count));
}

void reportBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
}

void findLineEnds(benchmark::State& state) {
  const std::string bytes = bytesOf(state.range(0));
  for (auto _ : state) {
    std::size_t lines = 0;
    const char* const end = bytes.data() + bytes.size();
    for (const char* at = bytes.data();
         (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)))); ++at)
      ++lines;
    benchmark::DoNotOptimize(lines);
  }
  reportBytes(state, bytes.size());
}

void readStore(benchmark::State& state) {
  const std::string bytes = bytesOf(state.range(0));
  const AsciiPage page;
  for (auto _ : state) {
    store::FolderTable table;
    store::readStore(bytes, "PCINBOX", page, table);
    benchmark::DoNotOptimize(table.size());
  }
  reportBytes(state, bytes.size());
}

void layOutStore(benchmark::State& state) {
  const store::FolderTable table = tableOf(state.range(0));
  std::size_t size = 0;
  for (auto _ : state) {
    const std::string bytes = layOut(table);
    benchmark::DoNotOptimize(bytes.data());
    size = bytes.size();
  }
  reportBytes(state, size);
}

BENCHMARK(findLineEnds)->Arg(1000)->Arg(100000);
BENCHMARK(readStore)->Arg(1000)->Arg(100000);
BENCHMARK(layOutStore)->Arg(1000)->Arg(100000);

}  // namespace

BENCHMARK_MAIN();
