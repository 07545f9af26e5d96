// How fast bytes become tokens and values.

#include <benchmark/benchmark.h>

#include "BenchDocuments.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::bench {

namespace {

constexpr std::size_t kInputSize = std::size_t{256} << 10;

void LexAll(benchmark::State& state, const std::string& text) {
  if (text.empty()) {
    state.SkipWithError("nothing to read");
    return;
  }
  std::int64_t token_count = 0;
  for (auto _ : state) {
    pdf::Lexer lexer(text, true);
    for (pdf::Token token = lexer.Next(); token.kind != pdf::Token::Kind::kEnd;
         token = lexer.Next()) {
      ++token_count;
    }
    benchmark::DoNotOptimize(token_count);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.SetItemsProcessed(token_count);
}

void LexerDictionaries(benchmark::State& state) {
  LexAll(state, DictionarySyntax(kInputSize));
}

BENCHMARK(LexerDictionaries)->Name("Lexer/dictionaries");

void LexerExampleContent(benchmark::State& state) {
  LexAll(state, ExampleContent(kInputSize));
}

BENCHMARK(LexerExampleContent)->Name("Lexer/example_content");

void ParserDictionaries(benchmark::State& state) {
  const std::string text = DictionarySyntax(kInputSize);
  pdf::Arena arena;
  std::int64_t value_count = 0;
  for (auto _ : state) {
    arena.Reset();
    pdf::Lexer lexer(text, true);
    pdf::Parser parser(arena);
    pdf::Object value;
    while (parser.Parse(lexer, nullptr, value) == pdf::Parser::Status::kDone) {
      ++value_count;
    }
    benchmark::DoNotOptimize(value_count);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.SetItemsProcessed(value_count);
}

BENCHMARK(ParserDictionaries)->Name("Parser/dictionaries");

}  // namespace

}  // namespace TarnixTools::bench
