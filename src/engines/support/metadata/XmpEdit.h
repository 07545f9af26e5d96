// Changes to the properties of an XMP packet (ISO 16684-1) in its text: what is not changed keeps
// its bytes.
//
//   const XmpChange changes[] = {{"http://www.aiim.org/pdfa/ns/id/", "", "", ""}};
//   const std::optional<EditedXmp> edited = EditXmp(packet, changes);
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPEDIT_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPEDIT_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines {

// Takes a property out, and puts another value in its place if it was there.
struct XmpChange {
  std::string_view name_space;
  std::string_view name;    // empty: all properties of the namespace
  std::string_view prefix;  // for the new value; not needed without one
  std::string value;        // the new one, as XML; empty for none
};

struct EditedXmp {
  std::string bytes;                // the packet itself when nothing was taken out, else in UTF-8
  std::vector<std::size_t> found;   // by change, how many properties it took out
  std::vector<std::string> values;  // by change, what the first of them said, as XML
};

// nullopt for what is no packet in UTF-8 or UTF-16 or no well-formed XML, for more nesting or
// namespaces than packets have, and for a document type, which packets have none of and which could
// define entities: none but those of XML itself are ever expanded.
std::optional<EditedXmp> EditXmp(std::string_view packet, std::span<const XmpChange> changes);

// A text as XML content; characters that XML cannot have are left out.
std::string XmlText(std::string_view utf8);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPEDIT_H_
