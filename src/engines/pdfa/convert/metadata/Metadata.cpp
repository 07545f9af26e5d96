#include "engines/pdfa/convert/metadata/Metadata.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engines/support/metadata/XmpEdit.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

namespace {

enum class Form { kText, kLanguages, kList, kDate };

struct Property {
  std::string_view key;  // of the document information
  std::string_view name;
  Form form;
};

constexpr std::array<Property, 8> kProperties = {{
    {"Title", "dc:title", Form::kLanguages},
    {"Author", "dc:creator", Form::kList},
    {"Subject", "dc:description", Form::kLanguages},
    {"Keywords", "pdf:Keywords", Form::kText},
    {"Producer", "pdf:Producer", Form::kText},
    {"Creator", "xmp:CreatorTool", Form::kText},
    {"CreationDate", "xmp:CreateDate", Form::kDate},
    {"ModDate", "xmp:ModifyDate", Form::kDate},
}};

bool IsDigits(std::string_view text) {
  return text.find_first_not_of("0123456789") == std::string_view::npos;
}

// "D:20240131120000+01'00'" as "2024-01-31T12:00:00+01:00"; nothing for what is no date.
std::optional<std::string> IsoDateOf(std::string_view date) {
  if (date.starts_with("D:")) {
    date.remove_prefix(2);
  }
  const std::size_t digits = std::min(date.find_first_not_of("0123456789"), date.size());
  if (digits < 4 || digits % 2 != 0 || digits > 14) {
    return std::nullopt;
  }
  std::string full = std::string(date.substr(0, digits));
  full += std::string_view("00000101000000").substr(digits);
  const std::string_view zone = date.substr(digits);
  std::string text = full.substr(0, 4) + "-" + full.substr(4, 2) + "-" + full.substr(6, 2) + "T" +
                     full.substr(8, 2) + ":" + full.substr(10, 2) + ":" + full.substr(12, 2);
  if (zone.size() >= 6 && (zone[0] == '+' || zone[0] == '-') && IsDigits(zone.substr(1, 2)) &&
      IsDigits(zone.substr(4, 2))) {
    return text + zone[0] + std::string(zone.substr(1, 2)) + ":" + std::string(zone.substr(4, 2));
  }
  return text + "Z";
}

class MetadataMender {
 public:
  explicit MetadataMender(Conversion& conversion) : conversion_(&conversion) {}

  void Mend() {
    const Object info =
        conversion_->document.Resolve(conversion_->document.trailer().Get("Info"), arena_);
    std::string text = "<<";
    for (const Property& property : kProperties) {
      Take(property, conversion_->document.Resolve(info.Get(property.key), arena_), text);
    }
    const std::uint32_t number = conversion_->rewriter.Add(pdf::ObjectChange::Value(text + ">>"));
    std::string reference;
    pdf::AppendReference(reference, number);
    conversion_->rewriter.SetTrailerEntry("Info", reference);
    const std::uint32_t packet = conversion_->rewriter.Add(pdf::ObjectChange::StreamFrom(
        "<</Type/Metadata/Subtype/XML>>",
        [bytes = Packet()](pdf::ByteSink& sink) { sink.Write(bytes); }));
    reference.clear();
    pdf::AppendReference(reference, packet);
    conversion_->rewriter.SetEntry(conversion_->rewriter.catalog(), "Metadata", reference);
  }

 private:
  void Take(const Property& property, const Object& value, std::string& info) {
    if (!value.IsString()) {
      return;
    }
    std::string text = pdf::TextStringToUtf8(value.Text());
    while (!text.empty() && text.back() == '\0') {
      text.pop_back();
    }
    if (property.form == Form::kDate) {
      const std::optional<std::string> date = IsoDateOf(text);
      if (!date) {
        return;
      }
      pdf::AppendName(info, property.key);
      pdf::AppendObject(info, value);
      text = *date;
    } else {
      pdf::AppendName(info, property.key);
      pdf::AppendString(info, pdf::Utf8ToTextString(text), false);
    }
    AddProperty(property, XmlText(text));
  }

  void AddProperty(const Property& property, const std::string& text) {
    const std::string name(property.name);
    std::string value = text;
    if (property.form == Form::kLanguages) {
      value = "<rdf:Alt><rdf:li xml:lang=\"x-default\">" + text + "</rdf:li></rdf:Alt>";
    } else if (property.form == Form::kList) {
      value = "<rdf:Seq><rdf:li>" + text + "</rdf:li></rdf:Seq>";
    }
    properties_ += "<" + name + ">" + value + "</" + name + ">\n";
  }

  std::string Packet() const {
    std::string level = "<pdfaid:part>" + std::to_string(PartOf(conversion_->level)) +
                        "</pdfaid:part>\n<pdfaid:conformance>";
    level += static_cast<char>(ConformanceOf(conversion_->level) - 'a' + 'A');
    return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
           "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
           "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
           "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
           "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\" "
           "xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n" +
           level + "</pdfaid:conformance>\n" + properties_ +
           "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>";
  }

  Conversion* conversion_;
  Arena arena_;
  std::string properties_;
};

}  // namespace

void MendMetadata(Conversion& conversion) {
  MetadataMender(conversion).Mend();
}

}  // namespace TarnixTools::engines::pdfa
