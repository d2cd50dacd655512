// Reading and laying out a store, in memory, so that it is not the disk that is measured. ./bench measures
// what the program makes of its files.
#include <benchmark/benchmark.h>

#include <vector>

#include "store/store_format.h"
#include "store/store_reader.h"

namespace {

// What most machines have: a page whose texts are nearly all ASCII.
class AsciiPage : public text::CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override { return std::string(utf8); }
  std::string decode(std::string_view bytes) const override { return std::string(bytes); }
  bool isLeadByte(char) const override { return false; }
};

// A store of so many messages, as a table and as text.
struct Sample {
  explicit Sample(std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i)
      records.push_back(
          {std::string(160, 'm'), "2005/01/02  09:05:07", "+31600000001", static_cast<std::int32_t>(i)});
    for (const store::SmsRecord& record : records) pointers.push_back(&record);
    text = store::layOut("PCINBOX", pointers);
  }

  AsciiPage page;
  std::vector<store::SmsRecord> records;
  std::vector<const store::SmsRecord*> pointers;
  std::string text;
};

void read(benchmark::State& state) {
  const Sample sample(state.range(0));
  for (auto _ : state) {
    store::FolderTable table;
    if (!store::readStore(sample.text, "PCINBOX", sample.page, table).lossless) std::abort();
    benchmark::DoNotOptimize(table);
  }
}

void write(benchmark::State& state) {
  const Sample sample(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(store::fileBytes(store::layOut("PCINBOX", sample.pointers), sample.page));
}

BENCHMARK(read)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(write)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
