// What the XMP Specification defines, each property and each field of a structure by an example.
#include <cctype>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/metadata/XmpSchemas.h"
#include "engines/support/metadata/XmpTypes.h"

namespace TarnixTools::engines {
namespace {

struct SchemaRow {
  const char* name_space;
  const char* properties;  // "type: name name; type: name; "
  const char* since_2005;
};

constexpr SchemaRow kRows[] = {
    {"http://purl.org/dc/elements/1.1/",
     "bag propername: contributor publisher; "
     "text: coverage identifier source; "
     "seq propername: creator; "
     "seq date: date; "
     "lang alt: description rights title; "
     "mimetype: format; "
     "bag locale: language; "
     "bag text: relation subject type; ",
     ""},
    {"http://ns.adobe.com/xap/1.0/",
     "bag xpath: Advisory; "
     "url: BaseURL; "
     "date: CreateDate MetadataDate ModifyDate; "
     "agentname: CreatorTool; "
     "bag text: Identifier; "
     "text: Nickname; "
     "alt thumbnail: Thumbnails; ",
     "text: Label; "
     "integer: Rating; "},
    {"http://ns.adobe.com/xap/1.0/rights/",
     "url: Certificate WebStatement; "
     "boolean: Marked; "
     "bag propername: Owner; "
     "lang alt: UsageTerms; ",
     ""},
    {"http://ns.adobe.com/xap/1.0/mm/",
     "resourceref: DerivedFrom ManagedFrom RenditionOf; "
     "uri: DocumentID InstanceID ManageTo ManageUI; "
     "seq resourceevent: History; "
     "url: LastURL; "
     "agentname: Manager; "
     "text: ManagerVariant RenditionParams VersionID; "
     "renditionclass: RenditionClass; "
     "integer: SaveID; "
     "seq version: Versions; ",
     ""},
    {"http://ns.adobe.com/xap/1.0/bj/", "bag job: JobRef; ", ""},
    {"http://ns.adobe.com/xap/1.0/t/pg/",
     "dimensions: MaxPageSize; "
     "integer: NPages; ",
     "seq colorant: Colorants; "
     "bag font: Fonts; "
     "seq text: PlateNames; "},
    {"http://ns.adobe.com/xmp/1.0/DynamicMedia/", "",
     "uri: absPeakAudioFilePath relativePeakAudioFilePath; "
     "text: album altTapeName artist audioChannelType audioCompressor audioSampleType composer "
     "copyright engineer genre instrument key logComment pullDown scaleType scene shotLocation "
     "shotName speakerPlacement stretchMode tapeName timeSignature videoAlphaMode "
     "videoColorSpace videoCompressor videoFieldOrder videoFrameRate videoPixelDepth; "
     "timecode: altTimecode startTimecode; "
     "date: audioModDate metadataModDate releaseDate shotDate videoModDate; "
     "integer: audioSampleRate trackNumber; "
     "beatsplicestretch: beatSpliceParams; "
     "bag media: contributedMedia; "
     "time: duration introTime outCue relativeTimestamp; "
     "rational: fileDataRate videoPixelAspectRatio; "
     "boolean: loop videoAlphaUnityIsTransparent; "
     "seq marker: markers; "
     "real: numberOfBeats tempo; "
     "projectlink: projectRef; "
     "resamplestretch: resampleParams; "
     "timescalestretch: timeScaleParams; "
     "colorant: videoAlphaPremultipleColor; "
     "dimensions: videoFrameSize; "},
    {"http://ns.adobe.com/pdf/1.3/",
     "text: Keywords PDFVersion; "
     "agentname: Producer; ",
     ""},
    {"http://ns.adobe.com/photoshop/1.0/",
     "text: AuthorsPosition Category City Country Credit Headline Instructions Source State "
     "TransmissionReference; "
     "propername: CaptionWriter; "
     "date: DateCreated; "
     "bag text: SupplementalCategories; "
     "integer: Urgency; ",
     ""},
    {"http://ns.adobe.com/camera-raw-settings/1.0/", "",
     "boolean: AutoBrightness AutoContrast AutoExposure AutoShadows HasCrop HasSettings; "
     "integer: BlueHue BlueSaturation Brightness ChromaticAberrationB ChromaticAberrationR "
     "ColorNoiseReduction Contrast CropUnits GreenHue GreenSaturation LuminanceSmoothing RedHue "
     "RedSaturation Saturation ShadowTint Shadows Sharpness Temperature Tint VignetteAmount "
     "VignetteMidpoint; "
     "text: CameraProfile RawFileName ToneCurveName Version WhiteBalance; "
     "real: CropAngle CropBottom CropHeight CropLeft CropRight CropTop CropWidth Exposure; "
     "seq text: ToneCurve; "},
    {"http://ns.adobe.com/tiff/1.0/",
     "propername: Artist Make Model; "
     "seq integer: BitsPerSample TransferFunction YCbCrSubSampling; "
     "integer: Compression ImageLength ImageWidth Orientation PhotometricInterpretation "
     "PlanarConfiguration ResolutionUnit SamplesPerPixel YCbCrPositioning; "
     "lang alt: Copyright ImageDescription; "
     "date: DateTime; "
     "seq rational: PrimaryChromaticities ReferenceBlackWhite WhitePoint YCbCrCoefficients; "
     "agentname: Software; "
     "rational: XResolution YResolution; ",
     ""},
    {"http://ns.adobe.com/exif/1.0/",
     "rational: ApertureValue BrightnessValue CompressedBitsPerPixel DigitalZoomRatio "
     "ExposureBiasValue ExposureIndex ExposureTime FNumber FlashEnergy FocalLength "
     "FocalPlaneXResolution FocalPlaneYResolution GPSAltitude GPSDOP GPSDestBearing "
     "GPSDestDistance GPSImgDirection GPSSpeed GPSTrack MaxApertureValue ShutterSpeedValue "
     "SubjectDistance; "
     "cfapattern: CFAPattern; "
     "integer: ColorSpace Contrast CustomRendered ExposureMode ExposureProgram FileSource "
     "FocalLengthIn35mmFilm FocalPlaneResolutionUnit GPSAltitudeRef GPSDifferential GainControl "
     "LightSource MeteringMode PixelXDimension PixelYDimension Saturation SceneCaptureType "
     "SceneType SensingMethod Sharpness SubjectDistanceRange WhiteBalance; "
     "seq integer: ComponentsConfiguration ISOSpeedRatings SubjectArea SubjectLocation; "
     "date: DateTimeDigitized DateTimeOriginal GPSTimeStamp; "
     "devicesettings: DeviceSettingDescription; "
     "text: ExifVersion FlashpixVersion GPSAreaInformation GPSDestBearingRef GPSDestDistanceRef "
     "GPSImgDirectionRef GPSMapDatum GPSMeasureMode GPSProcessingMethod GPSSatellites "
     "GPSSpeedRef GPSStatus GPSTrackRef GPSVersionID ImageUniqueID MakerNote RelatedSoundFile "
     "SpectralSensitivity; "
     "flash: Flash; "
     "gpscoordinate: GPSDestLatitude GPSDestLongitude GPSLatitude GPSLongitude; "
     "oecf/sfr: OECF SpatialFrequencyResponse; "
     "lang alt: UserComment; ",
     ""},
    {"http://ns.adobe.com/exif/1.0/aux/", "", "text: Lens SerialNumber; "},
    {"http://www.aiim.org/pdfa/ns/id/",
     "text: amd conformance; "
     "integer: part; ",
     "text: corr; "},
    {"http://www.aiim.org/pdfa/ns/extension/", "bag schema: schemas; ", ""},
};

struct StructureRow {
  const char* type;
  const char* name_space;
  const char* fields;
};

constexpr StructureRow kStructures[] = {
    {"dimensions", "http://ns.adobe.com/xap/1.0/sType/Dimensions#",
     "real: h w; "
     "text: unit; "},
    {"thumbnail", "http://ns.adobe.com/xap/1.0/g/img/",
     "text: format image; "
     "integer: height width; "},
    {"resourceevent", "http://ns.adobe.com/xap/1.0/sType/ResourceEvent#",
     "text: action parameters; "
     "uri: instanceID; "
     "agentname: softwareAgent; "
     "date: when; "},
    {"resourceref", "http://ns.adobe.com/xap/1.0/sType/ResourceRef#",
     "uri: documentID instanceID manageTo manageUI; "
     "agentname: manager; "
     "text: managerVariant renditionParams versionID; "
     "renditionclass: renditionClass; "},
    {"version", "http://ns.adobe.com/xap/1.0/sType/Version#",
     "text: comments version; "
     "resourceevent: event; "
     "propername: modifier; "
     "date: modifyDate; "},
    {"job", "http://ns.adobe.com/xap/1.0/sType/Job#",
     "text: id name; "
     "url: url; "},
    {"colorant", "http://ns.adobe.com/xap/1.0/g/",
     "integer: A B blue green red; "
     "real: L black cyan magenta yellow; "
     "text: mode swatchName type; "},
    {"font", "http://ns.adobe.com/xap/1.0/sType/Font#",
     "seq text: childFontFiles; "
     "boolean: composite; "
     "text: fontFace fontFamily fontFileName fontName fontType versionString; "},
    {"flash", "http://ns.adobe.com/exif/1.0/",
     "boolean: Fired Function RedEyeMode; "
     "integer: Mode Return; "},
    {"oecf/sfr", "http://ns.adobe.com/exif/1.0/",
     "integer: Columns Rows; "
     "seq text: Names; "
     "seq rational: Values; "},
    {"cfapattern", "http://ns.adobe.com/exif/1.0/",
     "integer: Columns Rows; "
     "seq integer: Values; "},
    {"devicesettings", "http://ns.adobe.com/exif/1.0/",
     "integer: Columns Rows; "
     "seq text: Settings; "},
    {"projectlink", "http://ns.adobe.com/xmp/1.0/DynamicMedia/",
     "uri: path; "
     "text: type; "},
    {"media", "http://ns.adobe.com/xmp/1.0/DynamicMedia/",
     "time: duration startTime; "
     "boolean: managed; "
     "uri: path webStatement; "
     "text: track; "},
    {"time", "http://ns.adobe.com/xmp/1.0/DynamicMedia/",
     "rational: scale; "
     "integer: value; "},
    {"timecode", "http://ns.adobe.com/xmp/1.0/DynamicMedia/", "text: timeFormat timeValue; "},
    {"marker", "http://ns.adobe.com/xmp/1.0/DynamicMedia/",
     "text: comment name target type; "
     "time: duration startTime; "
     "uri: location; "},
    {"resamplestretch", "http://ns.adobe.com/xmp/1.0/DynamicMedia/", "text: quality; "},
    {"timescalestretch", "http://ns.adobe.com/xmp/1.0/DynamicMedia/",
     "real: frameOverlappingPercentage frameSize; "
     "text: quality; "},
    {"beatsplicestretch", "http://ns.adobe.com/xmp/1.0/DynamicMedia/",
     "real: riseInDecibel; "
     "time: riseInTimeDuration; "
     "boolean: useFileBeatsMarker; "},
};

struct Definition {
  std::string type;
  std::string name;
};

std::vector<Definition> DefinitionsOf(const std::string& rows) {
  std::vector<Definition> definitions;
  std::istringstream stream(rows);
  std::string type;
  for (std::string word; stream >> word;) {
    const bool ends_type = word.back() == ':';
    const bool ends_row = word.back() == ';';
    const std::string plain = word.substr(0, word.size() - (ends_type || ends_row ? 1 : 0));
    const bool is_array = plain == "bag" || plain == "seq" || plain == "alt" || plain == "lang";
    if (ends_type || is_array) {
      type += plain + (ends_type ? "" : " ");
    } else {
      definitions.push_back({type, plain});
    }
    type = ends_row ? "" : type;
  }
  return definitions;
}

const StructureRow* StructureOf(const std::string& type) {
  for (const StructureRow& row : kStructures) {
    if (row.type == type) {
      return &row;
    }
  }
  return nullptr;
}

// A value as it stands between the tags of its property, with the attributes of the first one.
struct Value {
  std::string attributes;
  std::string content;
};

std::string Tagged(const std::string& name, const Value& value) {
  return "<" + name + value.attributes + ">" + value.content + "</" + name + ">";
}

// Examples of simple types; what takes any text takes no array.
std::string SimpleExample(const std::string& type, bool is_right) {
  const std::map<std::string, std::pair<std::string, std::string>> examples = {
      {"integer", {"-3", "3.5"}},
      {"real", {"3.5", "3,5"}},
      {"rational", {"1/2", "0.5"}},
      {"boolean", {"True", "yes"}},
      {"date", {"2020-02-03", "3.2.2020"}},
      {"mimetype", {"text/plain", "plain"}},
      {"gpscoordinate", {"67,19,26S", "67"}}};
  const auto found = examples.find(type);
  if (found == examples.end()) {
    return is_right ? "any text" : "<rdf:Bag><rdf:li>x</rdf:li></rdf:Bag>";
  }
  return is_right ? found->second.first : found->second.second;
}

Value ExampleOf(const std::string& type, bool is_right, int depth = 0);

// With all of its fields, of which the last is wrong in a wrong one.
Value StructureExample(const StructureRow& row, bool is_right, int depth = 0) {
  const std::string prefix = "f" + std::to_string(depth);
  Value value{" rdf:parseType='Resource' xmlns:" + prefix + "='" + row.name_space + "'", ""};
  const std::vector<Definition> fields = DefinitionsOf(row.fields);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    value.content +=
        Tagged(prefix + ":" + fields[i].name,
               ExampleOf(fields[i].type, is_right || i + 1 < fields.size(), depth + 1));
  }
  return value;
}

Value ExampleOf(const std::string& type, bool is_right, int depth) {
  if (type == "lang alt") {
    const std::string language = is_right ? " xml:lang='x-default'" : "";
    return {"", "<rdf:Alt><rdf:li" + language + ">x</rdf:li></rdf:Alt>"};
  }
  const std::size_t space = type.find(' ');
  if (space != std::string::npos) {
    std::string kind = type.substr(0, space);
    kind[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(kind[0])));
    return {"", Tagged("rdf:" + kind,
                       {"", Tagged("rdf:li", ExampleOf(type.substr(space + 1), is_right, depth))})};
  }
  const StructureRow* row = StructureOf(type);
  return row != nullptr ? StructureExample(*row, is_right, depth)
                        : Value{"", SimpleExample(type, is_right)};
}

