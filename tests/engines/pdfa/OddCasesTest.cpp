// What every level finds in files that are odd in many ways.
#include <cstdio>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/Findings.h"
#include "engines/pdfa/RuleCase.h"
#include "engines/pdfa/checks/SignatureCheck.h"
#include "support/ArchiveFile.h"
#include "support/Expected.h"

namespace TarnixTools::testing {
namespace {

constexpr OddCase kCatalogs[] = {
    {Part::kCatalog, "/Lang()"},
    {Part::kBytes, "/N 3/|/M 3/"},
    {Part::kBytes, "/N 3/|/N 4/"},
    {Part::kBytes, "mntrRGB |mntrGRAY"},
    {Part::kBytes, "mntrRGB |mntrCMYK"},
    {Part::kBytes, "GTS_PDFA1/|GTS_PDFX1/"},
    {Part::kBytes, "DestOutputProfile 5 0 R|DestOutputProfile 6 0 R"},
    {Part::kBytes, "DestOutputProfile 5 0 R|DestOutputProfile null "},
    {Part::kCatalog, "",
     "/OutputIntents[<</S/GTS_PDFX/DestOutputProfileRef<<>>/DestOutputProfile 5 0 R>>"
     "20 0 R<</DestOutputProfile 5 0 R>>]"},
    {Part::kCatalog, "/Lang/de"},
    {Part::kCatalog, "/Lang(\\376\\377\\000d\\000e)"},
    {Part::kCatalog, "/AcroForm<</XFA[]/NeedAppearances 1>>"},
    {Part::kCatalog, "/MarkInfo<</Marked 1>>/StructTreeRoot[]"},
    {Part::kCatalog, "/Names[]"},
    {Part::kCatalog, "/NeedsRendering 1/Requirements null/AA null"},
    {Part::kCatalog, "/OCProperties<</OCGs[3 0 R 20 0 R]/D<</Name(a)/Order[[[3 0 R]]]>>>>"},
    {Part::kCatalog, "/OCProperties<</OCGs[3 0 R 2 0 R]/D<</Name(a)/Order[2 0 R[[3 0 R]]]>>>>"},
    {Part::kCatalog, "/OCProperties<</OCGs[[3 0 R][2 0 R]]/D<</Name(a)/Order[2 0 R]>>>>"},
    {Part::kCatalog, "/OCProperties<</OCGs[]/D<</Name/a>>/Configs[<<>><</Name()>>null(x)]>>"},
    {Part::kCatalog, "/OCProperties<</OCGs[]/Configs[<</Name(a)>><</Name(b)>><</Name(a)>>]>>"},
    {Part::kCatalog, "/OCProperties<</OCGs[3 0 R]/D<</Name(a)/Order(x)/AS null>>>>"},
    {Part::kObject, "<</Name(b)/Order[]/AS[]>>",
     "/OCProperties<</OCGs[3 0 R]/D<</Name(a)>>/Configs[20 0 R]>>"},
    {Part::kPage, "/MediaBox[0 0 2 100]/TrimBox[0 0 99 2]/ArtBox[0 0]/BleedBox[9 9 0 0]"},
    {Part::kPage, "/MediaBox[100 100 0 0]/CropBox[0 0 14401 3]"},
    {Part::kPage, "/TrimBox[/x 0 3 99]/ArtBox[0(y)99 3]/BleedBox[-3/x 0 3]"},
    {Part::kPage, "/TrimBox[0 0 2/x]"},
    {Part::kPage, "/AA null/PresSteps null"},
    {Part::kPage, "/AA<</O<</S/JavaScript>>/C<</S/Named/N/Odd>>>>"},
    {Part::kPage, "/Annots[null(x)<</Subtype/Sound>>20 0 R]"},
    {Part::kObject, "[<</Subtype/Movie>>]", "/OpenAction 20 0 R"},
    {Part::kObject, "<</S/GoTo/Next 20 0 R>>", "/OpenAction 20 0 R"},
    {Part::kObject, "<</S/Launch/Next[<</S/Sound>>[<</S/Hide>>]20 0 R]>>", "/OpenAction 20 0 R"},
    {Part::kObject, "<</S/Named/Next<</S(URI)/Next<</S/Movie>>>>>>", "/OpenAction 20 0 R"},
    {Part::kObject, "<</First<</A<</S/Launch>>/First<</A<</S/Sound>>>>/Next<</A<</S/Hide>>>>>>>>",
     "/Outlines 20 0 R"},
    {Part::kObject, "<</A<</S/Launch>>/First 20 0 R/Next 20 0 R>>", "/Outlines<</First 20 0 R>>"},
};

TEST(OddCases, OfCatalogsAndPages) {
  ExpectFindings(kCatalogs, "pdfa/findings/odd-catalogs.txt");
}

constexpr OddCase kAnnotations[] = {
    {Part::kAnnotation, ""},
    {Part::kAnnotation, "/Subtype(Text)/F(4)/CA(1)/Rect[0 0 9]"},
    {Part::kAnnotation, "/Subtype/Text/F 4.0/CA 1/Rect[9 8 1 2]/AP<<>>"},
    {Part::kAnnotation, "/Subtype/Text/F 4/Rect[0 0 0 5]"},
    {Part::kAnnotation, "/Subtype/Text/F 4/Rect[0 0 5 0]"},
    {Part::kAnnotation, "/Subtype/Text/F 4/Rect[5 7 5 7]"},
    {Part::kAnnotation, "/Subtype/Text/F 4{rect}/AP<</N null>>"},
    {Part::kAnnotation, "/Subtype/Text/F 4{rect}/AP<</N<<>>>>"},
    {Part::kAnnotation, "/Subtype/Text/F 4{rect}/AP 6 0 R"},
    {Part::kAnnotation, "/Subtype/Link/F 4{rect}/AP<</N 6 0 R/D null>>"},
    {Part::kAnnotation, "/Subtype/Widget/F 4{rect}/Parent 2 0 R/AP<</N<</a 6 0 R>>>>"},
    {Part::kAnnotation, "/Subtype/Widget/F 4{rect}/Parent<</FT/Btn>>/AP<</N 6 0 R>>"},
    {Part::kAnnotation,
     "/Subtype/Widget/F 4{rect}/Parent<</Parent<</FT/Btn>>>>/AP<</N<</a 6 0 R>>>>"},
    {Part::kAnnotation, "/Subtype/Widget/FT/Tx/F 4{rect}/Parent<</FT/Btn>>{form}"},
    {Part::kAnnotation, "/Subtype/Widget/FT/Btn/F 4{rect}/AP<</N<</a null/b 6 0 R>>>>"},
    {Part::kAnnotation, "/Subtype/Widget/FT/Btn/F 4{rect}/AP<</N<</a<<>>>>>>"},
    {Part::kAnnotation, "/Subtype/Widget/F 4{rect}{form}/A null/AA null"},
    {Part::kAnnotation, "/Subtype/Widget/F 4{rect}{form}/A<</S/Launch>>/AA<</E<</S/Sound>>>>"},
    {Part::kAnnotation, "/Subtype/Link/F 4{rect}/C[1]/IC[1]", "/OutputIntents[]"},
    {Part::kAnnotation, "/Subtype/Link/F 4{rect}/C[]", "/OutputIntents[<</S/GTS_PDFA1>>]"},
    {Part::kAnnotation, "/Subtype/Link/F 4{rect}/IC[]", "/OutputIntents[<</S/GTS_PDFX>>]"},
    {Part::kAnnotation, "/Subtype/Link/F 4/Rect[0 0 20 30]/Dest[3 0 R/Fit]/A<</S/GoTo3DView>>"},
    {Part::kObject, "<</Kids[<</T(a)/AA<</K<</S/Launch>>>>/Kids[<</AA<<>>>>]>>]>>",
     "/AcroForm<</Fields[20 0 R 20 0 R]>>"},
    {Part::kObject, "<</Subtype/Widget/AA<<>>/Kids[<</Subtype/Widget/T(b)/AA<<>>>>]>>",
     "/AcroForm<</Fields[20 0 R]>>"},
    {Part::kObject, "<</Subtype/Widget/AA<<>>>>", "/AcroForm<</Fields[20 0 R]>>"},
    {Part::kObject, "<</Subtype/Other/AA<<>>>>", "/AcroForm<</Fields[20 0 R]>>"},
    {Part::kObject, "<</Fields[<</T(a)/FT/Sig/V<</Contents<00>>>>>>]/XFA(x)/NeedAppearances true>>",
     "/AcroForm 20 0 R"},
    {Part::kObject, "<</FT/Sig/T(a)/V<</ByteRange[0 1 2]/Contents 7>>>>",
     "/AcroForm<</Fields[20 0 R]>>"},
    {Part::kObject, "<</FT/Sig/T(a)/V<</ByteRange[0 1 -2 3]/Contents()>>>>",
     "/AcroForm<</Fields[20 0 R]>>"},
    {Part::kObject, "<</FT/Sig/T(a)/V<</Reference[<</DigestValue()>><</DigestLocation[]>><<>>]>>>>",
     "/AcroForm<</Fields[20 0 R]>>/Perms<</DocMDP<<>>/UR3<<>>/Own<<>>>>"},
    {Part::kObject, "<</FT/Tx/T(a)/V<</Reference[<</DigestValue()>>]>>>>",
     "/AcroForm<</Fields[20 0 R]>>/Perms<</DocMDP<<>>>>"},
    {Part::kObject, "<</FT/Sig/T(a)/V<</Reference[<</DigestLocation[]>>]>>>>",
     "/AcroForm<</Fields[20 0 R]>>/Perms<</DocMDP<<>>>>"},
    {Part::kObject, "<</FT/Sig/T(a)/V<</Reference[<</DigestValue()>>]>>>>",
     "/AcroForm<</Fields[20 0 R]>>/Perms<</DocMDP<<>>>>"},
    {Part::kObject, "<</FT/Sig/T(a)/V<</Reference[<</DigestMethod/MD5>>]>>>>",
     "/AcroForm<</Fields[20 0 R]>>/Perms<</DocMDP<<>>>>"},
    {Part::kObject, "<</FT/Sig/T(a)/V<</Reference[<</Data null>>]>>>>",
     "/AcroForm<</Fields[20 0 R]>>/Perms<</DocMDP<<>>>>"},
    {Part::kObject, "<</FT/Sig/T(a)/V(text)>>", "/AcroForm<</Fields[20 0 R]>>"},
};

TEST(OddCases, OfAnnotationsAndFields) {
  ExpectFindings(kAnnotations, "pdfa/findings/odd-annotations.txt");
}

constexpr OddCase kStructures[] = {
    {Part::kObject,
     "<</S/P/K[<</S/Odd>>[<</S/Odder>>]<</Type/MCR/S/OddMark>><</Type/OBJR/S/OddObject>>1]>>",
     "/StructTreeRoot<</K 20 0 R>>"},
    {Part::kObject, "<</S(Odd)/Lang(x_y)/K<</Lang()/K<</Lang/de>>>>>>",
     "/StructTreeRoot<</K 20 0 R>>"},
    {Part::kObject, "<</S/P/K 20 0 R>>", "/StructTreeRoot<</K[20 0 R 20 0 R]>>"},
    {Part::kObject, "<</A/P/P/A/H1/H1/B/C/C/B/H2/Odd/D/E/E(x)>>",
     "/StructTreeRoot<</RoleMap 20 0 "
     "R/K[<</S/A>><</S/P>><</S/H1>><</S/B>><</S/H2>><</S/D>><</S/E>>]>>"},
    {Part::kCatalog,
     "/StructTreeRoot<</K[<</S/Document>><</S/Part>><</S/Art>><</S/Sect>><</S/Div>><</S/"
     "BlockQuote>>"
     "<</S/Caption>><</S/TOC>><</S/TOCI>><</S/Index>><</S/NonStruct>><</S/Private>><</S/P>><</S/H>>"
     "<</S/H1>><</S/H2>><</S/H3>><</S/H4>><</S/H5>><</S/H6>><</S/L>><</S/LI>><</S/Lbl>><</S/LBody>>"
     "<</S/Table>><</S/TR>><</S/TH>><</S/TD>><</S/Span>><</S/Quote>><</S/Note>><</S/Reference>>"
     "<</S/BibEntry>><</S/Code>><</S/Link>><</S/Figure>><</S/Formula>><</S/Form>>"
     "<</S/StructTreeRoot>>]>>"},
    {Part::kCatalog,
     "/StructTreeRoot<</K[<</S/THead>><</S/TBody>><</S/TFoot>><</S/Annot>><</S/Ruby>><</S/RB>><</S/"
     "RT>>"
     "<</S/RP>><</S/Warichu>><</S/WT>><</S/WP>>]>>"},
    {Part::kObject, "<</Type/Filespec/F(a)/UF(a)/AFRelationship/Data/EF<</F 6 0 R/UF 7 0 R>>>>"},
    {Part::kObject, "<</Type/Filespec/UF(a)/AFRelationship/Data{file}>>", "/AF 20 0 R"},
    {Part::kObject, "[<</Type/Filespec/F(a)/UF(a){file}>>]", "/AF 20 0 R"},
    {Part::kObject, "<</Own<</Type/Filespec/EF null>>/AF[21 0 R]>>"},
    {Part::kObject, "<</Type/Filespec/EF<<>>>>"},
    {Part::kPage, "/AF 20 0 R"},
};

TEST(OddCases, OfStructureAndFiles) {
  ExpectFindings(kStructures, "pdfa/findings/odd-structures.txt");
}

constexpr OddCase kFiles[] = {
    {Part::kBytes, "%\xE2\xE3\xCF\xD3|%\xE2\xE3\xCF\n"},
    {Part::kBytes, "%\xE2\xE3\xCF\xD3|%\xE2\xE3\xCF\x7F"},
    {Part::kBytes, "%\xE2\xE3\xCF\xD3|%\x80\x80\x80\x80"},
    {Part::kBytes, "%\xE2\xE3\xCF\xD3|?\xE2\xE3\xCF\xD3"},
    {Part::kBytes, "%%EOF|%%EO"},
    {Part::kBytes, "%%EOF\n|%%EOF\r"},
    {Part::kBytes, "%%EOF\n|%%EOF "},
    {Part::kBytes, "%%EOF\n|%%EOF\n%%EOF\n"},
    {Part::kBytes, "\nxref\n0 1\n|\nxref\r0 1\n"},
    {Part::kBytes, "\nxref\n0 1\n|\nxref\t\n0 1\n"},
    {Part::kBytes, "xref\n0 1\n|xref\n0\t1\n"},
    {Part::kBytes, "/ID[<0123456789ABCDEF><0123456789ABCDEF>]|/ID<0123456789ABCDEF>"},
    {Part::kBytes, "/ID[<0123456789ABCDEF><0123456789ABCDEF>]|/ID[1 2]"},
    {Part::kTrailer, "/Encrypt null"},
    {Part::kBytes, "7 0 obj\n|7 0 obj\r\n"},
    {Part::kBytes, "7 0 obj\n|7\t0 obj\n"},
    {Part::kBytes, "7 0 obj\n|7 0  obj\n"},
    {Part::kBytes, "7 0 obj\n|7 0 obj\t"},
    {Part::kBytes, "\nendobj\n7 0 obj|\nendobj 7 0 obj"},
    {Part::kBytes, "\nendobj\n7 0 obj|endobj\n\n7 0 obj"},
    {Part::kBytes, "\nendobj\n7 0 obj|\nendob\n\n7 0 obj"},
    {Part::kBytes, "stream\nq Q\n|stream\r\nq Q\n"},
    {Part::kBytes, "stream\nq Q\n|stream\rq Q\n"},
    {Part::kBytes, "stream\nq Q\n|stream q Q\n"},
    {Part::kBytes, "q Q\nendstream|q Q endstream"},
    {Part::kBytes, "q Q\nendstream|q Q\r\nendstream"},
    {Part::kBytes, "q Q\nendstream|q Q\rendstream"},
    {Part::kBytes, "q Q\nendstream|q Q \nendstream"},
    {Part::kObject, "<</Length -1>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Length(3)>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Length 21 0 R>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Length 4>>\nstream\nabc\r\nendstream"},
    {Part::kObject, "<</Length 5>>\nstream\nabc\r\nendstream"},
    {Part::kObject, "<</FDecodeParms[]/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Filter/LZW/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Filter/LZWDecode/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Filter[/Odd(x)/FlateDecode]/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Filter/Crypt/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject,
     "<</Filter/Crypt/DecodeParms<</Name/StdCF>>/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject,
     "<</Filter[/Crypt/Crypt]/DecodeParms[<<>><</Name/Own>>]/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject,
     "<</Filter[/Crypt/Crypt]/DecodeParms[<</Name/Own>>]/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject, "[+2147483647 +2147483648 -2147483648 -2147483649 00002147483647]"},
    {Part::kObject, "[32767.1 -32767.1 +32767.1 .00001 -.00001 0.00000000 -00.0000]"},
    {Part::kObject, "[1.0000000000000000000000000000000000000000000000000000000000]"},
    {Part::kObject, "[-.00000000000000000000000000000000000000000000001 999999999999999999999]"},
    {Part::kObject, "[<> <a> <a b> <ag> <A\nB>< ab cd >]"},
    {Part::kObject, "<</#41#42 /a#zz/b /#FF>>"},
    {Part::kObject, "1 2"},
    {Part::kObject, ""},
};

TEST(OddCases, OfFiles) {
  ExpectFindings(kFiles, "pdfa/findings/odd-files.txt");
}

constexpr OddCase kPackets[] = {
    {Part::kCatalog, "/Metadata 20 0 R"},
    {Part::kBytes, "/Metadata 4 0 R|/Metadata null "},
    {Part::kBytes, "<?xpacket begin|<?xpocket begin"},
    {Part::kBytes, "<pdfaid:part>|<pdfaid:port>"},
    {Part::kBytes, "rdf:about=''|s:about=''  "},
    {Part::kPacket,
     "<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'>"
     "<pdf:Trapped>True</pdf:Trapped><pdf:Keywords><rdf:Bag/></pdf:Keywords>"
     "</rdf:Description>"},
    {Part::kPacket,
     "<rdf:Description rdf:about='' xmlns:s='http://s/' s:a='1'><s:b/></rdf:Description>"},
    {Part::kPacket,
     "<rdf:Description rdf:about='' xmlns:x='http://www.aiim.org/pdfa/ns/id/' "
     "x:amd='2009' x:corr='1' x:rev='2'/>"},
    {Part::kPacket,
     "<rdf:Description rdf:about='' xmlns:x='http://www.aiim.org/pdfa/ns/extension/'>"
     "<x:schemas><rdf:Seq/></x:schemas></rdf:Description>"},
    {Part::kPacket,
     "<rdf:Description rdf:about='' xmlns:x='http://www.aiim.org/pdfa/ns/extension/'>"
     "<x:schemas>text</x:schemas></rdf:Description>"},
    {Part::kPacket,
     "<rdf:Description rdf:about='' xmlns:pdfaExtension='http://www.aiim.org/pdfa/ns/extension/'>"
     "<pdfaExtension:schemas><rdf:Bag><rdf:li rdf:parseType='Resource'/></rdf:Bag>"
     "</pdfaExtension:schemas></rdf:Description>"},
    {Part::kObject, "<</Type/Metadata/Subtype/XML/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Type/Metadata/Filter/FlateDecode/Length 3>>\nstream\nabc\nendstream"},
    {Part::kObject, "<</Type/Metadata>>"},
};

TEST(OddCases, OfPackets) {
  ExpectFindings(kPackets, "pdfa/findings/odd-packets.txt");
}

// A value of the basic encoding.
std::string Value(int tag, const std::string& content) {
  return static_cast<char>(tag) + std::string(1, static_cast<char>(content.size())) + content;
}

// Signed data with certificates of these serial numbers and signers by these.
std::string Message(const std::string& certificates, const std::string& signers,
                    const std::string& version = Value(0xA0, Value(2, "\x02"))) {
  const std::string issuer = Value(0x30, Value(12, "i"));
  std::string all;
  for (const char serial : certificates) {
    all += Value(
        0x30, Value(0x30, version + Value(2, std::string(1, serial)) + Value(0x30, "") + issuer));
  }
  std::string infos;
  for (const char serial : signers) {
    infos += Value(0x30, Value(2, "\x01") + Value(0x30, issuer + Value(2, std::string(1, serial))));
  }
  return Value(
      0x30,
      Value(6, "*") + Value(0xA0, Value(0x30, Value(2, "\x01") + Value(0x31, "") + Value(0x30, "") +
                                                  Value(0xA0, all) + Value(0x31, infos))));
}

std::string FactsText(const std::string& message) {
  const engines::pdfa::SignatureMessageFacts facts = engines::pdfa::FactsOfMessage(message);
  return std::to_string(facts.signers) + (facts.has_certificate ? "+" : "-");
}

// Each byte of a message is another one, and the message ends behind it.
TEST(OddCases, OfSignedMessages) {
  std::string text;
  for (const auto& [certificates, signers] :
       {std::pair("", ""), std::pair("a", ""), std::pair("", "a"), std::pair("a", "a"),
        std::pair("ab", "b"), std::pair("a", "b"), std::pair("ab", "ab"), std::pair("a", "ab")}) {
    text += std::string(certificates) + "|" + signers + " " +
            FactsText(Message(certificates, signers)) + " " +
            FactsText(Message(certificates, signers, "")) + "\n";
  }
  const std::string message = Message("ab", "b");
  for (std::size_t i = 0; i < message.size(); ++i) {
    text += std::to_string(i) + ":";
    for (const int other : {0x00, 0x02, 0x30, 0x31, 0x7F, 0x80, 0x81, 0x84, 0x85, 0xA0, 0xFF}) {
      std::string changed = message;
      changed[i] = static_cast<char>(other);
      text += " " + FactsText(changed);
    }
    text += " | " + FactsText(message.substr(0, i)) + "\n";
  }
  const std::string inside = message.substr(2);
  const auto length = static_cast<char>(inside.size());
  for (const std::string& head :
       {std::string("\x30\x81"), std::string("\x30\x82\0", 3), std::string("\x30\x83\0\0", 4),
        std::string("\x30\x84\0\0\0", 5), std::string("\x30\x85\0\0\0\0", 6)}) {
    text += FactsText(head + length + inside) + " ";
  }
  text += FactsText("\x30\x80" + inside + std::string(2, '\0')) + " " +
          FactsText("\x30\x80" + inside + std::string(1, '\0')) + "\n";
  EXPECT_TRUE(IsAsExpected("pdfa/findings/odd-messages.txt", text));
}

// The places of the numbers of a byte range, each wrong by one.
TEST(OddCases, OfByteRanges) {
  constexpr const char* kNumbers = "[0000 00000 00000 00000]";
  std::string text;
  for (int wrong = -1; wrong < 8; ++wrong) {
    ArchiveFile file("2b");
    file.Catalog("/AcroForm<</Fields[20 0 R]/SigFlags 3>>")
        .Object(20, "<</FT/Sig/T(a)/V 21 0 R>>")
        .Object(21, std::string("<</Type/Sig/ByteRange") + kNumbers + "/Contents<00AA>>>");
    const std::string bytes = file.Bytes();
    const auto begin = static_cast<long>(bytes.find("<00AA>"));
    long numbers[] = {0, begin, begin + 6, static_cast<long>(bytes.size()) - begin - 6};
    if (wrong >= 0) {
      numbers[wrong / 2] += wrong % 2 == 0 ? 1 : -1;
    }
    char range[64];
    std::snprintf(range, sizeof range, "[%04ld %05ld %05ld %05ld]", numbers[0], numbers[1],
                  numbers[2], numbers[3]);
    text += std::to_string(wrong) + "\n" + FindingsOf(file.Replace(kNumbers, range).Bytes(), "2b");
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/odd-ranges.txt", text));
}

}  // namespace
}  // namespace TarnixTools::testing
