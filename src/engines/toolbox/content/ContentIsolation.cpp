#include "engines/toolbox/content/ContentIsolation.h"

#include <algorithm>

#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/content/StreamText.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kMaxContent = std::size_t{256} << 20;
constexpr std::size_t kMaxKept = 4096;

}  // namespace

// What readers can show of it: nothing of data that cannot be decoded, all before the damage of
// damaged data.
std::string ContentIsolation::Decode(std::uint32_t number) {
  try {
    auto decoded = source_->document().DecodeStream(number, kMaxContent);
    return decoded ? std::move(decoded->data) : std::string();
  } catch (const pdf::Error& error) {
    if (error.code() != pdf::ErrorCode::kFilterFailed &&
        error.code() != pdf::ErrorCode::kLimitExceeded) {
      throw;
    }
    return {};
  }
}

const pdf::ContentBalance& ContentIsolation::BalanceOf(std::uint32_t number) {
  if (const auto known = balances_.find(number); known != balances_.end()) {
    return known->second;
  }
  if (balances_.size() >= kMaxKept) {
    balances_.clear();
  }
  return balances_.emplace(number, pdf::MeasureBalance(Decode(number))).first->second;
}

IsolatedContent ContentIsolation::Isolate(const std::vector<std::uint32_t>& streams) {
  IsolatedContent isolated;
  pdf::ContentBalance all;
  for (const std::uint32_t number : streams) {
    if (all.is_cut()) {
      return IsolateJoined(streams);
    }
    const pdf::ContentBalance& balance = BalanceOf(number);
    ContentStream stream{number, 0};
    if (balance.surplus_restores() > all.open_saves()) {
      const std::size_t matched = all.open_saves();
      std::uint32_t* known = matched == 0 ? &repaired_[number] : nullptr;
      stream.target_number = known != nullptr ? *known : 0;
      if (stream.target_number == 0) {
        stream.target_number = WriteWithout(Decode(number), balance.restore_positions(), matched);
      }
      if (known != nullptr) {
        *known = stream.target_number;
      }
    }
    isolated.streams.push_back(stream);
    all.Append(balance);
  }
  isolated.closing = all.closing();
  return isolated;
}

// A token that goes on from one stream to the next.
IsolatedContent ContentIsolation::IsolateJoined(const std::vector<std::uint32_t>& streams) {
  std::string content;
  for (const std::uint32_t number : streams) {
    content += Decode(number);
    content += '\n';
    if (content.size() > kMaxContent) {
      throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the contents of a page are too large");
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

}  // namespace TarnixTools::engines
