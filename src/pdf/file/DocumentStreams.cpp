// The part of Document that reads the data of streams.
#include <algorithm>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/file/Document.h"
#include "pdf/file/StreamFilters.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::uint64_t kSmallStream = std::uint64_t{32} << 10;
constexpr std::uint64_t kAesBlock = 16;

[[noreturn]] void ThrowShorter() {
  throw Error(ErrorCode::kSourceChanged, "the file became shorter while it was read");
}

// Whether the data is read through the block cache: small streams often lie side by side.
bool IsCached(const StreamExtent& extent) {
  return extent.length <= kSmallStream;
}

}  // namespace

std::optional<StreamExtent> Document::StreamAt(std::uint64_t end, const Object& length,
                                               std::uint32_t number) {
  const std::optional<std::uint64_t> data = reader_.StreamDataAt(end);
  if (!data) {
    return std::nullopt;
  }
  Arena arena;
  const Object claimed = Resolve(length, arena);
  const StreamExtent extent = reader_.MeasureStream(
      *data, claimed.IsNumber() ? std::optional(claimed.IntegerOr(-1)) : std::nullopt);
  if (extent.length_was_wrong) {
    findings_.Add(FindingCode::kStreamLengthWrong, number, *data);
  }
  if (extent.end_was_missing) {
    findings_.Add(FindingCode::kStreamEndMissing, number, *data);
  }
  return extent;
}

std::optional<StreamData> Document::FindStream(std::uint32_t number, Arena& arena,
                                               Object& dictionary) {
  const std::optional<RawObject> raw = Locate(number);
  if (!raw || raw->holder != nullptr) {
    return std::nullopt;
  }
  const ValueAt value = reader_.ReadValue(raw->offset, arena, nullptr);
  dictionary = value.value;
  const auto extent = dictionary.IsDictionary()
                          ? StreamAt(value.end, dictionary.Get("Length"), number)
                          : std::nullopt;
  if (!extent) {
    return std::nullopt;
  }
  return StreamData{raw->reference, *extent, MethodOfStream(dictionary, arena)};
}

std::optional<StreamData> Document::StreamOf(std::uint32_t number) {
  Arena arena;
  Object dictionary;
  return FindStream(number, arena, dictionary);
}

CryptMethod Document::MethodOfType(std::string_view type) const {
  if (!security_ || type == "XRef" || (type == "Metadata" && !encryption_.facts.encrypt_metadata)) {
    return CryptMethod::kIdentity;
  }
  return security_->MethodFor(type == "EmbeddedFile" ? CryptTarget::kEmbeddedFile
                                                     : CryptTarget::kStream);
}

CryptMethod Document::MethodOfStream(const Object& dictionary, Arena& arena) {
  if (!security_) {
    return CryptMethod::kIdentity;
  }
  const Object filter = Resolve(dictionary.Get("Filter"), arena);
  const Object first =
      filter.IsArray() && !filter.Items().empty() ? Resolve(filter.Items()[0], arena) : filter;
  if (first.IsName("Crypt")) {
    const Object all = Resolve(dictionary.Get("DecodeParms"), arena);
    const Object own = all.IsArray() && !all.Items().empty() ? Resolve(all.Items()[0], arena) : all;
    const auto found = encryption_.crypt_filters.find(own.Get("Name").Text());
    return found == encryption_.crypt_filters.end() ? CryptMethod::kIdentity : found->second;
  }
  return MethodOfType(dictionary.Get("Type").Text());
}

std::unique_ptr<Cipher> Document::DecryptorOf(const StreamData& stream) const {
  return security_ ? security_->DecryptorFor(stream.method, stream.reference.number,
                                             stream.reference.generation)
                   : nullptr;
}

