#include "engines/office/writers/package/PackageWriter.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kOfficeRelations =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr std::string_view kPackageRelations =
    "http://schemas.openxmlformats.org/package/2006/relationships";
constexpr std::string_view kPackageTypes =
    "http://schemas.openxmlformats.org/package/2006/content-types";
constexpr std::string_view kCoreProperties =
    "http://schemas.openxmlformats.org/package/2006/metadata/core-properties";
constexpr std::string_view kCoreRelation =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";

// "word/document.xml" has its relationships in "word/_rels/document.xml.rels".
std::string RelationshipsOf(const std::string& part) {
  const std::size_t slash = part.rfind('/') + 1;  // 0 for none
  return part.substr(0, slash) + "_rels/" + part.substr(slash) + ".rels";
}

void ElementUnlessEmpty(XmlWriter& xml, std::string_view name, const std::string& text) {
  if (!text.empty()) {
    xml.Element(name, text);
  }
}

}  // namespace

std::string Relationships::Add(std::string_view kind, const std::string& target) {
  return AddEntry({std::string(kOfficeRelations) + std::string(kind), target});
}

std::string Relationships::AddExternal(std::string_view kind, const std::string& uri) {
  return AddEntry({std::string(kOfficeRelations) + std::string(kind), uri, true});
}

std::string Relationships::AddEntry(Entry entry) {
  const auto [place, is_new] =
      known_.try_emplace(std::pair(entry.kind, entry.target), entries_.size());
  if (is_new) {
    entries_.push_back(std::move(entry));
  }
  return "rId" + std::to_string(place->second + 1);
}

void Relationships::Write(XmlWriter& xml) const {
  xml.Open("Relationships", {{"xmlns", kPackageRelations}});
  std::size_t number = 0;
  for (const Entry& entry : entries_) {
    xml.Open(
        "Relationship",
        {{"Id", "rId" + std::to_string(++number)}, {"Type", entry.kind}, {"Target", entry.target}});
    if (entry.is_external) {
      xml.Attribute({"TargetMode", "External"});
    }
    xml.Close();
  }
}

PackageWriter::PackageWriter(pdf::ByteSink& sink, const std::string& main_part) : zip_(sink) {
  PackagePart part;
  XmlWriter& xml = part.xml();
  xml.Open("Relationships", {{"xmlns", kPackageRelations}});
  xml.Leaf("Relationship",
           {{"Id", "rId1"},
            {"Type", std::string(kOfficeRelations) + std::string(kDocumentRelation)},
            {"Target", main_part}});
  xml.Leaf("Relationship",
           {{"Id", "rId2"}, {"Type", kCoreRelation}, {"Target", "docProps/core.xml"}});
  xml.Finish();
  // Programs that tell a file's kind by its first entry know this one.
  zip_.Add("_rels/.rels", part.data_.Finish());
}

void PackageWriter::AddPart(const std::string& name, std::string_view content_type,
                            const std::function<void(XmlWriter&)>& write) {
  PackagePart part;
  write(part.xml());
  AddPart(name, content_type, part);
}

void PackageWriter::AddPart(const std::string& name, std::string_view content_type,
                            PackagePart& part) {
  part.xml().Finish();
  zip_.Add(name, part.data_.Finish());
  types_.emplace_back("/" + name, content_type);
}

void PackageWriter::AddRelationships(const std::string& part, const Relationships& relationships) {
  if (relationships.is_empty()) {
    return;
  }
  PackagePart written;
  relationships.Write(written.xml());
  written.xml().Finish();
  zip_.Add(RelationshipsOf(part), written.data_.Finish());
}

std::string PackageWriter::AddPicture(const std::string& folder, const OfficePicture& picture) {
  const std::pair key(picture.bytes.size(), std::hash<std::string>()(picture.bytes));
  const auto [place, is_new] = pictures_.try_emplace(key);
  if (is_new) {
    place->second =
        "media/image" + std::to_string(pictures_.size()) + (picture.is_jpeg ? ".jpeg" : ".png");
    zip_.Add(folder + place->second, picture.bytes);
  }
  return place->second;
}

void PackageWriter::AddProperties(const DocumentFacts& facts) {
  AddPart("docProps/core.xml", "application/vnd.openxmlformats-package.core-properties+xml",
          [&facts](XmlWriter& xml) {
            xml.Open("cp:coreProperties", {{"xmlns:cp", kCoreProperties},
                                           {"xmlns:dc", "http://purl.org/dc/elements/1.1/"}});
            ElementUnlessEmpty(xml, "dc:title", facts.title);
            ElementUnlessEmpty(xml, "dc:subject", facts.subject);
            ElementUnlessEmpty(xml, "dc:creator", facts.author);
            ElementUnlessEmpty(xml, "cp:keywords", facts.keywords);
            ElementUnlessEmpty(xml, "dc:language", facts.language);
          });
}

void PackageWriter::Finish() {
  PackagePart part;
  XmlWriter& xml = part.xml();
  xml.Open("Types", {{"xmlns", kPackageTypes}});
  xml.Leaf("Default",
           {{"Extension", "rels"},
            {"ContentType", "application/vnd.openxmlformats-package.relationships+xml"}});
  xml.Leaf("Default", {{"Extension", "xml"}, {"ContentType", "application/xml"}});
  xml.Leaf("Default", {{"Extension", "png"}, {"ContentType", "image/png"}});
  xml.Leaf("Default", {{"Extension", "jpeg"}, {"ContentType", "image/jpeg"}});
  for (const auto& [name, type] : types_) {
    xml.Leaf("Override", {{"PartName", name}, {"ContentType", type}});
  }
  xml.Finish();
  zip_.Add("[Content_Types].xml", part.data_.Finish());
  zip_.Finish();
}

}  // namespace TarnixTools::engines::office
