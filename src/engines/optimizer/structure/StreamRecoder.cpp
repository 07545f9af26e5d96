#include "engines/optimizer/structure/StreamRecoder.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "pdf/Limits.h"
#include "pdf/file/StreamFilters.h"
#include "pdf/write/ReachedObjects.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::DictionaryEntry;
using pdf::FilterKind;
using pdf::FilterStep;
using pdf::Object;

// Entries about the filters, with the names that are abbreviated in inline images: readers know
// them in streams, too.
constexpr std::array<std::string_view, 3> kFilterKeys = {"Filter", "DecodeParms", "DP"};
constexpr std::string_view kFlateEntry = "/Filter/FlateDecode";

// Encoded bytes of a stream that is held.
constexpr std::size_t kMaxHeld = std::size_t{64} << 20;

// Levels of libdeflate for data up to so many bytes. On content and fonts level 12 gives 0.3 % less
// than level 10 for twice the time, and level 10 gives 2 % less than level 9; level 6, five times as
// fast, is for what is so long that it would hold up a job.
struct LevelOfSize {
  std::size_t bytes;
  int level;
};

constexpr std::array<LevelOfSize, 3> kLevels = {
    {{std::size_t{512} << 10, 12}, {std::size_t{16} << 20, 10}, {~std::size_t{0}, 6}}};

int LevelFor(std::size_t bytes) {
  return std::find_if(kLevels.begin(), kLevels.end(),
                      [&](const LevelOfSize& level) { return bytes <= level.bytes; })
      ->level;
}

bool IsDecoded(FilterKind kind) {
  return kind == FilterKind::kFlate || kind == FilterKind::kLzw || kind == FilterKind::kAscii85 ||
         kind == FilterKind::kAsciiHex || kind == FilterKind::kRunLength;
}

std::vector<FilterStep> StepsOf(pdf::Document& document, const Object& dictionary,
                                pdf::Arena& arena) {
  return pdf::FilterStepsOf(dictionary,
                            [&](const Object& value) { return document.Resolve(value, arena); });
}

bool MayRecode(pdf::Document& document, const Object& dictionary) {
  if (!dictionary.IsDictionary() || dictionary.Has("F") || dictionary.Has("FFilter")) {
    return false;
  }
  pdf::Arena arena;
  const auto steps = StepsOf(document, dictionary, arena);
  const bool is_plain_metadata =
      steps.empty() && document.Resolve(dictionary.Get("Type"), arena).IsName("Metadata");
  return !is_plain_metadata && std::all_of(steps.begin(), steps.end(), [](const FilterStep& step) {
    return IsDecoded(step.kind);
  });
}

bool IsFilterKey(std::string_view key) {
  return std::find(kFilterKeys.begin(), kFilterKeys.end(), key) != kFilterKeys.end();
}

std::size_t FilterBytesOf(const Object& dictionary) {
  std::string text;
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    if (IsFilterKey(entry.Key())) {
      pdf::AppendName(text, entry.Key());
      pdf::AppendObject(text, entry.value);
    }
  }
  return text.size();
}

std::size_t SizeOf(const RecodedStream& stream) {
  constexpr std::size_t kParametersKey = std::string_view("/DecodeParms").size();
  const StreamCoding& coding = stream.coding;
  return stream.data.size() + (coding.is_deflated ? kFlateEntry.size() : 0) +
         (coding.parameters.empty() ? 0 : kParametersKey + coding.parameters.size());
}

// Nothing for data that is not sound to its end.
std::optional<RecodedStream> Deflated(const EncodedStream& encoded,
                                      const std::vector<FilterStep>& steps) {
  const pdf::Decoded decoded = pdf::TryDecode(steps, encoded.data, pdf::limits::kMaxTakenOff);
  if (!decoded.complete) {
    return std::nullopt;
  }
  RecodedStream stream;
  pdf::DeflateTo(stream.data, decoded.data, LevelFor(decoded.data.size()));
  if (SizeOf(stream) >= decoded.data.size()) {
    stream = {.data = decoded.data, .coding = {.is_deflated = false, .parameters = {}}};
  }
  return stream;
}

// Rows that the encoder found easier to deflate stay as its predictor made them.
std::optional<RecodedStream> DeflatedRows(const EncodedStream& encoded) {
  if (encoded.steps.empty() || encoded.steps.back().parameters.predictor <= 1) {
    return std::nullopt;
  }
  std::vector<FilterStep> steps = encoded.steps;
  steps.back().parameters.predictor = 1;
  auto stream = Deflated(encoded, steps);
  if (!stream || !stream->coding.is_deflated) {
    return std::nullopt;
  }
  stream->coding.parameters = "<<" + pdf::PredictorEntries(encoded.steps.back().parameters) + ">>";
  return stream;
}

}  // namespace

std::vector<std::uint32_t> StreamsToRecode(pdf::Document& document,
                                           const std::unordered_set<std::uint32_t>& taken,
                                           pdf::DocumentRewriter& rewriter) {
  std::vector<std::uint32_t> numbers;
  pdf::ForEachReached(document, rewriter, [&](std::uint32_t number, const Object& value) {
    const bool is_free = !taken.contains(number) && !rewriter.IsChanged(number);
    if (is_free && MayRecode(document, value) && document.IsStream(number)) {
      numbers.push_back(number);
    }
  });
  return numbers;
}

std::optional<EncodedStream> ReadEncoded(pdf::Document& document, std::uint32_t number) {
  const auto stream = document.StreamOf(number);
  if (!stream || stream->extent.length > kMaxHeld) {
    return std::nullopt;
  }
  pdf::Arena arena;
  const Object dictionary = document.Load({.number = number, .generation = 0}, arena);
  return EncodedStream{.data = document.ReadStreamData(*stream, kMaxHeld),
                       .steps = StepsOf(document, dictionary, arena),
                       .entry_bytes = FilterBytesOf(dictionary)};
}

std::optional<RecodedStream> Recode(const EncodedStream& encoded) {
  std::optional<RecodedStream> best = Deflated(encoded, encoded.steps);
  if (!best) {
    return std::nullopt;
  }
  if (auto rows = DeflatedRows(encoded); rows && SizeOf(*rows) < SizeOf(*best)) {
    best = std::move(rows);
  }
  return SizeOf(*best) < encoded.data.size() + encoded.entry_bytes ? best : std::nullopt;
}

void PutRecoded(pdf::Document& document, std::uint32_t number, const StreamCoding& coding,
                StoredData data, pdf::DocumentRewriter& rewriter) {
  pdf::Arena arena;
  const Object dictionary = document.Load({.number = number, .generation = 0}, arena);
  std::vector<DictionaryEntry> entries;
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    if (entry.Key() != "Length" && !IsFilterKey(entry.Key())) {
      entries.push_back(entry);
    }
  }
  std::string text;
  pdf::AppendObject(text, Object::Dictionary(entries));
  text.resize(text.size() - 2);  // the closing ">>"
  text += coding.is_deflated ? kFlateEntry : "";
  text += coding.parameters.empty() ? "" : "/DecodeParms" + coding.parameters;
  rewriter.Change(number, pdf::ObjectChange::StreamFrom(
                              text + ">>", [data = std::move(data)](pdf::ByteSink& sink) {
                                data.WriteTo(sink);
                              }));
}

}  // namespace TarnixTools::engines::optimizer
