// Copying pages and what they need from one document into another.

#include <benchmark/benchmark.h>

#include "BenchDocuments.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/ObjectCopier.h"

namespace TarnixTools::bench {

namespace {

constexpr int kPageCount = 1000;

// Copies the pages into one file, or each into a file of its own; returns the bytes written.
std::uint64_t CopyPages(pdf::Document& document, const pdf::PageTree& tree, bool is_split) {
  CountingSink sink;
  pdf::NumberMap numbers;
  const auto is_barred = [&](std::uint32_t number) { return tree.IsNode(number); };
  std::size_t next = 0;
  while (next < tree.pages().size()) {
    numbers.Clear();
    pdf::FileWriter writer(sink, nullptr);
    pdf::ObjectCopier copier(document, writer, numbers, is_barred);
    const std::uint32_t catalog = writer.Reserve();
    writer.WriteObject(catalog, "<</Type/Catalog>>");
    do {
      copier.Map(tree.pages()[next++].number);
      copier.CopyPending();
    } while (!is_split && next < tree.pages().size());
    writer.Finish(catalog, 0);
  }
  return sink.count();
}

void Copy(benchmark::State& state, FileForm form, bool is_split) {
  const std::string bytes = MakeDocument(form, kPageCount);
  const auto document = OpenDocument(bytes);
  const pdf::PageTree tree(*document);
  std::uint64_t written = 0;
  for (auto _ : state) {
    written += CopyPages(*document, tree, is_split);
  }
  if (written < static_cast<std::uint64_t>(state.iterations()) * kPageCount * 1000) {
    state.SkipWithError("contents are missing");
    return;
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(written));
  state.SetItemsProcessed(state.iterations() * kPageCount);
}

BENCHMARK_CAPTURE(Copy, into_one_table, FileForm::kClassic, false);
BENCHMARK_CAPTURE(Copy, into_one_object_streams, FileForm::kPacked, false);
BENCHMARK_CAPTURE(Copy, into_one_encrypted, FileForm::kEncrypted, false);
BENCHMARK_CAPTURE(Copy, into_single_pages_table, FileForm::kClassic, true);
BENCHMARK_CAPTURE(Copy, into_single_pages_object_streams, FileForm::kPacked, true);

}  // namespace

}  // namespace TarnixTools::bench