std::uint64_t Document::PlainLength(const StreamData& stream) {
  const std::uint64_t length = stream.extent.length;
  if (!security_ || stream.method == CryptMethod::kIdentity || stream.method == CryptMethod::kRc4) {
    return length;
  }
  const std::uint64_t whole = length - length % kAesBlock;
  if (whole < 2 * kAesBlock) {
    return 0;
  }
  // The padding in the last block tells how long the plain data is; the block before it serves as
  // its vector.
  std::string tail(2 * kAesBlock, '\0');
  if (blocks_.Read(stream.extent.offset + whole - tail.size(), tail.data(), tail.size()) !=
      tail.size()) {
    ThrowShorter();
  }
  std::string last;
  const auto cipher = DecryptorOf(stream);
  cipher->Update(tail, last);
  cipher->Finish(last);
  return whole - tail.size() + last.size();
}

void Document::CopyPlain(const StreamExtent& extent, ByteSink& sink) {
  for (std::uint64_t done = 0; done < extent.length;) {
    const std::span<char> room = IsCached(extent) ? std::span<char>() : sink.Room();
    if (room.empty()) {
      const std::string_view bytes = PieceOf(extent, done);
      sink.Write(bytes);
      done += bytes.size();
      continue;
    }
    const std::size_t count = blocks_.Read(
        extent.offset + done, room.data(),
        static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), extent.length - done)));
    if (count == 0) {
      ThrowShorter();
    }
    sink.Commit(count);
    done += count;
  }
}

// The data from its byte `done` on, some of it at least.
std::string_view Document::PieceOf(const StreamExtent& extent, std::uint64_t done) {
  const std::uint64_t offset = extent.offset + done;
  const std::uint64_t left = extent.length - done;
  const std::string_view piece = IsCached(extent)
                                     ? blocks_.Window(offset, static_cast<std::size_t>(left))
                                     : blocks_.ReadPiece(offset, left);
  if (piece.empty()) {
    ThrowShorter();
  }
  return piece.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(left, piece.size())));
}

void Document::CopyStreamData(const StreamData& stream, ByteSink& sink, std::uint64_t most) {
  StreamExtent extent = stream.extent;
  extent.length = std::min(extent.length, most);
  const auto cipher = DecryptorOf(stream);
  if (cipher == nullptr) {
    CopyPlain(extent, sink);
    return;
  }
  std::string plain;
  for (std::uint64_t done = 0; done < extent.length;) {
    const std::string_view bytes = PieceOf(extent, done);
    done += bytes.size();
    plain.clear();
    cipher->Update(bytes, plain);
    sink.Write(plain);
  }
  if (extent.length == stream.extent.length) {
    plain.clear();
    cipher->Finish(plain);
    sink.Write(plain);
  }
}

bool Document::CopyStreamData(std::uint32_t number, ByteSink& sink, std::uint64_t most) {
  const std::optional<StreamData> stream = StreamOf(number);
  if (stream) {
    CopyStreamData(*stream, sink, most);
  }
  return stream.has_value();
}

std::string Document::ReadStreamData(const StreamData& stream, std::size_t max_bytes) {
  if (stream.extent.length > max_bytes) {
    throw Error(ErrorCode::kLimitExceeded, "stream data is too long");
  }
  const auto length = static_cast<std::size_t>(stream.extent.length);
  StringSink sink;
  sink.Reserve(length);
  CopyStreamData(stream, sink);
  return sink.Take();
}

std::optional<Decoded> Document::TryDecodeStream(std::uint32_t number, std::size_t max_bytes) {
  try {
    return DecodeStream(number, max_bytes);
  } catch (const Error& error) {
    return LostTo(error);
  }
}

std::optional<Decoded> Document::DecodeStream(std::uint32_t number, std::size_t max_bytes) {
  Arena arena;
  Object dictionary;
  const std::optional<StreamData> stream = FindStream(number, arena, dictionary);
  if (!stream) {
    return std::nullopt;
  }
  std::vector<FilterStep> steps =
      FilterStepsOf(dictionary, [&](const Object& value) { return Resolve(value, arena); });
  std::erase_if(steps, [](const FilterStep& step) { return step.kind == FilterKind::kCrypt; });
  std::string bytes = ReadStreamData(*stream, max_bytes);
  return steps.empty() ? Decoded{std::move(bytes)} : Decode(steps, bytes, max_bytes);
}

}  // namespace TarnixTools::pdf
