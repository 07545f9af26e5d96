#include "engines/support/codecs/jbig2/SymbolDictionary.h"

#include <utility>

namespace TarnixTools::engines::jbig2 {
namespace {

constexpr std::uint32_t kMaxSymbols = 65'536;
// What a symbol costs, be it empty, and what it costs to list one, in pixels.
constexpr std::uint64_t kSymbolCost = 256;
constexpr std::uint64_t kListingCost = 64;
constexpr std::int64_t kMaxSide = 65'535;

class SymbolDecoder {
 public:
  SymbolDecoder(const SymbolDictionary& dictionary, const Symbols& symbols, std::string_view data,
                Budget& budget, LearntContexts& learnt)
      : dictionary_(dictionary),
        symbols_(symbols),
        decoder_(data, budget),
        learnt_(learnt),
        text_(BitsFor(symbols.size() + dictionary.added)) {}

  Symbols Decode() {
    const std::size_t wanted = symbols_.size() + dictionary_.added;
    std::int64_t height = 0;
    while (symbols_.size() < wanted) {
      height += class_height_.Need(decoder_);
      DecodeClass(height, wanted);
    }
    return Exported();
  }

 private:
  // Symbols of one height.
  void DecodeClass(std::int64_t height, std::size_t wanted) {
    std::int64_t width = 0;
    for (;;) {
      const std::optional<std::int32_t> more = width_.Decode(decoder_);
      if (!more) {
        return;
      }
      width += *more;
      if (symbols_.size() >= wanted || width < 0 || width > kMaxSide || height < 0 ||
          height > kMaxSide) {
        throw Failure();
      }
      decoder_.Spend(kSymbolCost);
      symbols_.push_back(std::make_shared<const Bitmap>(
          DecodeSymbol(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height))));
    }
  }

  Bitmap DecodeSymbol(std::uint32_t width, std::uint32_t height) {
    if (!dictionary_.refines) {
      return DecodeGeneric({.width = width,
                            .height = height,
                            .pattern = dictionary_.pattern,
                            .adaptive = dictionary_.adaptive},
                           decoder_, learnt_.generic);
    }
    const std::int32_t instances = instances_.Need(decoder_);
    if (instances < 1) {
      throw Failure();
    }
    return instances == 1 ? DecodeRefined(width, height)
                          : DecodeText({.width = width,
                                        .height = height,
                                        .instances = static_cast<std::uint32_t>(instances),
                                        .refines = true,
                                        .refinement_pattern = dictionary_.refinement_pattern,
                                        .refinement_adaptive = dictionary_.refinement_adaptive},
                                       symbols_, decoder_, text_, learnt_.refinement);
  }

  Bitmap DecodeRefined(std::uint32_t width, std::uint32_t height) {
    const std::uint32_t id = text_.id.Decode(decoder_);
    const std::int32_t dx = text_.rdx.Need(decoder_);
    const std::int32_t dy = text_.rdy.Need(decoder_);
    if (id >= symbols_.size()) {
      throw Failure();
    }
    return DecodeRefinement({.width = width,
                             .height = height,
                             .pattern = dictionary_.refinement_pattern,
                             .adaptive = dictionary_.refinement_adaptive,
                             .reference = symbols_[id].get(),
                             .dx = dx,
                             .dy = dy},
                            decoder_, learnt_.refinement);
  }

  // 6.5.10: runs of symbols that are left out and that are exported, in turn.
  Symbols Exported() {
    Symbols exported;
    bool is_exported = false;
    std::size_t next = 0;
    int empty_runs = 0;
    while (next < symbols_.size()) {
      const std::int32_t run = runs_.Need(decoder_);
      empty_runs = run == 0 ? empty_runs + 1 : 0;
      if (run < 0 || static_cast<std::size_t>(run) > symbols_.size() - next || empty_runs > 4) {
        throw Failure();
      }
      for (const std::size_t end = next + static_cast<std::size_t>(run); next < end; ++next) {
        if (is_exported) {
          exported.push_back(symbols_[next]);
        }
      }
      is_exported = !is_exported;
    }
    if (exported.size() != dictionary_.exported) {
      throw Failure();
    }
    return exported;
  }

  const SymbolDictionary& dictionary_;
  Symbols symbols_;
  ArithmeticDecoder decoder_;
  LearntContexts& learnt_;
  TextContexts text_;
  IntegerDecoder class_height_, width_, instances_, runs_;
};

}  // namespace

Symbols DecodeSymbols(const SymbolDictionary& dictionary, const Symbols& symbols,
                      std::string_view data, Budget& budget, LearntContexts& learnt) {
  if (dictionary.added > kMaxSymbols || symbols.size() > kMaxSymbols) {
    throw Failure();
  }
  budget.Spend(kListingCost * (symbols.size() + dictionary.added));
  return SymbolDecoder(dictionary, symbols, data, budget, learnt).Decode();
}

Symbols DecodePatterns(const PatternDictionary& dictionary, std::string_view data, Budget& budget) {
  if (dictionary.last >= kMaxSymbols || dictionary.width == 0 || dictionary.height == 0) {
    throw Failure();
  }
  const std::uint32_t count = dictionary.last + 1;
  budget.Spend(std::uint64_t{count} *
               (kSymbolCost + std::uint64_t{dictionary.width} * dictionary.height));
  ArithmeticDecoder decoder(data, budget);
  Contexts contexts = GenericContexts();
  // All in one picture, side by side.
  const Bitmap all = DecodeGeneric(
      {.width = count * dictionary.width,
       .height = dictionary.height,
       .pattern = dictionary.pattern,
       .adaptive =
           {{{-static_cast<std::int32_t>(dictionary.width), 0}, {-3, -1}, {2, -2}, {-2, -2}}}},
      decoder, contexts);
  Symbols patterns;
  for (std::uint32_t i = 0; i < count; ++i) {
    patterns.push_back(std::make_shared<const Bitmap>(
        all.Part(std::int64_t{i} * dictionary.width, 0, dictionary.width, dictionary.height)));
  }
  return patterns;
}

}  // namespace TarnixTools::engines::jbig2
