#include "pdf/file/ObjectStream.h"

#include <algorithm>

#include "pdf/Limits.h"
#include "pdf/syntax/Lexer.h"

namespace TarnixTools::pdf {

ObjectStream::ObjectStream(std::string text, std::int64_t first, std::int64_t count)
    : text_(std::move(text)) {
  Lexer lexer(text_, true);
  std::vector<std::pair<std::int64_t, std::int64_t>> pairs;
  std::size_t header_end = 0;
  for (std::int64_t i = 0; i < count; ++i) {
    const Token number = lexer.Next();
    const Token offset = number.kind == Token::Kind::kInteger ? lexer.Next() : Token();
    if (offset.kind != Token::Kind::kInteger) {
      break;
    }
    header_end = lexer.position();
    pairs.emplace_back(number.integer, offset.integer);
  }
  const auto size = static_cast<std::int64_t>(text_.size());
  // A place of the first object that cannot be right: it starts where the list of pairs ends.
  if (first < static_cast<std::int64_t>(header_end) || first > size) {
    first = static_cast<std::int64_t>(header_end);
  }
  members_.reserve(pairs.size());
  for (const auto& [number, offset] : pairs) {
    const bool is_usable =
        number >= 0 && number <= limits::kMaxObjectNumber && offset >= 0 && offset < size - first;
    members_.push_back({is_usable ? static_cast<std::uint32_t>(number) : 0,
                        is_usable ? static_cast<std::uint32_t>(first + offset) : 0});
  }
}

std::optional<std::string_view> ObjectStream::Find(std::uint32_t number,
                                                   std::uint32_t index) const {
  const Member* member = nullptr;
  if (index < members_.size() && members_[index].number == number) {
    member = &members_[index];
  } else {
    const auto found = std::find_if(members_.begin(), members_.end(),
                                    [&](const Member& m) { return m.number == number; });
    member = found == members_.end() ? nullptr : &*found;
  }
  if (member == nullptr || number == 0) {
    return std::nullopt;
  }
  return std::string_view(text_).substr(member->offset);
}

std::shared_ptr<const ObjectStream> ObjectStreamCache::Find(std::uint32_t number) {
  const auto place = places_.find(number);
  if (place == places_.end()) {
    return nullptr;
  }
  kept_.splice(kept_.begin(), kept_, place->second);
  return kept_.front().stream;
}

void ObjectStreamCache::Put(std::uint32_t number, std::shared_ptr<const ObjectStream> stream) {
  bytes_ += stream->size();
  kept_.push_front({number, std::move(stream)});
  places_[number] = kept_.begin();
  while (bytes_ > kMaxBytes && kept_.size() > 1) {
    bytes_ -= kept_.back().stream->size();
    places_.erase(kept_.back().number);
    kept_.pop_back();
  }
}

void ObjectStreamCache::Clear() {
  kept_.clear();
  places_.clear();
  bytes_ = 0;
}

}  // namespace TarnixTools::pdf
