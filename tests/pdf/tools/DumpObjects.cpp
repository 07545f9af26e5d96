// Prints every object of a document as the core reads it, as JSON, for comparison with other
// readers (tests/scripts/compare_with_qpdf).
//
//   dump_objects FILE [PASSWORD]
//
// {"pages": N, "findings": [NAME, ...], "objects": {"obj:N G R": {"value": V}, ..., "trailer": V}}
// where a stream is {"stream": {"dict": V, "lengthWasWrong": true}}. A string is "b:HEX", a name
// "/NAME" with every byte as the code point of the same value, a reference "N G R". "pages" is
// missing when there are none to be found. Exit status: 0, 1 wrong usage, 2 the document cannot be
// opened, 3 it needs another password.
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/Error.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/HexText.h"
#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::pdf {

namespace {

std::string_view NameOf(FindingCode code) {
  switch (code) {
    case FindingCode::kHeaderMissing:
      return "HeaderMissing";
    case FindingCode::kHeaderNotFirst:
      return "HeaderNotFirst";
    case FindingCode::kStartXrefMissing:
      return "StartXrefMissing";
    case FindingCode::kXrefDamaged:
      return "XrefDamaged";
    case FindingCode::kXrefLoop:
      return "XrefLoop";
    case FindingCode::kXrefRebuilt:
      return "XrefRebuilt";
    case FindingCode::kTrailerRebuilt:
      return "TrailerRebuilt";
    case FindingCode::kCatalogInTrailer:
      return "CatalogInTrailer";
    case FindingCode::kObjectMissing:
      return "ObjectMissing";
    case FindingCode::kObjectDamaged:
      return "ObjectDamaged";
    case FindingCode::kObjectStreamDamaged:
      return "ObjectStreamDamaged";
    case FindingCode::kStreamLengthWrong:
      return "StreamLengthWrong";
    case FindingCode::kStreamEndMissing:
      return "StreamEndMissing";
    case FindingCode::kPageTreeDamaged:
      return "PageTreeDamaged";
    case FindingCode::kPageTreeLoop:
      return "PageTreeLoop";
    case FindingCode::kPageCountWrong:
      return "PageCountWrong";
    case FindingCode::kPagesSalvaged:
      return "PagesSalvaged";
    case FindingCode::kPageAdopted:
      return "PageAdopted";
    case FindingCode::kPageBlank:
      return "PageBlank";
    case FindingCode::kPagesMissing:
      return "PagesMissing";
    case FindingCode::kStringUndecryptable:
      return "StringUndecryptable";
  }
  return "Other";
}

std::string JsonName(std::string_view name) {
  std::string out = "\"/";
  for (const char c : name) {
    if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') {
      out += c;
    } else {
      out += "\\u00";
      AppendHexByte(out, c);
    }
  }
  return out + '"';
}

std::string JsonString(std::string_view bytes) {
  std::string out = "\"b:";
  for (const char c : bytes) {
    AppendHexByte(out, c);
  }
  return out + '"';
}

std::string ReferenceText(std::uint32_t number, std::uint16_t generation) {
  return std::to_string(number) + " " + std::to_string(generation) + " R";
}

std::string JsonScalar(const Object& value) {
  switch (value.kind()) {
    case Object::Kind::kBoolean:
      return value.BooleanOr(false) ? "true" : "false";
    case Object::Kind::kInteger:
      return std::to_string(value.IntegerOr(0));
    case Object::Kind::kReal: {
      char text[64];
      std::snprintf(text, sizeof text, "%.17g", value.NumberOr(0));
      return text;
    }
    case Object::Kind::kString:
      return JsonString(value.Text());
    case Object::Kind::kName:
      return JsonName(value.Text());
    case Object::Kind::kReference:
      return '"' + ReferenceText(value.AsReference().number, value.AsReference().generation) + '"';
    default:
      return "null";
  }
}

// Without recursion: objects of damaged documents nest deeply.
void AppendJson(std::string& out, const Object& value) {
  struct Open {
    Object container;
    std::size_t next = 0;
  };

  std::vector<Open> open;
  const auto begin = [&](const Object& v) {
    if (v.IsArray() || v.IsDictionary()) {
      out += v.IsArray() ? '[' : '{';
      open.push_back({v, 0});
    } else {
      out += JsonScalar(v);
    }
  };
  begin(value);
  while (!open.empty()) {
    Open& top = open.back();
    const bool is_array = top.container.IsArray();
    const std::size_t size =
        is_array ? top.container.Items().size() : top.container.Entries().size();
    if (top.next == size) {
      out += is_array ? ']' : '}';
      open.pop_back();
      continue;
    }
    out += top.next > 0 ? "," : "";
    const std::size_t index = top.next++;
    if (is_array) {
      begin(top.container.Items()[index]);
    } else {
      const DictionaryEntry entry = top.container.Entries()[index];
      out += JsonName(entry.Key()) + ':';
      begin(entry.value);
    }
  }
}

void AppendObjectMember(std::string& out, Document& document, std::uint32_t number, Arena& arena) {
  const Object value = document.Load({number, 0}, arena);
  const auto stream =
      value.IsDictionary() ? document.StreamOf(number) : std::optional<StreamData>();
  out += "\"obj:" + ReferenceText(number, document.GenerationOf(number)) + "\":";
  out += stream ? "{\"stream\":{\"dict\":" : "{\"value\":";
  AppendJson(out, value);
  if (stream) {
    out += stream->extent.length_was_wrong ? ",\"lengthWasWrong\":true}" : "}";
  }
  out += "},\n";
}

std::string ObjectsOf(Document& document) {
  std::string out;
  Arena arena;
  for (std::uint32_t number = 1; number < document.object_limit(); ++number) {
    if (document.Exists(number)) {
      arena.Reset();
      AppendObjectMember(out, document, number, arena);
    }
  }
  out += "\"trailer\":{\"value\":";
  AppendJson(out, document.trailer());
  return out + "}";
}

void Dump(Document& document) {
  std::string pages;
  try {
    pages = "\"pages\":" + std::to_string(PageTree(document).pages().size()) + ",\n";
  } catch (const Error& error) {
    std::fprintf(stderr, "dump_objects: %s\n", error.what());
  }
  const bool was_rebuilt = document.is_rebuilt();
  std::string objects = ObjectsOf(document);
  if (document.is_rebuilt() && !was_rebuilt) {
    objects = ObjectsOf(document);  // more of them may have been found on the way
  }
  std::string findings;
  for (const Finding& finding : document.findings().kept()) {
    findings += (findings.empty() ? "\"" : ",\"") + std::string(NameOf(finding.code)) + '"';
  }
  std::printf("{%s\"findings\":[%s],\n\"objects\":{\n%s\n}}\n", pages.c_str(), findings.c_str(),
              objects.c_str());
}

int Run(const char* path, std::string_view password) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  try {
    const auto document = Document::Open(std::make_unique<MemorySource>(bytes), password);
    Dump(*document);
    return 0;
  } catch (const Error& error) {
    std::fprintf(stderr, "dump_objects: %s\n", error.what());
    return error.code() == ErrorCode::kPasswordRequired ? 3 : 2;
  }
}

}  // namespace

}  // namespace TarnixTools::pdf

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fprintf(stderr, "usage: dump_objects FILE [PASSWORD]\n");
    return 1;
  }
  return TarnixTools::pdf::Run(argv[1], argc > 2 ? argv[2] : "");
}
