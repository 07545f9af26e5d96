#include "engines/pdfa/ClaimProof.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "engines/pdfa/Claim.h"
#include "engines/pdfa/Validation.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/XmpEdit.h"
#include "engines/support/metadata/XmpNames.h"
#include "engines/support/metadata/XmpPacket.h"
#include "foundation/Platform.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::pdfa {

namespace {

// The packet, as it stands in the file.
struct PlainPacket {
  std::uint64_t offset = 0;
  std::string bytes;
};

std::unique_ptr<pdf::Document> OpenIn(std::FILE* file) {
  const std::shared_ptr<std::FILE> borrowed(file, [](std::FILE*) {});
  return pdf::Document::Open(std::make_unique<DiskSource>(borrowed), "");
}

// The claimed one, or else the best of those below it. Nothing where none holds.
std::optional<Level> LevelThatHolds(pdf::Document& document, Level claimed) {
  constexpr std::array kDownwards = {'a', 'u', 'b'};
  bool is_below = false;
  for (const char conformance : kDownwards) {
    is_below = is_below || conformance == ConformanceOf(claimed);
    const std::optional<Level> level = LevelOf(PartOf(claimed), conformance);
    if (is_below && level && pdf::UnlessDamaged(false, [&] {
          return Validate(document, *level, {.most_of_rule = 1}).is_valid();
        })) {
      return level;
    }
  }
  return std::nullopt;
}

PlainPacket ReadPlainPacket(pdf::Document& document) {
  const std::uint32_t number = XmpPacketNumber(document);
  const std::optional<pdf::StreamData> stream = document.StreamOf(number);
  std::optional<pdf::Decoded> decoded =
      document.TryDecodeStream(number, engines::limits::kMaxMetadataBytes);
  if (!stream || !decoded || decoded->data.size() != stream->extent.length) {
    throw pdf::Error(pdf::ErrorCode::kInternal, "the packet is not stored as it is");
  }
  return {stream->extent.offset, std::move(decoded->data)};
}

// The packet with another conformance of one letter; empty where that would not say what it should.
std::string WithLevel(std::string packet, Level from, Level to) {
  const auto letter_of = [](Level level) {
    return static_cast<char>(ConformanceOf(level) - 'a' + 'A');
  };
  constexpr std::string_view kProperty = ":conformance";
  std::size_t at = packet.find(kProperty);
  at = at == std::string::npos ? at : packet.find(letter_of(from), at + kProperty.size());
  if (at == std::string::npos) {
    return {};
  }
  packet[at] = letter_of(to);
  return LevelOfCode(ClaimedPdfACode(ReadXmp(packet))) == to ? packet : std::string();
}

// With spaces for what is missing, where packets have them: before the end mark.
std::string WithoutClaim(const std::string& packet) {
  const XmpChange no_claim = {kPdfAIdNamespace, {}, {}, {}};
  std::optional<EditedXmp> edited = EditXmp(packet, {&no_claim, 1});
  if (!edited || edited->bytes.size() > packet.size()) {
    throw pdf::Error(pdf::ErrorCode::kInternal, "the claim cannot be taken out in its place");
  }
  const std::size_t mark = edited->bytes.rfind("<?xpacket");
  edited->bytes.insert(std::min(mark, edited->bytes.size()), packet.size() - edited->bytes.size(),
                       ' ');
  return std::move(edited->bytes);
}

void Overwrite(std::FILE* file, const PlainPacket& packet) {
  if (!platform::Seek(file, static_cast<std::int64_t>(packet.offset))) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be positioned", errno);
  }
  DiskSink(file).Write(packet.bytes);
  if (!platform::SeekToEnd(file)) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be positioned", errno);
  }
}

}  // namespace

std::optional<Level> ProveClaim(std::FILE* file) {
  const std::unique_ptr<pdf::Document> document = OpenIn(file);
  const std::optional<Level> claimed = ClaimedLevel(*document);
  std::optional<Level> proven = claimed ? LevelThatHolds(*document, *claimed) : std::nullopt;
  if (proven == claimed) {
    return proven;
  }
  PlainPacket packet = ReadPlainPacket(*document);
  std::string lowered = proven ? WithLevel(packet.bytes, *claimed, *proven) : std::string();
  if (lowered.empty()) {
    proven.reset();
  }
  packet.bytes = proven ? std::move(lowered) : WithoutClaim(packet.bytes);
  Overwrite(file, packet);
  return proven;
}

}  // namespace TarnixTools::engines::pdfa
