// Writing files, plain and encrypted.

#include <optional>

#include <benchmark/benchmark.h>

#include "BenchDocuments.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::bench {

namespace {

enum class Protection { kNone, kAes256 };

std::optional<pdf::Security> MakeSecurity(Protection protection) {
  return protection == Protection::kNone
             ? std::nullopt
             : std::optional(pdf::Security::Create("user", "owner", -4));
}

void WriteObjects(benchmark::State& state, Protection protection) {
  constexpr int kObjectCount = 10000;
  const std::optional<pdf::Security> security = MakeSecurity(protection);
  std::uint64_t written = 0;
  for (auto _ : state) {
    CountingSink sink;
    pdf::FileWriter writer(sink, security ? &*security : nullptr);
    const std::uint32_t catalog = writer.Reserve();
    for (int i = 0; i < kObjectCount; ++i) {
      const std::string index = std::to_string(i);
      writer.WriteObject(writer.Reserve(), "<</Type/Annot/Subtype/Link/Rect[72 " + index +
                                               " 144 720]/Border[0 0 0]/Dest[" + index +
                                               " 0 R/XYZ 0 " + index + " null]>>");
    }
    writer.WriteObject(catalog, "<</Type/Catalog>>");
    writer.Finish(catalog, 0);
    written += sink.count();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(written));
  state.SetItemsProcessed(state.iterations() * kObjectCount);
}

BENCHMARK_CAPTURE(WriteObjects, plain, Protection::kNone);
BENCHMARK_CAPTURE(WriteObjects, encrypted, Protection::kAes256);

void WriteStreams(benchmark::State& state, Protection protection) {
  constexpr int kStreamCount = 1000;
  const std::optional<pdf::Security> security = MakeSecurity(protection);
  const std::string data(static_cast<std::size_t>(state.range(0)), 'x');
  std::uint64_t written = 0;
  for (auto _ : state) {
    CountingSink sink;
    pdf::FileWriter writer(sink, security ? &*security : nullptr);
    const std::uint32_t catalog = writer.Reserve();
    for (int i = 0; i < kStreamCount; ++i) {
      writer.BeginStream(writer.Reserve(), "<</Filter/FlateDecode", data.size());
      writer.AppendStream(data);
      writer.EndStream();
    }
    writer.WriteObject(catalog, "<</Type/Catalog>>");
    writer.Finish(catalog, 0);
    written += sink.count();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(written));
  state.SetItemsProcessed(state.iterations() * kStreamCount);
}

BENCHMARK_CAPTURE(WriteStreams, plain, Protection::kNone)->Arg(1500)->Arg(100000);
BENCHMARK_CAPTURE(WriteStreams, encrypted, Protection::kAes256)->Arg(1500)->Arg(100000);

// A file of one page, as splitting writes them: what it costs before anything is in it.
void WriteTinyFile(benchmark::State& state) {
  for (auto _ : state) {
    CountingSink sink;
    pdf::FileWriter writer(sink, nullptr);
    const std::uint32_t catalog = writer.Reserve();
    writer.WriteObject(catalog, "<</Type/Catalog>>");
    writer.Finish(catalog, 0);
    benchmark::DoNotOptimize(sink.count());
  }
}

BENCHMARK(WriteTinyFile);

}  // namespace

}  // namespace TarnixTools::bench
