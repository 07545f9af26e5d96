#include "pdf/content/PageContents.h"

#include <utility>

#include "pdf/Error.h"

namespace TarnixTools::pdf {

ContentStreams StreamsOfContents(Document& document, const Object& contents) {
  Arena arena;
  ContentStreams streams;
  const Followed found = document.Follow(contents, arena);
  if (!found.value.IsArray()) {
    if (found.number != 0 && found.value.IsDictionary()) {
      streams.numbers.push_back(found.number);
    }
    return streams;
  }
  streams.is_array = true;
  streams.array = found.number;
  Arena scratch;
  for (const Object& item : found.value.Items()) {
    scratch.Reset();
    const Followed part = document.Follow(item, scratch);
    if (part.number == 0 || !part.value.IsDictionary() ||
        streams.numbers.size() >= limits::kMaxContentStreams) {
      streams.is_regular = streams.is_regular && part.value.IsNull();
      continue;
    }
    streams.numbers.push_back(part.number);
  }
  return streams;
}

PageContents ReadPageContents(Document& document, const Object& contents) {
  const ContentStreams streams = StreamsOfContents(document, contents);
  PageContents all;
  all.is_whole = streams.is_regular;
  for (const std::uint32_t number : streams.numbers) {
    const std::size_t room = limits::kMaxContentBytes - all.bytes.size();
    std::optional<Decoded> part = document.TryDecodeStream(number, room);
    if (!part || part->is_lost() || part->data.size() == room) {
      all.is_whole = false;
      continue;
    }
    all.is_whole = all.is_whole && part->complete;
    all.parts.push_back({number, all.bytes.size()});
    if (streams.is_array) {
      all.bytes += part->data;
      all.bytes += '\n';
    } else {
      all.bytes = std::move(part->data);
    }
  }
  return all;
}

}  // namespace TarnixTools::pdf
