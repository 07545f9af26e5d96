#include "engines/repair/checks/StreamDataCheck.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/repair/Limits.h"
#include "engines/repair/checks/StreamEntries.h"
#include "pdf/file/StreamFilters.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/ObjectChange.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::FilterKind;
using pdf::FilterStep;
using pdf::Object;

constexpr std::uint64_t kAesBlock = 16;

bool IsDecodedHere(const FilterStep& step) {
  return step.kind != FilterKind::kImage && step.kind != FilterKind::kUnknown;
}

// A stream's data as far as it is decoded here.
struct ReadStream {
  std::size_t steps = 0;      // that are decoded here, encryption included
  bool has_unknown = false;   // a filter that nothing is known of follows
  std::uint64_t encoded = 0;  // bytes
  pdf::Decoded decoded;
};

class StreamData {
 public:
  StreamData(pdf::Document& document, std::uint32_t number)
      : document_(&document), dictionary_(document.Load({number, 0}, arena_)) {
    if (dictionary_.IsDictionary()) {
      stream_ = document.StreamOf(number);
    }
  }

  // What the core reads by itself is not looked at again, nor is what stands in another file.
  bool IsLookedAt() const {
    const Object type = dictionary_.Get("Type");
    return stream_ && !type.IsName("XRef") && !type.IsName("ObjStm") &&
           !dictionary_.Get("F").IsString() && !dictionary_.Get("F").IsDictionary();
  }

  const pdf::StreamData& stream() const { return *stream_; }

  ReadStream Read(std::size_t max_bytes) {
    std::vector<FilterStep> steps = pdf::FilterStepsOf(
        dictionary_, [&](const Object& value) { return document_->Resolve(value, arena_); });
    const auto end = std::ranges::find_if_not(steps, IsDecodedHere);
    ReadStream read;
    read.has_unknown = end != steps.end() && end->kind == FilterKind::kUnknown;
    steps.erase(end, steps.end());
    read.steps = steps.size();
    std::erase_if(steps, [](const FilterStep& step) { return step.kind == FilterKind::kCrypt; });
    read.encoded = stream_->extent.length;
    if (!steps.empty()) {
      const std::string bytes = document_->ReadStreamData(*stream_, max_bytes);
      read.decoded = pdf::TryDecode(steps, bytes, max_bytes);
    }
    return read;
  }

  // The dictionary without the first filters, one at least.
  std::string DictionaryWithout(std::size_t steps) {
    std::string text = "<<";
    AppendEntriesWithoutData(text, dictionary_);
    AppendRest(text, "Filter", ValueOf("Filter", "F"), steps);
    AppendRest(text, "DecodeParms", ValueOf("DecodeParms", "DP"), steps);
    return text + ">>";
  }

 private:
  Object ValueOf(std::string_view key, std::string_view short_key) {
    const Object value = dictionary_.Get(key);
    return document_->Resolve(value.IsNull() ? dictionary_.Get(short_key) : value, arena_);
  }

  // What is no list is of the first filter.
  static void AppendRest(std::string& text, std::string_view key, const Object& list,
                         std::size_t steps) {
    if (list.Items().size() > steps) {
      pdf::AppendName(text, key);
      pdf::AppendObject(text, Object::Array(list.Items().subspan(steps)));
    }
  }

  pdf::Document* document_;
  pdf::Arena arena_;
  Object dictionary_;
  std::optional<pdf::StreamData> stream_;
};

// The stream with what can be decoded.
pdf::ObjectChange Salvaged(pdf::Document& document, std::uint32_t number) {
  StreamData data(document, number);
  ReadStream read = data.Read(limits::kMaxCheckedStream);
  return pdf::ObjectChange::Stream(data.DictionaryWithout(read.steps),
                                   std::move(read.decoded.data));
}

class StreamChecks {
 public:
  explicit StreamChecks(CheckContext& context)
      : context_(&context),
        allowance_(limits::kCheckedAllowance +
                   limits::kCheckedRatio * context.document.reader().size()) {}

  void Check(std::uint32_t number) {
    StreamData data(context_->document, number);
    if (!data.IsLookedAt()) {
      return;
    }
    CheckEncryption(data.stream());
    if (data.stream().extent.length > limits::kMaxCheckedStream || allowance_ == 0) {
      Add(ProblemCode::kStreamTooLarge, Outcome::kWorkedAround, number, {});
      return;
    }
    CheckData(number, data.Read(limits::kMaxCheckedStream));
  }

 private:
  void Add(ProblemCode code, Outcome outcome, std::uint32_t number, std::string detail) {
    context_->problems.Add(
        {.code = code, .outcome = outcome, .object = number, .detail = std::move(detail)});
  }

  // A vector, then whole blocks (7.6.3).
  void CheckEncryption(const pdf::StreamData& stream) {
    const bool is_aes =
        stream.method == pdf::CryptMethod::kAes128 || stream.method == pdf::CryptMethod::kAes256;
    const std::uint64_t length = stream.extent.length;
    if (is_aes && length > 0 && (length % kAesBlock != 0 || length < 2 * kAesBlock)) {
      Add(ProblemCode::kDataUndecryptable, Outcome::kLost, stream.reference.number,
          std::to_string(length) + " bytes");
    }
  }

  void CheckData(std::uint32_t number, const ReadStream& read) {
    allowance_ -= std::min<std::uint64_t>(allowance_, read.encoded + read.decoded.data.size());
    if (read.has_unknown) {
      Add(ProblemCode::kStreamFilterUnknown, Outcome::kWorkedAround, number, {});
    }
    if (read.decoded.is_too_long) {
      Add(ProblemCode::kStreamTooLarge, Outcome::kWorkedAround, number, {});
    } else if (!read.decoded.complete) {
      AddDamaged(number, read);
    } else if (!read.decoded.is_well_wrapped) {
      Add(ProblemCode::kStreamWrapping, Outcome::kFixed, number, {});
      Salvage(number);
    }
  }

  void AddDamaged(std::uint32_t number, const ReadStream& read) {
    Add(ProblemCode::kStreamDataDamaged, Outcome::kLost, number,
        std::to_string(read.encoded) + " bytes, of which " +
            std::to_string(read.decoded.data.size()) + " can be had");
    Salvage(number);
  }

  void Salvage(std::uint32_t number) {
    context_->rewriter.ChangeLater(
        number, [&document = context_->document, number] { return Salvaged(document, number); });
  }

  CheckContext* context_;
  std::uint64_t allowance_;  // bytes that may still be read and decoded
};

}  // namespace

void CheckStreamData(CheckContext& context) {
  StreamChecks checks(context);
  for (std::uint32_t number = 1; number < context.document.object_limit(); ++number) {
    if (context.document.Exists(number)) {
      checks.Check(number);
    }
  }
}

}  // namespace TarnixTools::engines::repair
