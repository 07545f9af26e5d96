// The XMP packet of a PDF/A document (ISO 19005-1, 6.7; ISO 19005-2 and -3, 6.6): made of the document
// information, the packet that there was, and the level that is claimed.
//
//   const PdfAPacket packet = MakePdfAPacket(ReadDocumentXmp(document), {2, 'b'},
//                                            ReadXmpInfoValues(document));
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_PDFAPACKET_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_PDFAPACKET_H_

#include <string>
#include <vector>

#include "engines/support/metadata/XmpInfo.h"
#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines {

struct PdfALevel {
  int part = 2;
  char conformance = 'b';
};

struct PdfAPacket {
  std::string bytes;  // in UTF-8, each property an element; the same for the same input
  std::vector<std::string> dropped;  // names of properties that PDF/A does not allow as they are
};

// Whether PDF/A can have the entry: a date that is none cannot agree with the packet.
bool CanKeepInfoValue(const XmpMirror& mirror, const std::string& value);

// given: what the packet says that is not in the information stays if it may. Properties that no
// specification defines are declared as an extension schema when they are simple values or arrays
// of such; what cannot be declared is dropped. Where the information says something, the packet
// says that; its claim is the level. A packet that could not be read gives nothing.
PdfAPacket MakePdfAPacket(const XmpTree& given, const PdfALevel& level, const XmpInfoValues& info);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_PDFAPACKET_H_
