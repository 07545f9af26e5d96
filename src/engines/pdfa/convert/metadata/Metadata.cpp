#include "engines/pdfa/convert/metadata/Metadata.h"

#include <string>
#include <string_view>
#include <utility>

#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/PdfAPacket.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::ObjectChange;

namespace {

std::string ReferenceTo(pdf::DocumentRewriter& rewriter, ObjectChange object) {
  std::string text;
  pdf::AppendReference(text, rewriter.Add(std::move(object)));
  return text;
}

// What the packet says again; entries that it cannot agree with are left out.
std::string InfoText(const XmpInfoValues& info, ConversionReport& report) {
  std::string text = "<<";
  for (const XmpMirror& mirror : kXmpMirrors) {
    const auto& value = info[static_cast<std::size_t>(mirror.field)];
    if (value && CanKeepInfoValue(mirror, *value)) {
      pdf::AppendName(text, mirror.key);
      pdf::AppendString(text, pdf::Utf8ToTextString(*value), false);
    } else if (value) {
      report.Dropped("document information that is not as it should be");
    }
  }
  return text + ">>";
}

}  // namespace

void MendMetadata(Conversion& conversion) {
  const XmpInfoValues info = ReadXmpInfoValues(conversion.document);
  PutPacket(conversion.rewriter, ReadDocumentXmp(conversion.document), info, conversion.level,
            conversion.report);
  const std::string text = InfoText(info, conversion.report);
  conversion.rewriter.SetTrailerEntry("Info",
                                      ReferenceTo(conversion.rewriter, ObjectChange::Value(text)));
}

// The packet is not compressed, so that it is found without reading the file as PDF.
void PutPacket(pdf::DocumentRewriter& rewriter, const XmpTree& given, const XmpInfoValues& info,
               Level level, ConversionReport& report) {
  PdfAPacket packet =
      MakePdfAPacket(given, {.part = PartOf(level), .conformance = ConformanceOf(level)}, info);
  report.Dropped("metadata that PDF/A does not allow as it is", packet.dropped.size());
  rewriter.SetEntry(rewriter.catalog(), "Metadata",
                    ReferenceTo(rewriter, ObjectChange::StreamFrom(
                                              "<</Type/Metadata/Subtype/XML>>",
                                              [bytes = std::move(packet.bytes)](
                                                  pdf::ByteSink& sink) { sink.Write(bytes); })));
}

}  // namespace TarnixTools::engines::pdfa
