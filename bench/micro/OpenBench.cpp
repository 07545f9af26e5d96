// Opening a document, and finding its pages.

#include <benchmark/benchmark.h>

#include "BenchDocuments.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::bench {

namespace {

void Open(benchmark::State& state, FileForm form) {
  const std::string bytes = MakeDocument(form, static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(OpenDocument(bytes));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(Open, table, FileForm::kClassic)->Arg(100)->Arg(10000);
BENCHMARK_CAPTURE(Open, xref_stream, FileForm::kPacked)->Arg(100)->Arg(10000);

// The document is opened anew each time: what is read once is part of the work.
void OpenPages(benchmark::State& state, FileForm form) {
  const std::string bytes = MakeDocument(form, static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const auto document = OpenDocument(bytes);
    const pdf::PageTree tree(*document);
    if (tree.pages().size() != static_cast<std::size_t>(state.range(0))) {
      state.SkipWithError("pages are missing");
      return;
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(OpenPages, table, FileForm::kClassic)->Arg(100)->Arg(10000);
BENCHMARK_CAPTURE(OpenPages, xref_stream, FileForm::kPacked)->Arg(100)->Arg(10000);

}  // namespace

}  // namespace TarnixTools::bench
