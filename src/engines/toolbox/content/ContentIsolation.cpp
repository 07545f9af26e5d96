#include "engines/toolbox/content/ContentIsolation.h"

#include <algorithm>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/content/StreamText.h"
#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/file/StreamFilters.h"

namespace TarnixTools::engines::toolbox {

namespace {

[[noreturn]] void ThrowTooLarge() {
  throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the contents of pages are too large");
}

}  // namespace

ContentIsolation::ContentIsolation(SourceDocument& source, pdf::FileWriter& target)
    : source_(&source),
      target_(&target),
      budget_(limits::kPaintedAllowance +
              limits::kPaintedRatio * source.document().reader().size()) {}

void ContentIsolation::Spend(std::uint64_t bytes) {
  if (bytes > budget_) {
    ThrowTooLarge();
  }
  budget_ -= bytes;
}

// What readers can show of it: nothing of data that cannot be decoded, all before the damage of
// damaged data.
ContentIsolation::Decoded ContentIsolation::Decode(std::uint32_t number) {
  auto decoded = source_->document().TryDecodeStream(number, pdf::limits::kMaxContentBytes);
  if (!decoded) {
    return {};
  }
  if (decoded->is_too_long) {
    ThrowTooLarge();
  }
  Spend(decoded->data.size());
  const bool is_damaged = !decoded->complete && !(decoded->is_lost() && HasForeignFilter(number));
  return {std::move(decoded->data), true, is_damaged};
}

// Whether the data is coded in a way that is not for content: some readers take it as it stands.
bool ContentIsolation::HasForeignFilter(std::uint32_t number) {
  pdf::Arena arena;
  pdf::Document& document = source_->document();
  const auto steps =
      pdf::FilterStepsOf(document.Load({number, 0}, arena),
                         [&](const pdf::Object& value) { return document.Resolve(value, arena); });
  return std::any_of(steps.begin(), steps.end(), [](const pdf::FilterStep& step) {
    return step.kind == pdf::FilterKind::kUnknown || step.kind == pdf::FilterKind::kImage;
  });
}

const ContentIsolation::Measured& ContentIsolation::Measure(std::uint32_t number) {
  if (const auto known = measured_.find(number); known != measured_.end()) {
    return known->second;
  }
  if (measured_.size() >= limits::kMaxKeptBalances ||
      kept_positions_ >= limits::kMaxKeptPositions) {
    measured_.clear();
    kept_positions_ = 0;
  }
  const Decoded decoded = Decode(number);
  Measured& measured = measured_[number];
  measured = {pdf::MeasureBalance(decoded.data), decoded.is_stream, decoded.is_damaged};
  kept_positions_ += measured.balance.restore_positions().size();
  return measured;
}

IsolatedContent ContentIsolation::Isolate(const std::vector<std::uint32_t>& streams) {
  Spend(streams.size() * limits::kBytesPerPaintedStream);
  IsolatedContent isolated;
  pdf::ContentBalance all;
  std::vector<std::size_t> saves_before;  // each of the streams that are kept
  for (const std::uint32_t number : streams) {
    if (all.is_cut()) {
      return IsolateJoined(streams);
    }
    const Measured& measured = Measure(number);
    if (measured.is_stream) {
      isolated.is_damaged = isolated.is_damaged || measured.is_damaged;
      isolated.streams.push_back({number, 0});
      saves_before.push_back(all.open_saves());
      all.Append(measured.balance);
    }
  }
  if (all.stops_readers()) {
    isolated.form = Join(streams, isolated);
    return isolated;
  }
  for (std::size_t i = 0; i < saves_before.size(); ++i) {
    Repair(isolated.streams[i], saves_before[i]);
  }
  isolated.closing = all.closing();
  return isolated;
}

// saves: those that are open before the stream.
void ContentIsolation::Repair(ContentStream& stream, std::size_t saves) {
  const Measured& measured = Measure(stream.source_number);
  if (measured.is_damaged || measured.balance.surplus_restores() > saves) {
    stream.target_number = RepairedStream(stream.source_number, measured.balance, saves);
  }
}

// matched: how many of its first restores belong to streams before it.
std::uint32_t ContentIsolation::RepairedStream(std::uint32_t number,
                                               const pdf::ContentBalance& balance,
                                               std::size_t matched) {
  std::uint32_t& repaired = repaired_[{number, matched}];
  if (repaired == 0) {
    repaired = WriteWithout(Decode(number).data, balance.restore_positions(), matched);
  }
  return repaired;
}

std::string ContentIsolation::Join(const std::vector<std::uint32_t>& streams,
                                   IsolatedContent& isolated) {
  std::string content;
  for (const std::uint32_t number : streams) {
    const Decoded part = Decode(number);
    isolated.is_damaged = isolated.is_damaged || part.is_damaged;
    content += part.data;
    content += '\n';
    if (content.size() > pdf::limits::kMaxContentBytes) {
      ThrowTooLarge();
    }
  }
  return content;
}

// A token that goes on from one stream to the next.
IsolatedContent ContentIsolation::IsolateJoined(const std::vector<std::uint32_t>& streams) {
  IsolatedContent isolated;
  std::string content = Join(streams, isolated);
  const pdf::ContentBalance balance = pdf::MeasureBalance(content);
  isolated.closing = balance.closing();
  if (balance.stops_readers()) {
    isolated.form = std::move(content);
    return isolated;
  }
  if (balance.surplus_restores() > 0 || isolated.is_damaged) {
    isolated.streams.push_back(
        {0, WriteWithout(std::move(content), balance.restore_positions(), 0)});
    return isolated;
  }
  for (const std::uint32_t number : streams) {
    if (Measure(number).is_stream) {
      isolated.streams.push_back({number, 0});
    }
  }
  return isolated;
}

// Writes a content without the Q from the `first` on that restore nothing: after a q of ours they
// would restore something.
std::uint32_t ContentIsolation::WriteWithout(std::string content,
                                             const std::vector<std::size_t>& restores,
                                             std::size_t first) {
  const std::size_t kept = std::min(first, restores.size());
  std::for_each(restores.begin() + static_cast<std::ptrdiff_t>(kept), restores.end(),
                [&](std::size_t position) { content[position] = ' '; });
  return WriteStreamText(*target_, "", content);
}

}  // namespace TarnixTools::engines::toolbox
