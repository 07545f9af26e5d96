#include "support/ArchiveFile.h"

#include <cctype>

#include "support/RawPdf.h"

namespace TarnixTools::testing {

namespace {

constexpr const char* kTagged = "/MarkInfo<</Marked true>>/StructTreeRoot<</Type/StructTreeRoot>>";

std::string StreamBody(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

}  // namespace

ArchiveFile& ArchiveFile::Catalog(const std::string& entries) {
  catalog_ += entries;
  return *this;
}

ArchiveFile& ArchiveFile::Page(const std::string& entries) {
  page_ += entries;
  return *this;
}

ArchiveFile& ArchiveFile::Trailer(const std::string& entries) {
  trailer_ += entries;
  return *this;
}

ArchiveFile& ArchiveFile::Annotation(const std::string& entries) {
  return Page("/Annots[20 0 R]").Object(20, "<</Type/Annot" + entries + ">>");
}

ArchiveFile& ArchiveFile::Object(int number, const std::string& body) {
  objects_[number] = body;
  return *this;
}

ArchiveFile& ArchiveFile::Stream(int number, const std::string& entries, const std::string& data) {
  return Object(number, StreamBody(entries, data));
}

ArchiveFile& ArchiveFile::Packet(const std::string& descriptions) {
  packet_ += descriptions;
  return *this;
}

ArchiveFile& ArchiveFile::Content(const std::string& operators) {
  content_ = operators;
  return *this;
}

ArchiveFile& ArchiveFile::Replace(const std::string& text, const std::string& by) {
  replacements_.emplace_back(text, by);
  return *this;
}

std::string ArchiveFile::Profile(char version, const std::string& device_class,
                                 const std::string& space) {
  std::string profile(128, '\0');
  profile[3] = static_cast<char>(profile.size());
  profile[8] = version;
  profile.replace(12, 4, device_class);
  profile.replace(16, 4, space);
  return profile;
}

std::string ArchiveFile::PacketBytes() const {
  const auto conformance = static_cast<char>(std::toupper(level_[1]));
  return "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>"
         "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
         "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
         "<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'>"
         "<pdfaid:part>" +
         level_.substr(0, 1) + "</pdfaid:part><pdfaid:conformance>" + conformance +
         "</pdfaid:conformance></rdf:Description>" + packet_ +
         "</rdf:RDF></x:xmpmeta><?xpacket end='w'?>";
}

std::string ArchiveFile::Bytes() const {
  const bool is_first_part = level_[0] == '1';
  RawPdf pdf(std::string(is_first_part ? "%PDF-1.4\n" : "%PDF-1.7\n") + "%\xE2\xE3\xCF\xD3\n");
  std::map<int, std::string> objects = {
      {1,
       std::string("<</Type/Catalog/Pages 2 0 R/Metadata 4 0 R/OutputIntents[<</Type/OutputIntent"
                   "/S/GTS_PDFA1/OutputConditionIdentifier(sRGB)/DestOutputProfile 5 0 R>>]") +
           (level_[1] == 'a' ? kTagged : "") + catalog_ + ">>"},
      {2, "<</Type/Pages/Kids[3 0 R]/Count 1>>"},
      {3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Resources<<>>/Contents 7 0 R" + page_ +
              ">>"},
      {4, StreamBody("/Type/Metadata/Subtype/XML", PacketBytes())},
      {5, StreamBody("/N 3", Profile(2, "mntr", "RGB "))},
      {6, StreamBody("/Type/XObject/Subtype/Form/BBox[0 0 10 10]/Resources<<>>", "q Q")},
      {7, StreamBody("", content_.empty() ? "q Q" : content_)}};
  for (const auto& [number, body] : objects_) {
    objects[number] = body;
  }
  for (const auto& [number, body] : objects) {
    pdf.Object(number, body);
  }
  std::string bytes = pdf.Table("/Root 1 0 R/ID[<0123456789ABCDEF><0123456789ABCDEF>]" + trailer_);
  for (const auto& [text, by] : replacements_) {
    bytes.replace(bytes.find(text), text.size(), by);
  }
  return bytes;
}

}  // namespace TarnixTools::testing
