#include "pdf/filters/Filters.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/filters/FilterSteps.h"
#include "pdf/filters/LimitedOutput.h"

namespace TarnixTools::pdf {
namespace {

struct NamedFilter {
  std::string_view name;
  std::string_view abbreviation;
  FilterKind kind;
};

// ISO 32000-2, tables 6 and 92.
constexpr std::array kNamedFilters = {
    NamedFilter{"FlateDecode", "Fl", FilterKind::kFlate},
    NamedFilter{"LZWDecode", "LZW", FilterKind::kLzw},
    NamedFilter{"ASCII85Decode", "A85", FilterKind::kAscii85},
    NamedFilter{"ASCIIHexDecode", "AHx", FilterKind::kAsciiHex},
    NamedFilter{"RunLengthDecode", "RL", FilterKind::kRunLength},
    NamedFilter{"DCTDecode", "DCT", FilterKind::kImage},
    NamedFilter{"CCITTFaxDecode", "CCF", FilterKind::kImage},
    NamedFilter{"JPXDecode", {}, FilterKind::kImage},
    NamedFilter{"JBIG2Decode", {}, FilterKind::kImage},
    NamedFilter{"Crypt", {}, FilterKind::kCrypt},
};

bool HasPredictor(FilterKind kind) {
  return kind == FilterKind::kFlate || kind == FilterKind::kLzw;
}

void CheckStep(const FilterStep& step) {
  switch (step.kind) {
    case FilterKind::kCrypt:
    case FilterKind::kImage:
    case FilterKind::kUnknown:
      throw Error(ErrorCode::kFilterFailed, "stream has a filter that is not decoded here");
    default:
      break;
  }
  if (HasPredictor(step.kind)) {
    filters::CheckPredictor(step.parameters);
  }
  const std::int64_t early_change = step.parameters.early_change;
  if (step.kind == FilterKind::kLzw && early_change != 0 && early_change != 1) {
    throw Error(ErrorCode::kFilterFailed, "LZWDecode: /EarlyChange is neither 0 nor 1");
  }
}

void CheckSteps(const std::vector<FilterStep>& steps) {
  if (steps.size() > static_cast<std::size_t>(limits::kMaxFilters)) {
    throw Error(ErrorCode::kFilterFailed, "stream has too many filters");
  }
  std::for_each(steps.begin(), steps.end(), CheckStep);
}

// What any step may give for a stream of this many encoded bytes.
std::size_t OutputLimit(std::size_t encoded_bytes, std::size_t max_bytes) {
  constexpr std::size_t kMost =
      std::numeric_limits<std::size_t>::max() - limits::kExpansionAllowance;
  if (encoded_bytes > kMost / limits::kMaxExpansion) {
    return max_bytes;
  }
  return std::min(max_bytes, encoded_bytes * limits::kMaxExpansion + limits::kExpansionAllowance);
}

Decoded RunFilter(const FilterStep& step, std::string_view encoded, std::size_t limit) {
  switch (step.kind) {
    case FilterKind::kFlate:
      return filters::DecodeFlate(encoded, limit);
    case FilterKind::kLzw:
      return filters::DecodeLzw(encoded, static_cast<int>(step.parameters.early_change), limit);
    case FilterKind::kAscii85:
      return filters::DecodeAscii85(encoded, limit);
    case FilterKind::kAsciiHex:
      return filters::DecodeAsciiHex(encoded, limit);
    case FilterKind::kRunLength:
      return filters::DecodeRunLength(encoded, limit);
    default:
      throw Error(ErrorCode::kInternal, "filter was not checked");
  }
}

Decoded RunStep(const FilterStep& step, std::string_view encoded, std::size_t limit) {
  if (encoded.empty()) {
    return {};
  }
  Decoded decoded = RunFilter(step, encoded, limit);
  if (HasPredictor(step.kind) && step.parameters.predictor != 1) {
    Decoded rows = filters::UndoPredictor(std::move(decoded.data), step.parameters);
    return {.data = std::move(rows.data),
            .complete = rows.complete && decoded.complete,
            .is_well_wrapped = decoded.is_well_wrapped};
  }
  return decoded;
}

}  // namespace

FilterKind FilterKindOf(std::string_view name) {
  for (const NamedFilter& filter : kNamedFilters) {
    if (!name.empty() && (name == filter.name || name == filter.abbreviation)) {
      return filter.kind;
    }
  }
  return FilterKind::kUnknown;
}

Decoded Decode(const std::vector<FilterStep>& steps, std::string_view encoded,
               std::size_t max_bytes) {
  CheckSteps(steps);
  if (steps.empty()) {
    if (encoded.size() > max_bytes) {
      filters::ThrowOutputLimit();
    }
    return {std::string(encoded), true};
  }
  const std::size_t limit = OutputLimit(encoded.size(), max_bytes);
  Decoded result = RunStep(steps.front(), encoded, limit);
  for (std::size_t i = 1; i < steps.size(); ++i) {
    Decoded next = RunStep(steps[i], result.data, limit);
    result = {.data = std::move(next.data),
              .complete = next.complete && result.complete,
              .is_well_wrapped = next.is_well_wrapped && result.is_well_wrapped};
  }
  return result;
}

Decoded TryDecode(const std::vector<FilterStep>& steps, std::string_view encoded,
                  std::size_t max_bytes) {
  try {
    return Decode(steps, encoded, max_bytes);
  } catch (const Error& error) {
    return LostTo(error);
  }
}

Decoded LostTo(const Error& error) {
  if (!error.is_damage()) {
    throw error;
  }
  const bool is_too_long = error.code() == ErrorCode::kLimitExceeded;
  return {.data = {}, .complete = false, .is_too_long = is_too_long};
}

}  // namespace TarnixTools::pdf