bool IsOf(const std::string& type, const Value& value) {
  const XmpTree tree = ReadXmp(
      "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' xmlns:s='http://s/'>"
      "<rdf:Description rdf:about=''>" +
      Tagged("s:a", value) + "</rdf:Description></rdf:RDF>");
  EXPECT_EQ(tree.state, XmpState::kFine) << value.content;
  return tree.state == XmpState::kFine && IsOfXmpType(tree.properties.front(), type, {});
}

void ExpectProperty(const SchemaRow& row, const Definition& wanted, XmpRelease since) {
  SCOPED_TRACE(row.name_space + wanted.name);
  for (const XmpRelease release : {XmpRelease::k2004, XmpRelease::k2005}) {
    const XmpDefinition* found = FindXmpProperty(release, row.name_space, wanted.name);
    ASSERT_EQ(found != nullptr, since <= release);
    if (found != nullptr) {
      const std::string type(found->type);
      EXPECT_EQ(type, wanted.type);
      EXPECT_EQ(found->name, wanted.name);
      // What it describes are schemas, not their values.
      if (type != "bag schema") {
        EXPECT_TRUE(IsOf(type, ExampleOf(wanted.type, true)));
        EXPECT_FALSE(IsOf(type, ExampleOf(wanted.type, false)));
      }
    }
  }
}

