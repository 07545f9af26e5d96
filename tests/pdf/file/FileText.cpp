#include "pdf/file/FileText.h"

#include <array>
#include <map>
#include <memory>
#include <sstream>
#include <string_view>
#include <vector>

#include "pdf/Error.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/SyntaxObserver.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf::testing {
namespace {

// On one line, and readable whatever its bytes are.
std::string Shown(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= ' ' && byte < 127 && c != '\\') {
      shown += c;
    } else {
      shown += '\\';
      shown += kDigits[byte / 16];
      shown += kDigits[byte % 16];
    }
  }
  return shown;
}

std::string TextOf(const Object& value) {
  std::string text;
  AppendObject(text, value);
  return Shown(text);
}

std::string NumberText(double value) {
  std::ostringstream text;
  text << value;
  return text.str();
}

std::string BoxText(const Box& box) {
  return "[" + NumberText(box.left) + " " + NumberText(box.bottom) + " " + NumberText(box.right) +
         " " + NumberText(box.top) + "]";
}

std::string PageText(Document& document, const PageTree& tree, std::size_t index) {
  const PageTree::Page& page = tree.pages()[index];
  const PageGeometry geometry = ReadPageGeometry(document, tree, page);
  Arena arena;
  return "page " + std::to_string(index) + ": object " + std::to_string(page.number) + ", media " +
         BoxText(geometry.media_box) + ", crop " + BoxText(geometry.crop_box) + ", turned " +
         std::to_string(geometry.rotation) + ", unit " + NumberText(geometry.user_unit) +
         ", resources " + TextOf(tree.Attribute(page, InheritableKey::kResources, arena)) +
         (page.has_annotations ? "" : ", plain") + "\n";
}

std::string ObjectText(Document& document, std::uint32_t number) {
  Arena arena;
  const std::string text = TextOf(document.Load({number, document.GenerationOf(number)}, arena));
  std::string line = "object " + std::to_string(number) + " " +
                     std::to_string(document.GenerationOf(number)) + ": " + text;
  if (const auto stream = document.StreamOf(number)) {
    line += " stream of " + std::to_string(stream->extent.length) + ", plain " +
            std::to_string(document.PlainLength(*stream));
    const auto decoded = document.TryDecodeStream(number);
    line += decoded->complete ? ": " : " broken: ";
    line += Shown(decoded->data);
  }
  line += document.IsCatalogObject(number) ? ", the catalog" : "";
  return line + (document.IsLost(number) ? ", lost\n" : "\n");
}

std::string FindingText(const Finding& finding) {
  return std::string("finding: ") + pdf::TextOf(finding.code) + ", object " +
         std::to_string(finding.object) + ", at " + std::to_string(finding.offset) +
         (IsLoss(finding.code) ? ", a loss\n" : "\n");
}

std::string SecurityText(const Document& document) {
  const Security* security = document.security();
  if (security == nullptr) {
    return document.is_encrypted() ? "encrypted, with no key\n" : "";
  }
  const EncryptionFacts& facts = security->facts();
  std::string text = "encrypted: " + facts.filter;
  for (const int number :
       {facts.version, facts.revision, facts.key_bits, int{facts.permissions},
        static_cast<int>(facts.string_method), static_cast<int>(facts.stream_method),
        static_cast<int>(facts.embedded_file_method)}) {
    text += " " + std::to_string(number);
  }
  text += facts.encrypt_metadata ? "" : ", metadata plain";
  text += security->opened_as_owner() ? ", owner" : ", user";
  return text + (security->PermissionsAreGenuine() ? "\n" : ", permissions forged\n");
}

std::string OpenedText(Document& document) {
  std::string text = SecurityText(document);
  const PageTree tree(document);
  for (std::size_t i = 0; i < tree.pages().size(); ++i) {
    text += PageText(document, tree, i);
  }
  for (std::uint32_t number = 1; number < document.object_limit(); ++number) {
    if (document.Exists(number) || document.IsLost(number)) {
      text += ObjectText(document, number);
    }
  }
  text += "trailer: " + TextOf(document.trailer()) + "\n";
  Arena arena;
  text += "catalog: " + TextOf(document.Catalog(arena)) + "\n";
  for (const Finding& finding : document.findings().kept()) {
    text += FindingText(finding);
  }
  return text + (document.is_rebuilt() ? "rebuilt\n" : "");
}

class Listener : public SyntaxObserver {
 public:
  std::string text;

  void OnHeader(const HeaderSyntax& header) override {
    Line("header", header.offset, {header.line, header.line_end, header.next_line});
  }

