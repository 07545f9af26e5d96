#include "engines/toolbox/content/ContentIsolation.h"

#include <algorithm>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/content/StreamText.h"
#include "pdf/Error.h"
#include "pdf/Limits.h"

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
std::string ContentIsolation::Decode(std::uint32_t number) {
  auto decoded = source_->document().TryDecodeStream(number, pdf::limits::kMaxContentBytes);
  if (!decoded) {
    return {};
  }
  if (decoded->is_too_long) {
    ThrowTooLarge();
  }
  Spend(decoded->data.size());
  return std::move(decoded->data);
}

const pdf::ContentBalance& ContentIsolation::BalanceOf(std::uint32_t number) {
  if (const auto known = balances_.find(number); known != balances_.end()) {
    return known->second;
  }
  if (balances_.size() >= limits::kMaxKeptBalances ||
      kept_positions_ >= limits::kMaxKeptPositions) {
    balances_.clear();
    kept_positions_ = 0;
  }
  const auto& balance =
      balances_.emplace(number, pdf::MeasureBalance(Decode(number))).first->second;
  kept_positions_ += balance.restore_positions().size();
  return balance;
}

IsolatedContent ContentIsolation::Isolate(const std::vector<std::uint32_t>& streams) {
  Spend(streams.size() * limits::kBytesPerPaintedStream);
  IsolatedContent isolated;
  pdf::ContentBalance all;
  for (const std::uint32_t number : streams) {
    if (all.is_cut()) {
      return IsolateJoined(streams);
    }
    const pdf::ContentBalance& balance = BalanceOf(number);
    ContentStream stream{number, 0};
    if (balance.surplus_restores() > all.open_saves()) {
      stream.target_number = RepairedStream(number, balance, all.open_saves());
    }
    isolated.streams.push_back(stream);
    all.Append(balance);
  }
  isolated.closing = all.closing();
  return isolated;
}

// matched: how many of its first restores belong to streams before it.
std::uint32_t ContentIsolation::RepairedStream(std::uint32_t number,
                                               const pdf::ContentBalance& balance,
                                               std::size_t matched) {
  std::uint32_t& repaired = repaired_[{number, matched}];
  if (repaired == 0) {
    repaired = WriteWithout(Decode(number), balance.restore_positions(), matched);
  }
  return repaired;
}

// A token that goes on from one stream to the next.
IsolatedContent ContentIsolation::IsolateJoined(const std::vector<std::uint32_t>& streams) {
  std::string content;
  for (const std::uint32_t number : streams) {
    content += Decode(number);
    content += '\n';
    if (content.size() > pdf::limits::kMaxContentBytes) {
      ThrowTooLarge();
    }
  }
  const pdf::ContentBalance balance = pdf::MeasureBalance(content);
  IsolatedContent isolated;
  isolated.closing = balance.closing();
  if (balance.surplus_restores() > 0) {
    isolated.streams.push_back(
        {0, WriteWithout(std::move(content), balance.restore_positions(), 0)});
    return isolated;
  }
  for (const std::uint32_t number : streams) {
    isolated.streams.push_back({number, 0});
  }
  return isolated;
}

// Writes a content without the Q from the `first` on that restore nothing: after a q of ours they
// would restore something.
std::uint32_t ContentIsolation::WriteWithout(std::string content,
                                             const std::vector<std::size_t>& restores,
                                             std::size_t first) {
  std::for_each(restores.begin() + static_cast<std::ptrdiff_t>(first), restores.end(),
                [&](std::size_t position) { content[position] = ' '; });
  return WriteStreamText(*target_, "", content);
}

}  // namespace TarnixTools::engines::toolbox
