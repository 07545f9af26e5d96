#include "engines/support/images/DocumentImage.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engines/support/pictures/PictureLimits.h"
#include "pdf/file/StreamFilters.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

struct Abbreviation {
  std::string_view short_name;
  std::string_view name;
};

// ISO 32000-2, tables 91 and 92.
constexpr std::array kKeys = {Abbreviation{"BPC", "BitsPerComponent"},
                              Abbreviation{"CS", "ColorSpace"},
                              Abbreviation{"D", "Decode"},
                              Abbreviation{"DP", "DecodeParms"},
                              Abbreviation{"F", "Filter"},
                              Abbreviation{"H", "Height"},
                              Abbreviation{"IM", "ImageMask"},
                              Abbreviation{"I", "Interpolate"},
                              Abbreviation{"W", "Width"}};
constexpr std::array kColorSpaces = {
    Abbreviation{"G", "DeviceGray"}, Abbreviation{"RGB", "DeviceRGB"},
    Abbreviation{"CMYK", "DeviceCMYK"}, Abbreviation{"I", "Indexed"}};
constexpr std::array kFilters = {
    Abbreviation{"AHx", "ASCIIHexDecode"}, Abbreviation{"A85", "ASCII85Decode"},
    Abbreviation{"LZW", "LZWDecode"},      Abbreviation{"Fl", "FlateDecode"},
    Abbreviation{"RL", "RunLengthDecode"}, Abbreviation{"CCF", "CCITTFaxDecode"},
    Abbreviation{"DCT", "DCTDecode"}};

struct DeviceSpaceDefault {
  std::string_view name;
  std::string_view default_name;
  std::int64_t components;
};

constexpr std::array kDeviceSpaces = {DeviceSpaceDefault{"DeviceGray", "DefaultGray", 1},
                                      DeviceSpaceDefault{"DeviceRGB", "DefaultRGB", 3},
                                      DeviceSpaceDefault{"DeviceCMYK", "DefaultCMYK", 4}};

template <typename Table>
std::string_view FullName(const Table& table, std::string_view name) {
  const auto* const found =
      std::find_if(table.begin(), table.end(),
                   [&](const Abbreviation& entry) { return entry.short_name == name; });
  return found != table.end() ? found->name : name;
}

class InlineNames {
 public:
  InlineNames(pdf::Document& document, const Object& resources, pdf::Arena& arena)
      : document_(&document), resources_(&resources), arena_(&arena) {}

  Object ColorSpace(const Object& value) const {
    if (value.IsName()) {
      return Named(value.Text());
    }
    std::vector<Object> items(value.Items().begin(), value.Items().end());
    for (std::size_t i = 0; i < items.size() && i < 2; ++i) {
      if (items[i].IsName()) {
        items[i] = Named(items[i].Text());
      }
    }
    return Object::Array(arena_->CopyItems(std::span<const Object>(items)));
  }

  Object Filter(const Object& value) const {
    if (value.IsName()) {
      return Object::Name(FullName(kFilters, value.Text()));
    }
    std::vector<Object> items;
    for (const Object& item : value.Items()) {
      items.push_back(Filter(item));
    }
    return Object::Array(arena_->CopyItems(std::span<const Object>(items)));
  }

 private:
  Object Named(std::string_view name) const {
    const std::string_view full = FullName(kColorSpaces, name);
    if (full != name || full.starts_with("Device")) {
      return Object::Name(full);
    }
    const Object spaces = document_->Resolve(resources_->Get("ColorSpace"), *arena_);
    const Object found = document_->Resolve(spaces.Get(name), *arena_);
    return found.IsNull() ? Object::Name(name) : found;
  }

  pdf::Document* document_;
  const Object* resources_;
  pdf::Arena* arena_;
};

ImageFilter ImageFilterOf(std::string_view name) {
  if (name == "DCTDecode" || name == "DCT") {
    return ImageFilter::kDct;
  }
  if (name == "JPXDecode") {
    return ImageFilter::kJpx;
  }
  if (name == "CCITTFaxDecode" || name == "CCF") {
    return ImageFilter::kCcitt;
  }
  return name == "JBIG2Decode" ? ImageFilter::kJbig2 : ImageFilter::kUnknown;
}

