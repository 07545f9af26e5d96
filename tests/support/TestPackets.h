// XMP packets for test documents.
//
//   const std::string packet = TestPacket(ClaimOf("2"));
#ifndef TARNIX_TESTS_SUPPORT_TEST_PACKETS_H_
#define TARNIX_TESTS_SUPPORT_TEST_PACKETS_H_

#include <string>

namespace TarnixTools::testing {

// A packet with a title and these descriptions.
inline std::string TestPacket(const std::string& descriptions) {
  return "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
         "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>\n"
         "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>"
         "<dc:title>A title</dc:title></rdf:Description>\n" +
         descriptions + "</rdf:RDF>\n<?xpacket end='w'?>";
}

// A claim of PDF/A, level B.
inline std::string ClaimOf(const std::string& part) {
  return "<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'>"
         "<pdfaid:part>" +
         part + "</pdfaid:part><pdfaid:conformance>B</pdfaid:conformance></rdf:Description>\n";
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEST_PACKETS_H_
