#include "engines/pdfa/checks/MetadataCheck.h"

#include <optional>
#include <string>
#include <vector>

#include "engines/pdfa/checks/InformationCheck.h"
#include "engines/pdfa/rules/MetadataFacts.h"
#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmpExtensions.h"
#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines::pdfa {

namespace {

XmpRelease ReleaseOf(Level level) {
  return PartOf(level) == 1 ? XmpRelease::k2004 : XmpRelease::k2005;
}

// Whether a property of that name, if it is there, has the prefix that the standard gives it.
bool HasPrefix(const XmpTree& packet, std::string_view name) {
  const XmpNode* node = packet.Find(kPdfAIdNamespace, name);
  return node == nullptr || node->prefix == "pdfaid";
}

std::string_view TextOf(const XmpTree& packet, std::string_view name) {
  const XmpNode* node = packet.Find(kPdfAIdNamespace, name);
  return node != nullptr ? std::string_view(node->value) : std::string_view();
}

class PacketCheck {
 public:
  PacketCheck(CheckedDocument& checked, const XmpTree& packet, std::uint32_t number)
      : findings_(&checked.findings()), packet_(&packet), number_(number) {}

  void CheckForm() {
    PacketFacts facts;
    facts.has_bytes = packet_->header && packet_->header->has_bytes;
    facts.has_encoding = packet_->header && packet_->header->has_encoding;
    facts.is_sound = packet_->state == XmpState::kFine;
    facts.is_utf8 = packet_->encoding == XmpEncoding::kUtf8;
    findings_->Check(facts, {.object = number_});
  }

  //   own - schemas that the packet declares, where it is not the document's
  void CheckProperties(const XmpJudge& judge, const std::vector<XmpDeclaredSchema>& own) {
    for (const XmpNode& property : packet_->properties) {
      const XmpPropertyFacts facts = judge.FactsOf(property, own);
      const std::string name = std::string(property.prefix) + ":" + std::string(property.name);
      findings_->Check(PropertyFacts{.is_defined = facts.is_predefined || facts.is_declared,
                                     .has_right_type = facts.has_right_type},
                       {.object = number_, .subject = name});
    }
  }

  void CheckExtensions() {
    const XmpNode* schemas = packet_->Find(kPdfAExtensionNamespace, "schemas");
    if (schemas == nullptr) {
      return;
    }
    findings_->Check(ExtensionsFacts{.is_bag = schemas->kind == XmpKind::kBag,
                                     .has_right_prefix = schemas->prefix == "pdfaExtension"},
                     {.object = number_});
    for (const XmpExtensionObject& object : DescribeXmpExtensions(*packet_)) {
      const Place place = {.object = number_, .subject = object.name};
      findings_->Check(ExtensionFacts{object.has_other_fields}, place);
      for (const XmpExtensionEntry& entry : object.entries) {
        findings_->Check(
            ExtensionEntryFacts{.part = object.part,
                                .name = entry.name,
                                .is_there = entry.is_there,
                                .is_right = entry.has_right_prefix && entry.has_right_value},
            place);
      }
    }
  }

  void CheckClaim() {
    ClaimFacts facts;
    for (const XmpNode& property : packet_->properties) {
      facts.has_identification |= property.name_space == kPdfAIdNamespace;
    }
    if (!facts.has_identification) {
      facts = AllRight();
      facts.has_identification = false;
    } else {
      facts.part = TextOf(*packet_, "part");
      facts.conformance = TextOf(*packet_, "conformance");
      facts.part_has_prefix = HasPrefix(*packet_, "part");
      facts.conformance_has_prefix = HasPrefix(*packet_, "conformance");
      facts.amendment_has_prefix = HasPrefix(*packet_, "amd");
      facts.corrigendum_has_prefix = HasPrefix(*packet_, "corr");
    }
    findings_->Check(facts, {.object = number_});
  }

 private:
  // Where nothing is claimed, that is the one finding.
  ClaimFacts AllRight() const {
    constexpr std::string_view kParts = "123";
    const auto part = static_cast<std::size_t>(PartOf(findings_->level()));
    return {.part = kParts.substr(part - 1, 1), .conformance = "A"};
  }

  FindingList* findings_;
  const XmpTree* packet_;
  std::uint32_t number_;
};

// What the packets of a document have in common.
class PacketsCheck {
 public:
  PacketsCheck(CheckedDocument& checked, const XmpTree& of_document)
      : checked_(&checked), judge_(ReleaseOf(checked.level()), ReadXmpExtensions(of_document)) {}

  void CheckPacket(const XmpTree& packet, std::uint32_t number,
                   const std::vector<XmpDeclaredSchema>& own) {
    PacketCheck check(*checked_, packet, number);
    check.CheckForm();
    check.CheckProperties(judge_, own);
    check.CheckExtensions();
  }

  // Those of pages, images and the like, which may use what the document's packet declares.
  void CheckOthers(std::uint32_t of_document) {
    for (const std::uint32_t number : checked_->metadata()) {
      const auto stream = number != of_document ? checked_->document().TryDecodeStream(
                                                      number, engines::limits::kMaxMetadataBytes)
                                                : std::nullopt;
      if (stream) {
        const XmpTree packet = ReadXmp(stream->data);
        CheckPacket(packet, number, ReadXmpExtensions(packet));
      }
    }
  }

 private:
  CheckedDocument* checked_;
  XmpJudge judge_;
};

}  // namespace

void CheckMetadata(CheckedDocument& checked) {
  pdf::Arena arena;
  const pdf::Object catalog = checked.document().Catalog(arena);
  const pdf::Followed metadata = checked.document().Follow(catalog.Get("Metadata"), arena);
  const std::optional<pdf::Decoded> stream =
      checked.document().TryDecodeStream(metadata.number, engines::limits::kMaxMetadataBytes);
  checked.findings().Check(DocumentMetadataFacts{.has_stream = stream.has_value(),
                                                 .has_filter = metadata.value.Has("Filter")},
                           {.object = metadata.number});
  const XmpTree packet = stream ? ReadXmp(stream->data) : XmpTree();
  PacketsCheck packets(checked, packet);
  if (stream) {
    packets.CheckPacket(packet, metadata.number, {});
    PacketCheck(checked, packet, metadata.number).CheckClaim();
  }
  packets.CheckOthers(metadata.number);
  CheckInformation(checked, stream ? &packet : nullptr);
}

}  // namespace TarnixTools::engines::pdfa
