#include "engines/support/fonts/BaseEncodings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_map>

namespace TarnixTools::engines::fonts {

namespace {

// Each as /Differences has them: a code, then the names of that code and those after it.
constexpr std::string_view kLatin =
    "32 space exclam quotedbl numbersign dollar percent ampersand quoteright parenleft "
    "parenright asterisk plus comma hyphen period slash zero one two three four five six "
    "seven eight nine colon semicolon less equal greater question at A B C D E F G H I J K L "
    "M N O P Q R S T U V W X Y Z bracketleft backslash bracketright asciicircum underscore "
    "quoteleft a b c d e f g h i j k l m n o p q r s t u v w x y z braceleft bar braceright "
    "asciitilde";
constexpr std::string_view kStandard =
    "161 exclamdown cent sterling fraction yen florin section currency quotesingle "
    "quotedblleft guillemotleft guilsinglleft guilsinglright fi fl 177 endash dagger "
    "daggerdbl periodcentered 182 paragraph bullet quotesinglbase quotedblbase quotedblright "
    "guillemotright ellipsis perthousand 191 questiondown 193 grave acute circumflex tilde "
    "macron breve dotaccent dieresis 202 ring cedilla 205 hungarumlaut ogonek caron emdash "
    "225 AE 227 ordfeminine 232 Lslash Oslash OE ordmasculine 241 ae 245 dotlessi 248 lslash "
    "oslash oe germandbls";
constexpr std::string_view kWinAnsi =
    "39 quotesingle 96 grave 127 bullet Euro bullet quotesinglbase florin quotedblbase "
    "ellipsis dagger daggerdbl circumflex perthousand Scaron guilsinglleft OE bullet Zcaron "
    "bullet bullet quoteleft quoteright quotedblleft quotedblright bullet endash emdash tilde "
    "trademark scaron guilsinglright oe bullet zcaron Ydieresis space exclamdown cent "
    "sterling currency yen brokenbar section dieresis copyright ordfeminine guillemotleft "
    "logicalnot hyphen registered macron degree plusminus twosuperior threesuperior acute mu "
    "paragraph periodcentered cedilla onesuperior ordmasculine guillemotright onequarter "
    "onehalf threequarters questiondown Agrave Aacute Acircumflex Atilde Adieresis Aring AE "
    "Ccedilla Egrave Eacute Ecircumflex Edieresis Igrave Iacute Icircumflex Idieresis Eth "
    "Ntilde Ograve Oacute Ocircumflex Otilde Odieresis multiply Oslash Ugrave Uacute "
    "Ucircumflex Udieresis Yacute Thorn germandbls agrave aacute acircumflex atilde adieresis "
    "aring ae ccedilla egrave eacute ecircumflex edieresis igrave iacute icircumflex "
    "idieresis eth ntilde ograve oacute ocircumflex otilde odieresis divide oslash ugrave "
    "uacute ucircumflex udieresis yacute thorn ydieresis";
constexpr std::string_view kMacRoman =
    "39 quotesingle 96 grave 128 Adieresis Aring Ccedilla Eacute Ntilde Odieresis Udieresis "
    "aacute agrave acircumflex adieresis atilde aring ccedilla eacute egrave ecircumflex "
    "edieresis iacute igrave icircumflex idieresis ntilde oacute ograve ocircumflex odieresis "
    "otilde uacute ugrave ucircumflex udieresis dagger degree cent sterling section bullet "
    "paragraph germandbls registered copyright trademark acute dieresis 174 AE Oslash 177 "
    "plusminus 180 yen mu 187 ordfeminine ordmasculine 190 ae oslash questiondown exclamdown "
    "logicalnot 196 florin 199 guillemotleft guillemotright ellipsis space Agrave Atilde "
    "Otilde OE oe endash emdash quotedblleft quotedblright quoteleft quoteright divide 216 "
    "ydieresis Ydieresis fraction currency guilsinglleft guilsinglright fi fl daggerdbl "
    "periodcentered quotesinglbase quotedblbase perthousand Acircumflex Ecircumflex Aacute "
    "Edieresis Egrave Iacute Icircumflex Idieresis Igrave Oacute Ocircumflex 241 Ograve "
    "Uacute Ucircumflex Ugrave dotlessi circumflex tilde macron breve dotaccent ring cedilla "
    "hungarumlaut ogonek caron";
constexpr std::string_view kMacRomanMore =
    "173 notequal 176 infinity 178 lessequal greaterequal 182 partialdiff summation product "
    "pi integral 189 Omega 195 radical 197 approxequal Delta 215 lozenge 219 Euro 240 apple";

using Names = std::array<std::string_view, 256>;

template <typename Take>
void ForEachName(std::string_view text, const Take& take) {
  std::size_t code = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (word.front() > '9') {
      take(static_cast<std::uint8_t>(code++), word);
      continue;
    }
    code = 0;
    for (const char digit : word) {
      code = code * 10 + static_cast<std::size_t>(digit - '0');
    }
  }
}

Names NamesOf(std::string_view own) {
  Names names;
  for (const std::string_view text : {kLatin, own}) {
    ForEachName(text, [&](std::uint8_t code, std::string_view name) { names[code] = name; });
  }
  return names;
}

}  // namespace

std::optional<BaseEncoding> BaseEncodingOf(std::string_view name) {
  if (name == "StandardEncoding") {
    return BaseEncoding::kStandard;
  }
  if (name == "WinAnsiEncoding") {
    return BaseEncoding::kWinAnsi;
  }
  if (name == "MacRomanEncoding") {
    return BaseEncoding::kMacRoman;
  }
  return std::nullopt;
}

std::string_view GlyphNameIn(BaseEncoding encoding, std::uint8_t code) {
  static const std::array<Names, 3> names = {NamesOf(kStandard), NamesOf(kWinAnsi),
                                             NamesOf(kMacRoman)};
  return names[static_cast<std::size_t>(encoding)][code];
}

// A name that several codes have counts as the first of them: space.
std::optional<std::uint8_t> MacCodeOf(std::string_view name) {
  static const auto codes = [] {
    std::unordered_map<std::string_view, std::uint8_t> made;
    const Names names = NamesOf(kMacRoman);
    for (std::size_t code = 0; code < names.size(); ++code) {
      made.emplace(names[code], static_cast<std::uint8_t>(code));
    }
    ForEachName(kMacRomanMore,
                [&](std::uint8_t code, std::string_view extra) { made.emplace(extra, code); });
    made.erase(std::string_view());
    return made;
  }();
  const auto found = codes.find(name);
  return found == codes.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace TarnixTools::engines::fonts
