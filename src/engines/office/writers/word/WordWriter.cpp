#include "engines/office/writers/word/WordWriter.h"

#include <algorithm>
#include <map>
#include <string>

#include "engines/office/writers/text/NoteText.h"
#include "engines/office/writers/word/BodyWriter.h"
#include "engines/office/writers/word/StyleSheet.h"
#include "engines/office/writers/word/WordNames.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kTypes =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.";
constexpr std::string_view kSettingsUri = "http://schemas.microsoft.com/office/word";
constexpr int kSeparator = -1;  // identifiers of the lines above notes
constexpr int kContinuationSeparator = 0;

std::string TypeOf(std::string_view part) {
  return std::string(kTypes) + std::string(part) + "+xml";
}

void WriteFontTable(XmlWriter& xml, const OfficeDocument& document) {
  std::map<std::string, const Typeface*> faces;
  for (const OfficePage& page : document.pages) {
    for (const TextLook& look : page.layout.looks) {
      if (look.face && !look.face->family.empty()) {
        faces.try_emplace(look.face->family, look.face.get());
      }
    }
  }
  xml.Open("w:fonts", {{"xmlns:w", kWordNamespace}});
  for (const auto& [family, face] : faces) {
    const bool is_fixed = face->is_fixed_pitch;
    xml.Open("w:font", {{"w:name", family}});
    const std::string_view other = is_fixed         ? "Courier New"
                                   : face->is_serif ? "Times New Roman"
                                                    : "Arial";
    if (other != family) {
      xml.Leaf("w:altName", {{"w:val", other}});
    }
    xml.Leaf("w:family", {{"w:val", is_fixed ? "modern" : face->is_serif ? "roman" : "swiss"}});
    xml.Leaf("w:pitch", {{"w:val", is_fixed ? "fixed" : "variable"}});
    xml.Close();
  }
  xml.Close();
}

void WriteSettings(XmlWriter& xml, bool has_even_pages, bool has_notes) {
  xml.Open("w:settings", {{"xmlns:w", kWordNamespace}});
  xml.Leaf("w:defaultTabStop", {{"w:val", 720}});
  if (has_even_pages) {
    xml.Leaf("w:evenAndOddHeaders");
  }
  if (has_notes) {
    xml.Open("w:footnotePr");
    xml.Leaf("w:footnote", {{"w:id", kSeparator}});
    xml.Leaf("w:footnote", {{"w:id", kContinuationSeparator}});
    xml.Close();
  }
  xml.Open("w:compat");
  xml.Leaf("w:doNotExpandShiftReturn");
  xml.Leaf("w:compatSetting",
           {{"w:name", "compatibilityMode"}, {"w:uri", kSettingsUri}, {"w:val", 15}});
  xml.Close();
  xml.Close();
}

void WriteSeparator(XmlWriter& xml, int id, std::string_view type, std::string_view element) {
  xml.Open("w:footnote", {{"w:type", type}, {"w:id", id}});
  xml.Open("w:p");
  xml.Open("w:r");
  xml.Leaf(element);
  for (int i = 0; i < 3; ++i) {
    xml.Close();
  }
}

void WriteNote(Story& story, const UsedNote& used, std::size_t id) {
  story.xml.Open("w:footnote", {{"w:id", id}});
  const std::vector<Block> blocks =
      WithMark(*used.note, used.page->layout, story.context.measure,
               {PieceKind::kNoteMark, used.is_counted ? kCountedMark : kShownMark});
  FlowRoom room{.depth = 1};
  if (!blocks.empty()) {
    room.left = used.page->layout.width;
    room.top = TopOf(blocks.front(), used.page->layout);
  }
  for (const Block& block : blocks) {
    room.left = std::min(room.left, BoxOf(block).left);
    room.right = std::max(room.right, BoxOf(block).right);
  }
  FlowWriter flow(story, *used.page, room);
  flow.Write(blocks);
  if (!flow.ends_with_paragraph()) {
    flow.SkipTo(flow.cursor());
  }
  story.xml.Close();
}

// What the text of the document is made of, written before what tells of it.
class DocumentWriter {
 public:
  explicit DocumentWriter(WordContext& context) : context_(context) {}

  void Write() {
    const DocumentPlan plan = PlanSections(context_.document);
    PackagePart body;
    Story story{context_, body.xml(), relationships_};
    HeaderWriter headers(context_, relationships_, plan.has_even_pages);
    OpenStory(body.xml(), "w:document");
    body.xml().Open("w:body");
    BodyWriter(story, plan, headers).Write();
    WriteNotes();
    WriteTables(plan.has_even_pages);
    context_.package.AddPart("word/document.xml", TypeOf("document.main"), body);
    context_.package.AddRelationships("word/document.xml", relationships_);
  }

 private:
  void WriteNotes() {
    if (context_.notes.empty()) {
      return;
    }
    PackagePart part;
    Relationships relationships;
    Story story{context_, part.xml(), relationships, false, false};
    OpenStory(part.xml(), "w:footnotes");
    WriteSeparator(part.xml(), kSeparator, "separator", "w:separator");
    WriteSeparator(part.xml(), kContinuationSeparator, "continuationSeparator",
                   "w:continuationSeparator");
    for (std::size_t i = 0; i < context_.notes.size(); ++i) {
      WriteNote(story, context_.notes[i], i + 1);
    }
    context_.package.AddPart("word/footnotes.xml", TypeOf("footnotes"), part);
    context_.package.AddRelationships("word/footnotes.xml", relationships);
    relationships_.Add("footnotes", "footnotes.xml");
  }

  void WriteTables(bool has_even_pages) {
    const OfficeDocument& document = context_.document;
    Add("styles",
        [&](XmlWriter& xml) { StyleSheet(document).Write(xml, document.facts.language); });
    Add("fontTable", [&](XmlWriter& xml) { WriteFontTable(xml, document); });
    Add("settings",
        [&](XmlWriter& xml) { WriteSettings(xml, has_even_pages, !context_.notes.empty()); });
    if (!context_.numbering.is_empty()) {
      Add("numbering", [&](XmlWriter& xml) { context_.numbering.Write(xml); });
    }
  }

  void Add(const std::string& kind, const std::function<void(XmlWriter&)>& write) {
    context_.package.AddPart("word/" + kind + ".xml", TypeOf(kind), write);
    relationships_.Add(kind, kind + ".xml");
  }

  WordContext& context_;
  Relationships relationships_;
};

}  // namespace

void WriteWord(const OfficeDocument& document, PictureSource& pictures,
               const std::atomic<bool>& is_cancelled, pdf::ByteSink& sink) {
  PackageWriter package(sink, "word/document.xml");
  package.AddProperties(document.facts);
  WordContext context{document, pictures, is_cancelled, package, {}, {}, {}, 0, 0};
  DocumentWriter(context).Write();
  package.Finish();
}

}  // namespace TarnixTools::engines::office
