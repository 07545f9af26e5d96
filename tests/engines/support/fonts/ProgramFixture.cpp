#include "engines/support/fonts/ProgramFixture.h"

namespace TarnixTools::testing {
namespace {

constexpr int kHeight = 500;

std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value);
  }
  return bytes;
}

std::string Number16(int value) {
  return Bytes({value >> 8, value});
}

std::string Index(const std::vector<std::string>& items) {
  std::string index = Number16(static_cast<int>(items.size()));
  if (items.empty()) {
    return index;
  }
  index += Bytes({2});
  int offset = 1;
  index += Number16(offset);
  std::string data;
  for (const std::string& item : items) {
    offset += static_cast<int>(item.size());
    index += Number16(offset);
    data += item;
  }
  return index + data;
}

// A whole number of a CFF dictionary or glyph, always as long.
std::string Operand(int value) {
  return Bytes({28}) + Number16(value);
}

std::string BoxCode(int width) {
  return Operand(0) + Operand(0) + Bytes({21}) + Operand(width) + Operand(0) + Operand(0) +
         Operand(kHeight) + Operand(-width) + Operand(0) + Bytes({5, 14});
}

std::vector<std::string> Boxes(std::size_t count) {
  std::vector<std::string> codes = {Bytes({14})};
  for (std::size_t glyph = 1; glyph <= count; ++glyph) {
    codes.push_back(BoxCode(static_cast<int>(100 * glyph)));
  }
  return codes;
}

// A header, one name, the top dictionary, strings, no subroutines, the parts one after the other.
//   entries - of the top dictionary; each part's operator gets its offset, after what precedes it
struct Part {
  std::string operands;  // before the offset
  std::string code;
  std::string data;
};

std::string Assembled(const std::string& entries, const std::vector<std::string>& strings,
                      const std::vector<Part>& parts) {
  const std::string start = Bytes({1, 0, 4, 2}) + Index({"Boxes"});
  const std::string middle = Index(strings) + Index({});
  std::size_t top_size = entries.size();
  for (const Part& part : parts) {
    top_size += part.operands.size() + 3 + part.code.size();
  }
  std::size_t offset = start.size() + Index({std::string(top_size, ' ')}).size() + middle.size();
  std::string top = entries;
  std::string data;
  for (const Part& part : parts) {
    top += part.operands + Operand(static_cast<int>(offset + data.size())) + part.code;
    data += part.data;
  }
  return start + Index({top}) + middle + data;
}

const std::string kPrivate = Bytes({139, 20});  // widths are 0 where none is said

std::string Encrypted(const std::string& plain, unsigned key) {
  std::string cipher;
  for (const char c : plain) {
    const unsigned byte = (static_cast<unsigned char>(c) ^ (key >> 8)) & 0xFFU;
    cipher += static_cast<char>(byte);
    key = ((byte + key) * 52845U + 22719U) & 0xFFFFU;
  }
  return cipher;
}

std::string Type1Code(const std::string& code) {
  return Encrypted("1234" + code, 4330);
}

std::string Type1Number(int value) {
  return Bytes({255, value >> 24, value >> 16, value >> 8, value});
}

std::string Definition(const std::string& head, const std::string& code, const std::string& end) {
  return head + " " + std::to_string(code.size()) + " RD " + code + " " + end + "\n";
}

// Draws a box from the current point, and returns.
std::string Type1Box(int width) {
  return Type1Number(width) + Bytes({6}) + Type1Number(kHeight) + Bytes({7}) + Type1Number(-width) +
         Bytes({6, 9, 11});
}

}  // namespace

std::string CffProgram(const std::vector<std::string>& names) {
  std::string charset = Bytes({0});
  for (std::size_t i = 0; i < names.size(); ++i) {
    charset += Number16(static_cast<int>(391 + i));
  }
  return Assembled("", names,
                   {{"", Bytes({15}), charset},
                    {"", Bytes({17}), Index(Boxes(names.size()))},
                    {Operand(static_cast<int>(kPrivate.size())), Bytes({18}), kPrivate}});
}

