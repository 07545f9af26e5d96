#include "engines/pdfa/checks/OutputProfiles.h"

#include <algorithm>
#include <optional>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/rules/ColorFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::size_t kHeaderSize = 128;

template <std::size_t kSize>
std::array<char, kSize> BytesAt(std::string_view text, std::size_t offset) {
  std::array<char, kSize> bytes{};
  std::copy_n(text.begin() + static_cast<std::ptrdiff_t>(offset), kSize, bytes.begin());
  return bytes;
}

}  // namespace

// ICC.1:2022, 7.2.1: where the fields are.
ProfileFacts FactsOfProfile(std::string_view profile) {
  if (profile.size() < kHeaderSize) {
    return {};
  }
  return {.is_readable = true,
          .major_version = static_cast<unsigned char>(profile[8]),
          .device_class = BytesAt<4>(profile, 12),
          .color_space = BytesAt<4>(profile, 16),
          .id = BytesAt<16>(profile, 84)};
}

ProfileFacts FactsOfProfile(pdf::Document& document, std::uint32_t number) {
  const std::optional<pdf::Decoded> stream =
      document.TryDecodeStream(number, limits::kMaxProfileBytes);
  return stream ? FactsOfProfile(stream->data) : ProfileFacts{};
}

std::string OutputSpaceOf(pdf::Document& document) {
  pdf::Arena arena;
  const pdf::Object intents = document.Resolve(document.Catalog(arena).Get("OutputIntents"), arena);
  for (const pdf::Object& item : intents.Items()) {
    const pdf::Object intent = document.Resolve(item, arena);
    if (document.Resolve(intent.Get("S"), arena).IsName("GTS_PDFA1")) {
      const pdf::Followed profile = document.Follow(intent.Get("DestOutputProfile"), arena);
      const ProfileFacts facts = FactsOfProfile(document, profile.number);
      return facts.is_readable ? std::string(facts.Space()) : std::string();
    }
  }
  return {};
}

void CheckOutputIntents(CheckedDocument& checked) {
  pdf::Arena arena;
  const pdf::Object intents =
      checked.Get(checked.document().Catalog(arena), "OutputIntents", arena);
  std::uint32_t first = 0;
  OutputIntentsFacts all;
  for (const pdf::Object& item : intents.Items()) {
    const pdf::Followed intent = checked.document().Follow(item, arena);
    const pdf::Object subtype = checked.Get(intent.value, "S", arena);
    checked.findings().Check(
        OutputIntentFacts{.subtype = subtype.Text(),
                          .has_profile_reference = intent.value.Has("DestOutputProfileRef")},
        {.object = intent.number});
    const pdf::Followed profile =
        checked.document().Follow(intent.value.Get("DestOutputProfile"), arena);
    if (profile.value.IsNull()) {
      continue;
    }
    const ProfileFacts facts = FactsOfProfile(checked.document(), profile.number);
    checked.findings().Check(OutputProfileFacts{facts}, {.object = profile.number});
    checked.findings().Check(
        ProfileComponentsFacts{.color_space = facts.Space(),
                               .components = checked.Get(profile.value, "N", arena).IntegerOr(0)},
        {.object = profile.number});
    all.have_one_profile &= first == 0 || first == profile.number;
    first = profile.number;
  }
  checked.findings().Check(all);
}

}  // namespace TarnixTools::engines::pdfa