class FactsReader {
 public:
  FactsReader(const DocumentImage& image, pdf::Arena& arena)
      : image_(&image), document_(image.document), arena_(&arena) {}

  ImageFacts Read() {
    facts_.width = Side("Width");
    facts_.height = Side("Height");
    facts_.is_mask = Value("ImageMask").BooleanOr(false);
    facts_.bits = facts_.is_mask ? 1 : Bits();
    if (!facts_.is_mask) {
      facts_.color_space = WithDefaults(Value("ColorSpace"));
      ReadMasks();
      for (const Object& item : Value("Matte").Items()) {
        facts_.matte.push_back(document_->Resolve(item, *arena_).NumberOr(0));
      }
    }
    ReadFilters();
    ReadDecode();
    return std::move(facts_);
  }

 private:
  Object Value(std::string_view key) {
    return document_->Resolve(image_->dictionary.Get(key), *arena_);
  }

  std::uint32_t Side(std::string_view key) {
    const std::int64_t side = Value(key).IntegerOr(0);
    return side >= 1 && side <= limits::kMaxSide ? static_cast<std::uint32_t>(side) : 0;
  }

  int Bits() {
    const std::int64_t bits = Value("BitsPerComponent").IntegerOr(8);
    return bits == 1 || bits == 2 || bits == 4 || bits == 16 ? static_cast<int>(bits) : 8;
  }

  // Device colour spaces may stand for others.
  Object WithDefaults(const Object& space) {
    if (space.IsName()) {
      const Object found = DefaultOf(space.Text());
      facts_.has_default_space = !found.IsNull();
      return found.IsNull() ? space : found;
    }
    std::vector<Object> items(space.Items().begin(), space.Items().end());
    if (items.size() > 1 && items[0].IsName("Indexed")) {
      const Object found = DefaultOf(document_->Resolve(items[1], *arena_).Text());
      if (!found.IsNull()) {
        facts_.has_default_space = true;
        items[1] = found;
        return Object::Array(arena_->CopyItems(std::span<const Object>(items)));
      }
    }
    return space;
  }

  Object DefaultOf(std::string_view name) {
    for (const DeviceSpaceDefault& device : kDeviceSpaces) {
      if (device.name == name) {
        const Object found =
            document_->Resolve(image_->color_spaces.Get(device.default_name), *arena_);
        return ComponentsOf(found) == device.components ? found : Object();
      }
    }
    return {};
  }

  // 0 for what does not stand for a device colour space.
  std::int64_t ComponentsOf(const Object& space) {
    const auto items = space.Items();
    const Object family = items.empty() ? Object() : document_->Resolve(items[0], *arena_);
    if (family.IsName("ICCBased") && items.size() > 1) {
      const Object profile = document_->Resolve(items[1], *arena_);
      return document_->Resolve(profile.Get("N"), *arena_).IntegerOr(0);
    }
    return family.IsName("CalGray") ? 1 : family.IsName("CalRGB") ? 3 : 0;
  }

  // A dictionary's own reference would do as well, but only a stream has samples.
  std::uint32_t StreamNumber(std::string_view key) {
    const Object value = image_->dictionary.Get(key);
    const std::uint32_t number = value.AsReference().number;
    return value.IsReference() && number != image_->number && document_->IsStream(number) ? number
                                                                                          : 0;
  }

  void ReadMasks() {
    facts_.soft_mask = StreamNumber("SMask");
    facts_.uses_jpx_alpha = Value("SMaskInData").IntegerOr(0) > 0;
    if (facts_.soft_mask != 0) {
      return;  // it overrides /Mask (ISO 32000-2, 11.6.5.2)
    }
    facts_.stencil_mask = StreamNumber("Mask");
    for (const Object& item : Value("Mask").Items()) {
      facts_.color_key.push_back(document_->Resolve(item, *arena_).IntegerOr(-1));
    }
  }

