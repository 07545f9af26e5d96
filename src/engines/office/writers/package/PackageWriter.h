// Packages of the Open Packaging Conventions (ECMA-376, part 2): parts with content types, and the
// relationships between them.
//
//   Relationships relationships;
//   std::string id = relationships.Add("styles", "styles.xml");
//   PackageWriter package(sink, "word/document.xml");
//   package.AddPart("word/styles.xml", kStylesType, [&](XmlWriter& xml) { ... });
//   package.AddRelationships("word/document.xml", relationships);
//   package.Finish();
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_PACKAGEWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_PACKAGEWRITER_H_

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/office/layout/OfficeDocument.h"
#include "engines/office/pages/PictureSource.h"
#include "engines/office/writers/package/XmlWriter.h"
#include "engines/office/writers/package/ZipWriter.h"

namespace TarnixTools::engines::office {

// Kinds of relationships that all documents have, without the start that they share.
inline constexpr std::string_view kDocumentRelation = "officeDocument";
inline constexpr std::string_view kPictureRelation = "image";
inline constexpr std::string_view kHyperlinkRelation = "hyperlink";

// What a part refers to. Equal references have one identifier.
class Relationships {
 public:
  // Returns the identifier. target: a part's name, relative to the folder of the one that refers.
  std::string Add(std::string_view kind, const std::string& target);
  // A target outside of the package: a URI.
  std::string AddExternal(std::string_view kind, const std::string& uri);

  bool is_empty() const { return entries_.empty(); }

  void Write(XmlWriter& xml) const;

 private:
  struct Entry {
    std::string kind;
    std::string target;
    bool is_external = false;
  };

  std::string AddEntry(Entry entry);

  std::vector<Entry> entries_;
  std::map<std::pair<std::string, std::string>, std::size_t> known_;
};

// A part while it is written; parts may be open side by side.
class PackagePart {
 public:
  PackagePart() : xml_(data_) {}

  XmlWriter& xml() { return xml_; }

 private:
  friend class PackageWriter;

  DeflatedData data_;
  XmlWriter xml_;
};

class PackageWriter {
 public:
  // main_part: as "word/document.xml". The sink outlives this.
  PackageWriter(pdf::ByteSink& sink, const std::string& main_part);

  void AddPart(const std::string& name, std::string_view content_type,
               const std::function<void(XmlWriter&)>& write);
  // A part that is complete.
  void AddPart(const std::string& name, std::string_view content_type, PackagePart& part);
  // Those of a part. Nothing where there are none.
  void AddRelationships(const std::string& part, const Relationships& relationships);
  // Returns the name of the picture's part in the folder, as "media/image1.png". Equal pictures are
  // one part.
  std::string AddPicture(const std::string& folder, const OfficePicture& picture);
  // What the document says of itself, without a date.
  void AddProperties(const DocumentFacts& facts);
  // Writes what the package has to say of its parts.
  void Finish();

 private:
  ZipWriter zip_;
  std::vector<std::pair<std::string, std::string>> types_;               // by part
  std::map<std::pair<std::size_t, std::size_t>, std::string> pictures_;  // by size and hash
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_PACKAGEWRITER_H_