// All glyphs are of one inner font, whose dictionary tells of the private part before it.
std::string CidProgram(const std::vector<std::uint16_t>& cids) {
  std::string charset = Bytes({0});
  for (const std::uint16_t cid : cids) {
    charset += Number16(cid);
  }
  const std::string ros = Operand(391) + Operand(392) + Operand(0) + Bytes({12, 30});
  const std::vector<std::string> strings = {"Adobe", "Identity"};
  const std::string select = Bytes({0}) + std::string(cids.size() + 1, '\0');
  const std::string codes = Index(Boxes(cids.size()));
  const auto with_private_at = [&](int offset) {
    const std::string inner =
        Operand(static_cast<int>(kPrivate.size())) + Operand(offset) + Bytes({18});
    return Assembled(ros, strings,
                     {{"", Bytes({15}), charset},
                      {"", Bytes({12, 37}), select},
                      {"", Bytes({17}), codes},
                      {"", Bytes({12, 36}), Index({inner}) + kPrivate}});
  };
  return with_private_at(static_cast<int>(with_private_at(0).size() - kPrivate.size()));
}

std::string Type1ProgramText(const std::vector<std::string>& names) {
  std::string routines;
  const std::size_t first = 4;  // after those that programs have in common
  for (std::size_t i = 0; i < first; ++i) {
    routines += Definition("dup " + std::to_string(i), Type1Code(Bytes({11})), "NP");
  }
  std::string glyphs =
      Definition("/.notdef", Type1Code(Type1Number(0) + Type1Number(250) + Bytes({13, 14})), "ND");
  for (std::size_t i = 0; i <= names.size(); ++i) {
    const int width = static_cast<int>(100 * (i + 1));
    const int routine = static_cast<int>(first + i);
    routines += Definition("dup " + std::to_string(routine), Type1Code(Type1Box(width)), "NP");
    if (i < names.size()) {
      glyphs += Definition(
          "/" + names[i],
          Type1Code(Type1Number(0) + Type1Number(width + 50) + Bytes({13}) + Type1Number(0) +
                    Bytes({22}) + Type1Number(routine) + Bytes({10, 14})),
          "ND");
    }
  }
  const int part = static_cast<unsigned char>(names[0][0]);
  glyphs += Definition(
      "/eacute",
      Type1Code(Type1Number(0) + Type1Number(999) + Bytes({13}) + Type1Number(0) + Type1Number(30) +
                Type1Number(700) + Type1Number(part) + Type1Number(part) + Bytes({12, 6})),
      "ND");
  const std::string hidden =
      "dup /Private 8 dict dup begin\n/RD {string currentfile exch readstring pop} executeonly "
      "def\n/ND {noaccess def} executeonly def\n/NP {noaccess put} executeonly def\n/BlueValues [] "
      "def\n/password 5839 def\n/Subrs " +
      std::to_string(first + names.size() + 1) + " array\n" + routines +
      "ND\n2 index /CharStrings " + std::to_string(names.size() + 2) + " dict dup begin\n" +
      glyphs +
      "end\nend\nreadonly put\nnoaccess put\ndup /FontName get exch definefont pop\nmark "
      "currentfile closefile\n";
  return "%!PS-AdobeFont-1.0: Boxes 1.0\n11 dict begin\n/FontInfo 1 dict dup begin\nend readonly "
         "def\n/FontName /Boxes def\n/PaintType 0 def\n/FontType 1 def\n/FontMatrix [0.001 0 0 "
         "0.001 0 0] readonly def\n/Encoding StandardEncoding def\n/FontBBox {0 0 1000 1000} "
         "readonly def\ncurrentdict end\ncurrentfile eexec\n" +
         Encrypted(std::string(4, '\0') + hidden, 55665) + "\n" + std::string(64, '0') +
         "\ncleartomark\n";
}

}  // namespace TarnixTools::testing