  void ReadFilters() {
    facts_.steps = pdf::FilterStepsOf(image_->dictionary, [this](const Object& value) {
      return document_->Resolve(value, *arena_);
    });
    std::erase_if(facts_.steps,
                  [](const pdf::FilterStep& step) { return step.kind == pdf::FilterKind::kCrypt; });
    const auto odd =
        std::find_if(facts_.steps.begin(), facts_.steps.end(), [](const pdf::FilterStep& step) {
          return step.kind == pdf::FilterKind::kImage || step.kind == pdf::FilterKind::kUnknown;
        });
    if (odd == facts_.steps.end()) {
      return;
    }
    const bool is_last = odd + 1 == facts_.steps.end();
    facts_.filter = is_last ? ImageFilterOf(LastOf(Value("Filter")).Text()) : ImageFilter::kUnknown;
    facts_.steps.erase(odd, facts_.steps.end());
    facts_.filter_parameters = LastOf(Value("DecodeParms"));
  }

  // The last item of an array; anything else as it is.
  Object LastOf(const Object& value) {
    return value.IsArray() && !value.Items().empty()
               ? document_->Resolve(value.Items().back(), *arena_)
               : value;
  }

  void ReadDecode() {
    for (const Object& item : Value("Decode").Items()) {
      facts_.decode.push_back(document_->Resolve(item, *arena_).NumberOr(0));
    }
    bool is_default = true;
    for (std::size_t i = 0; i < facts_.decode.size(); ++i) {
      is_default = is_default && facts_.decode[i] == static_cast<double>(i % 2);
    }
    const bool is_indexed = facts_.color_space.IsArray() && !facts_.color_space.Items().empty() &&
                            facts_.color_space.Items()[0].IsName("Indexed");
    if (is_default && !is_indexed) {
      facts_.decode.clear();
    }
  }

  const DocumentImage* image_;
  pdf::Document* document_;
  pdf::Arena* arena_;
  ImageFacts facts_;
};

}  // namespace

DocumentImage ImageObjectOf(pdf::Document& document, std::uint32_t number, pdf::Arena& arena) {
  return {.document = &document,
          .number = number,
          .dictionary = document.Load({.number = number, .generation = 0}, arena),
          .data = {},
          .color_spaces = {}};
}

Object FullInlineDictionary(pdf::Document& document, const Object& entries, const Object& resources,
                            pdf::Arena& arena) {
  const InlineNames names(document, resources, arena);
  std::vector<pdf::DictionaryEntry> full;
  for (const pdf::DictionaryEntry& entry : entries.Entries()) {
    const std::string_view key = FullName(kKeys, entry.Key());
    Object value = entry.value;
    if (key == "ColorSpace") {
      value = names.ColorSpace(value);
    } else if (key == "Filter") {
      value = names.Filter(value);
    }
    full.push_back({Object::Name(arena.CopyText(key)), value});
  }
  return Object::Dictionary(arena.CopyItems(std::span<const pdf::DictionaryEntry>(full)));
}

ImageFacts FactsOf(const DocumentImage& image, pdf::Arena& arena) {
  return FactsReader(image, arena).Read();
}

void CopyEncoded(const DocumentImage& image, pdf::ByteSink& sink, std::uint64_t most) {
  if (image.number == 0) {
    sink.Write(image.data.substr(
        0, static_cast<std::size_t>(std::min<std::uint64_t>(most, image.data.size()))));
    return;
  }
  image.document->CopyStreamData(image.number, sink, most);
}

std::string EncodedData(const DocumentImage& image, std::size_t max_bytes) {
  if (image.number == 0) {
    return std::string(image.data);
  }
  const std::optional<pdf::StreamData> stream = image.document->StreamOf(image.number);
  return stream ? image.document->ReadStreamData(*stream, max_bytes) : std::string();
}

std::string DecodeToImageFilter(const DocumentImage& image, const ImageFacts& facts,
                                std::size_t max_bytes) {
  std::string encoded = EncodedData(image, max_bytes);
  return facts.steps.empty() ? std::move(encoded)
                             : pdf::Decode(facts.steps, encoded, max_bytes).data;
}

}  // namespace TarnixTools::engines