TEST(XmpSchemas, HaveThesePropertiesOfTheseTypes) {
  std::size_t count = 0;
  for (const SchemaRow& row : kRows) {
    for (const Definition& wanted : DefinitionsOf(row.properties)) {
      ExpectProperty(row, wanted, XmpRelease::k2004);
      ++count;
    }
    for (const Definition& wanted : DefinitionsOf(row.since_2005)) {
      ExpectProperty(row, wanted, XmpRelease::k2005);
      ++count;
    }
    EXPECT_EQ(FindXmpProperty(XmpRelease::k2005, row.name_space, "Unheard"), nullptr);
  }
  EXPECT_GT(count, 270U);
}

TEST(XmpStructures, HaveTheseFieldsOfTheseTypes) {
  for (const StructureRow& row : kStructures) {
    SCOPED_TRACE(row.type);
    const XmpStructure* found = FindXmpStructure(row.type);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->name_space, row.name_space);
    EXPECT_EQ(found->fields.size(), DefinitionsOf(row.fields).size());
    for (const Definition& field : DefinitionsOf(row.fields)) {
      SCOPED_TRACE(field.name);
      const std::string of_field = field.type + ": " + field.name + ";";
      const StructureRow only = {row.type, row.name_space, of_field.c_str()};
      EXPECT_TRUE(IsOf(row.type, StructureExample(only, true)));
      EXPECT_FALSE(IsOf(row.type, StructureExample(only, false)));
      const StructureRow elsewhere = {row.type, "http://s/", of_field.c_str()};
      EXPECT_FALSE(IsOf(row.type, StructureExample(elsewhere, true)));
    }
    const StructureRow unheard = {row.type, row.name_space, "text: unheard;"};
    EXPECT_FALSE(IsOf(row.type, StructureExample(unheard, true)));
    EXPECT_FALSE(IsOf(row.type, {"", "x"}));
  }
  EXPECT_EQ(FindXmpStructure("unheard"), nullptr);
}

// Of those whose values may be anything, an array is the only wrong one.
TEST(XmpTypes, KnowTheseNames) {
  for (const char* name : {"text", "propername", "agentname", "uri", "url", "guid", "xpath",
                           "renditionclass", "choice", "integer", "real", "rational", "boolean",
                           "date", "mimetype", "locale", "gpscoordinate"}) {
    EXPECT_TRUE(IsKnownXmpType(name, {})) << name;
    EXPECT_TRUE(IsOf(name, {"", SimpleExample(name, true)})) << name;
    EXPECT_FALSE(IsOf(name, {"", SimpleExample(name, false)})) << name;
  }
  for (const char* name : {"", "texts", "bag", "lang", "unheard", "bag unheard"}) {
    EXPECT_FALSE(IsKnownXmpType(name, {})) << name;
  }
}

}  // namespace
}  // namespace TarnixTools::engines
