#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/structure/StructureNames.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::engines::toolbox {
namespace {

// What becomes of a type in a document that has elements of others, when its own role map gives it
// another meaning.
std::string Joined(const std::string& type) {
  const std::string text = "<</" + type + "/Own>>";
  pdf::Arena arena;
  pdf::Parser parser(arena);
  pdf::Lexer lexer(text, true);
  pdf::Object roles;
  parser.Parse(lexer, nullptr, roles);
  TargetRoles target;
  TargetRoles::JoinedNames joined;
  return target.Join(NamedValues(roles), type, false, joined);
}

TEST(TargetRoles, LeaveStandardTypesToTheElementsThatUseThem) {
  // ISO 32000-1, 14.8.4, and ISO 32000-2, 14.8.4.
  for (const char* type : {"Document", "DocumentFragment",
                           "Part",     "Art",
                           "Sect",     "Div",
                           "Aside",    "NonStruct",
                           "Private",  "BlockQuote",
                           "Caption",  "TOC",
                           "TOCI",     "Index",
                           "Title",    "FENote",
                           "Sub",      "P",
                           "H",        "H1",
                           "H2",       "H3",
                           "H4",       "H5",
                           "H6",       "L",
                           "LI",       "Lbl",
                           "LBody",    "Table",
                           "TR",       "TH",
                           "TD",       "THead",
                           "TBody",    "TFoot",
                           "Span",     "Quote",
                           "Note",     "Reference",
                           "BibEntry", "Code",
                           "Link",     "Annot",
                           "Em",       "Strong",
                           "Ruby",     "RB",
                           "RT",       "RP",
                           "Warichu",  "WT",
                           "WP",       "Figure",
                           "Formula",  "Form",
                           "Artifact"}) {
    EXPECT_EQ(Joined(type), std::string(type) + "_2");
  }
  for (const char* type : {"Paragraph", "H7", "p", "Sec", "Zzz", "Aaa", "document"}) {
    EXPECT_EQ(Joined(type), type);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
