// Reading and writing a store against the least work for it: taking the file's bytes into memory and walking
// over them from line end to line end, and writing the same bytes in one go. The folder for the files is the
// environment's BENCH_FOLDER.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "store/store_file.h"
#include "support/posix_file_system.h"

namespace {

// What most machines have: a page whose texts are nearly all ASCII.
class AsciiPage : public text::CodePage {
 public:
  std::optional<std::string> encode(std::string_view utf8) const override { return std::string(utf8); }
  std::string decode(std::string_view bytes) const override { return std::string(bytes); }
};

// A store of so many messages, on the disk and in a table.
struct Sample {
  explicit Sample(std::int64_t count) {
    const char* const folder = std::getenv("BENCH_FOLDER");
    path = std::string(folder ? folder : ".") + "/benchmark.dat";
    ::unlink(path.c_str());
    file = std::make_unique<store::StoreFile>(files, page, path, "PCINBOX");
    file->read(table);
    for (std::int64_t i = 0; i < count; ++i)
      table.append(
          {std::string(160, 'm'), "2005/01/02  09:05:07", "+31600000001", static_cast<std::int32_t>(i)});
    file->rewrite(table.records());
    struct stat info {};
    ::stat(path.c_str(), &info);
    size = static_cast<std::size_t>(info.st_size);
  }
  ~Sample() { ::unlink(path.c_str()); }
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;

  support::PosixFileSystem files;
  AsciiPage page;
  std::string path;
  std::unique_ptr<store::StoreFile> file;
  store::FolderTable table;
  std::size_t size = 0;
};

void report(benchmark::State& state, std::size_t bytes) {
  state.counters["size"] = static_cast<double>(bytes);
}

std::unique_ptr<char[]> readPlainly(const std::string& path, std::size_t size) {
  auto bytes = std::make_unique_for_overwrite<char[]>(size);
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0 || ::read(file, bytes.get(), size) != static_cast<ssize_t>(size)) std::abort();
  ::close(file);
  return bytes;
}

void findLineEnds(benchmark::State& state) {
  const Sample sample(state.range(0));
  for (auto _ : state) {
    const auto bytes = readPlainly(sample.path, sample.size);
    std::size_t lines = 0;
    const char* const end = bytes.get() + sample.size;
    for (const char* at = bytes.get();
         (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)))); ++at)
      ++lines;
    benchmark::DoNotOptimize(lines);
  }
  report(state, sample.size);
}

void readStore(benchmark::State& state) {
  Sample sample(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    sample.table = {};
    state.ResumeTiming();
    if (!sample.file->read(sample.table).whole) std::abort();
  }
  report(state, sample.size);
}

void writeStore(benchmark::State& state) {
  Sample sample(state.range(0));
  for (auto _ : state)
    if (!sample.file->rewrite(sample.table.records()).ok()) std::abort();
  report(state, sample.size);
}

void writePlainly(benchmark::State& state) {
  const Sample sample(state.range(0));
  const auto bytes = readPlainly(sample.path, sample.size);
  for (auto _ : state) {
    const int file = ::open(sample.path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || ::write(file, bytes.get(), sample.size) != static_cast<ssize_t>(sample.size) ||
        ::fsync(file) != 0)
      std::abort();
    ::close(file);
  }
  report(state, sample.size);
}

BENCHMARK(findLineEnds)->Arg(1000)->Arg(100000);
BENCHMARK(readStore)->Arg(1000)->Arg(100000);
BENCHMARK(writeStore)->Arg(1000)->Arg(100000);
BENCHMARK(writePlainly)->Arg(1000)->Arg(100000);

}  // namespace

BENCHMARK_MAIN();