  void OnStartXref(const StartXrefSyntax& start) override {
    Line("startxref " + std::to_string(start.value), start.offset,
         {start.after_keyword, start.after_value});
  }

  void OnFileEnd(const FileEndSyntax& end) override {
    Line("end of " + std::to_string(end.size) + (end.has_marker ? "" : " without marker"),
         end.offset, {end.after});
  }

  void OnXrefTable(const XrefTableSyntax& table) override {
    Line("xref", table.offset, {table.after_keyword});
  }

  void OnXrefSubsection(const XrefSubsectionSyntax& section) override {
    Line("section " + std::to_string(section.first) + " " + std::to_string(section.count),
         section.offset, {section.between, section.after});
  }

  void OnXrefEntry(const XrefEntrySyntax& entry) override {
    Line((entry.is_fixed ? "entry " : "odd entry ") + std::to_string(entry.number), entry.offset,
         {entry.text});
  }

  void OnTrailer(const TrailerSyntax& trailer) override {
    Line(std::string("trailer") + (trailer.is_stream ? " stream " : " ") +
             TextOf(trailer.dictionary),
         trailer.offset, {});
  }

  void OnLinearization(const LinearizationSyntax& found) override {
    Line("linearization " + TextOf(Object::Ref(found.reference)) + " " + TextOf(found.dictionary),
         found.offset, {});
  }

  void OnObject(const ObjectSyntax& object) override {
    Line("object " + TextOf(Object::Ref(object.reference)) + " in " + std::to_string(object.holder),
         object.offset,
         {object.before, object.after_number, object.after_generation, object.after_keyword});
  }

  void OnToken(const TokenSyntax& token) override {
    text += std::string(token.is_key ? "key " : "token ") + std::to_string(token.offset) + " " +
            std::to_string(static_cast<int>(token.token.kind)) + " " + Shown(token.token.text) +
            "\n";
  }

  void OnRepeatedKey(const RepeatedKeySyntax& key) override {
    Line("again " + std::string(key.name), key.offset, {});
  }

  void OnStream(const StreamSyntax& stream) override {
    Line("stream " + TextOf(Object::Ref(stream.reference)) + " of " +
             std::to_string(stream.length) + " at " + std::to_string(stream.data) + " to " +
             std::to_string(stream.end) + (stream.has_end ? "" : " unended") + ", claimed " +
             (stream.claimed ? std::to_string(*stream.claimed) : "none"),
         stream.offset, {stream.after_keyword, stream.before_end});
  }

  void OnObjectEnd(const ObjectEndSyntax& end) override {
    Line("end of " + TextOf(Object::Ref(end.reference)) +
             (end.has_keyword ? "" : ", without keyword") + (end.is_regular ? "" : ", irregular") +
             ": " + TextOf(end.value),
         end.offset, {end.before, end.after});
  }

 private:
  // "WHAT at OFFSET |SPACING|SPACING|"
  void Line(const std::string& what, std::uint64_t offset,
            std::initializer_list<std::string_view> spacings) {
    text += what + " at " + std::to_string(offset);
    for (const std::string_view spacing : spacings) {
      text += " |" + Shown(spacing) + "|";
    }
    text += '\n';
  }
};

std::map<std::string, int> LinesOf(const std::string& text) {
  std::map<std::string, int> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    ++lines[line];
  }
  return lines;
}

// Lines of a text as far as another has them less often, in order.
std::string Surplus(const std::string& text, const std::string& other, const std::string& mark) {
  std::map<std::string, int> left = LinesOf(other);
  std::string surplus;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (left[line]-- <= 0) {
      surplus += mark + line + "\n";
    }
  }
  return surplus;
}

}  // namespace

std::string ContentText(const std::string& bytes, const std::string& password) {
  try {
    const auto document = Document::Open(std::make_unique<MemorySource>(bytes), password);
    return OpenedText(*document);
  } catch (const Error& error) {
    return "error " + std::to_string(static_cast<int>(error.code())) + ": " + error.what() + "\n";
  }
}

std::string SyntaxText(const std::string& bytes) {
  Listener listener;
  try {
    Document::Open(std::make_unique<MemorySource>(bytes), "")->Observe(listener);
  } catch (const Error& error) {
    listener.text += std::string("error: ") + error.what() + "\n";
  }
  return listener.text;
}

std::string Difference(const std::string& from, const std::string& to) {
  return Surplus(from, to, "- ") + Surplus(to, from, "+ ");
}

}  // namespace TarnixTools::pdf::testing
