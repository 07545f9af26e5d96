#include "engines/support/codecs/jbig2/SymbolDictionary.h"

#include <utility>

#include "engines/support/codecs/jbig2/Jbig2Limits.h"

namespace TarnixTools::engines::jbig2 {
namespace {

class SymbolDecoder {
 public:
  SymbolDecoder(const SymbolDictionary& dictionary, const Symbols& input_symbols,
                std::string_view data, Budget& budget, BitmapContexts& contexts)
      : dictionary_(dictionary),
        symbols_(input_symbols),
        decoder_(data, budget),
        contexts_(contexts),
        text_(CodeLength(input_symbols.size() + dictionary.new_symbols)) {}

  Symbols Decode() {
    const std::size_t wanted = symbols_.size() + dictionary_.new_symbols;
    std::int64_t height = 0;
    while (symbols_.size() < wanted) {
      height += iadh_.Need(decoder_);
      DecodeHeightClass(height, wanted);
    }
    return Exported();
  }

 private:
  // Symbols of one height, up to OOB.
  void DecodeHeightClass(std::int64_t height, std::size_t wanted) {
    std::int64_t width = 0;
    while (const std::optional<std::int32_t> difference = iadw_.Decode(decoder_)) {
      width += *difference;
      if (symbols_.size() >= wanted || width < 0 || width > limits::kMaxSymbolSide || height < 0 ||
          height > limits::kMaxSymbolSide) {
        throw Failure();
      }
      decoder_.Spend(limits::kSymbolCost);
      symbols_.push_back(std::make_shared<const Bitmap>(
          DecodeSymbol(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height))));
    }
  }

  Bitmap DecodeSymbol(std::uint32_t width, std::uint32_t height) {
    if (!dictionary_.uses_refinement_and_aggregation) {
      return DecodeGenericRegion({.width = width,
                                  .height = height,
                                  .template_number = dictionary_.template_number,
                                  .adaptive = dictionary_.adaptive},
                                 decoder_, contexts_.generic);
    }
    const std::int32_t instances = iaai_.Need(decoder_);
    if (instances < 1) {
      throw Failure();
    }
    return instances == 1 ? DecodeRefinement(width, height)
                          : DecodeAggregation(width, height, static_cast<std::uint32_t>(instances));
  }

  // A symbol that is made of several instances of others (6.5.8.2).
  Bitmap DecodeAggregation(std::uint32_t width, std::uint32_t height, std::uint32_t instances) {
    return DecodeTextRegion({.width = width,
                             .height = height,
                             .instances = instances,
                             .uses_refinement = true,
                             .refinement_template = dictionary_.refinement_template,
                             .refinement_adaptive = dictionary_.refinement_adaptive},
                            symbols_, decoder_, text_, contexts_.refinement);
  }

  // A symbol that refines another (6.5.8.2.2).
  Bitmap DecodeRefinement(std::uint32_t width, std::uint32_t height) {
    const std::uint32_t id = text_.iaid.Decode(decoder_);
    const std::int32_t dx = text_.iardx.Need(decoder_);
    const std::int32_t dy = text_.iardy.Need(decoder_);
    if (id >= symbols_.size()) {
      throw Failure();
    }
    return DecodeRefinementRegion({.width = width,
                                   .height = height,
                                   .template_number = dictionary_.refinement_template,
                                   .adaptive = dictionary_.refinement_adaptive,
                                   .reference = symbols_[id].get(),
                                   .reference_dx = dx,
                                   .reference_dy = dy},
                                  decoder_, contexts_.refinement);
  }

  // EXFLAGS: runs of symbols that are not exported and that are, in turn (6.5.10).
  Symbols Exported() {
    Symbols exported;
    bool is_exported = false;
    std::size_t next = 0;
    int empty_runs = 0;
    while (next < symbols_.size()) {
      const std::int32_t run = iaex_.Need(decoder_);
      empty_runs = run == 0 ? empty_runs + 1 : 0;
      if (run < 0 || static_cast<std::size_t>(run) > symbols_.size() - next ||
          empty_runs > limits::kMaxEmptyRuns) {
        throw Failure();
      }
      const auto first = symbols_.begin() + static_cast<std::ptrdiff_t>(next);
      if (is_exported) {
        exported.insert(exported.end(), first, first + run);
      }
      next += static_cast<std::size_t>(run);
      is_exported = !is_exported;
    }
    if (exported.size() != dictionary_.exported_symbols) {
      throw Failure();
    }
    return exported;
  }

  const SymbolDictionary& dictionary_;
  Symbols symbols_;  // SDINSYMS, and behind them SDNEWSYMS
  ArithmeticDecoder decoder_;
  BitmapContexts& contexts_;
  TextDecoders text_;  // of aggregations
  IntegerDecoder iadh_, iadw_, iaai_, iaex_;
};

}  // namespace

Symbols DecodeSymbolDictionary(const SymbolDictionary& dictionary, const Symbols& input_symbols,
                               std::string_view data, Budget& budget, BitmapContexts& contexts) {
  if (dictionary.new_symbols > limits::kMaxSymbols || input_symbols.size() > limits::kMaxSymbols) {
    throw Failure();
  }
  budget.Spend(limits::kListingCost * (input_symbols.size() + dictionary.new_symbols));
  return SymbolDecoder(dictionary, input_symbols, data, budget, contexts).Decode();
}

}  // namespace TarnixTools::engines::jbig2
