#include <algorithm>
#include <iterator>

#include "engines/support/metadata/XmpSchemas.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kDimensions = "http://ns.adobe.com/xap/1.0/sType/Dimensions#";
constexpr std::string_view kThumbnail = "http://ns.adobe.com/xap/1.0/g/img/";
constexpr std::string_view kResourceEvent = "http://ns.adobe.com/xap/1.0/sType/ResourceEvent#";
constexpr std::string_view kResourceRef = "http://ns.adobe.com/xap/1.0/sType/ResourceRef#";
constexpr std::string_view kVersion = "http://ns.adobe.com/xap/1.0/sType/Version#";
constexpr std::string_view kJob = "http://ns.adobe.com/xap/1.0/sType/Job#";
constexpr std::string_view kColorant = "http://ns.adobe.com/xap/1.0/g/";
constexpr std::string_view kFont = "http://ns.adobe.com/xap/1.0/sType/Font#";
constexpr std::string_view kExif = "http://ns.adobe.com/exif/1.0/";
constexpr std::string_view kDynamicMedia = "http://ns.adobe.com/xmp/1.0/DynamicMedia/";

constexpr XmpDefinition kDimensionsFields[] = {
    {"h", "real"},
    {"unit", "text"},
    {"w", "real"},
};

constexpr XmpDefinition kThumbnailFields[] = {
    {"format", "text"},
    {"height", "integer"},
    {"image", "text"},
    {"width", "integer"},
};

constexpr XmpDefinition kResourceEventFields[] = {
    {"action", "text"},     {"instanceID", "uri"},
    {"parameters", "text"}, {"softwareAgent", "agentname"},
    {"when", "date"},
};

constexpr XmpDefinition kResourceRefFields[] = {
    {"documentID", "uri"},
    {"instanceID", "uri"},
    {"manageTo", "uri"},
    {"manageUI", "uri"},
    {"manager", "agentname"},
    {"managerVariant", "text"},
    {"renditionClass", "renditionclass"},
    {"renditionParams", "text"},
    {"versionID", "text"},
};

constexpr XmpDefinition kVersionFields[] = {
    {"comments", "text"},   {"event", "resourceevent"}, {"modifier", "propername"},
    {"modifyDate", "date"}, {"version", "text"},
};

constexpr XmpDefinition kJobFields[] = {
    {"id", "text"},
    {"name", "text"},
    {"url", "url"},
};

constexpr XmpDefinition kColorantFields[] = {
    {"A", "integer"},    {"B", "integer"},   {"L", "real"},          {"black", "real"},
    {"blue", "integer"}, {"cyan", "real"},   {"green", "integer"},   {"magenta", "real"},
    {"mode", "text"},    {"red", "integer"}, {"swatchName", "text"}, {"type", "text"},
    {"yellow", "real"},
};

constexpr XmpDefinition kFontFields[] = {
    {"childFontFiles", "seq text"}, {"composite", "boolean"},  {"fontFace", "text"},
    {"fontFamily", "text"},         {"fontFileName", "text"},  {"fontName", "text"},
    {"fontType", "text"},           {"versionString", "text"},
};

constexpr XmpDefinition kFlashFields[] = {
    {"Fired", "boolean"},      {"Function", "boolean"}, {"Mode", "integer"},
    {"RedEyeMode", "boolean"}, {"Return", "integer"},
};

constexpr XmpDefinition kResponseFields[] = {
    {"Columns", "integer"},
    {"Names", "seq text"},
    {"Rows", "integer"},
    {"Values", "seq rational"},
};

constexpr XmpDefinition kCfaPatternFields[] = {
    {"Columns", "integer"},
    {"Rows", "integer"},
    {"Values", "seq integer"},
};

constexpr XmpDefinition kDeviceSettingsFields[] = {
    {"Columns", "integer"},
    {"Rows", "integer"},
    {"Settings", "seq text"},
};

constexpr XmpDefinition kProjectLinkFields[] = {
    {"path", "uri"},
    {"type", "text"},
};

constexpr XmpDefinition kMediaFields[] = {
    {"duration", "time"},  {"managed", "boolean"}, {"path", "uri"},
    {"startTime", "time"}, {"track", "text"},      {"webStatement", "uri"},
};

constexpr XmpDefinition kTimeFields[] = {
    {"scale", "rational"},
    {"value", "integer"},
};

constexpr XmpDefinition kTimecodeFields[] = {
    {"timeFormat", "text"},
    {"timeValue", "text"},
};

constexpr XmpDefinition kMarkerFields[] = {
    {"comment", "text"},   {"duration", "time"}, {"location", "uri"}, {"name", "text"},
    {"startTime", "time"}, {"target", "text"},   {"type", "text"},
};

constexpr XmpDefinition kResampleFields[] = {
    {"quality", "text"},
};

constexpr XmpDefinition kTimeScaleFields[] = {
    {"frameOverlappingPercentage", "real"},
    {"frameSize", "real"},
    {"quality", "text"},
};

constexpr XmpDefinition kBeatSpliceFields[] = {
    {"riseInDecibel", "real"},
    {"riseInTimeDuration", "time"},
    {"useFileBeatsMarker", "boolean"},
};

constexpr XmpStructure kStructures[] = {
    {"dimensions", kDimensions, kDimensionsFields},
    {"thumbnail", kThumbnail, kThumbnailFields},
    {"resourceevent", kResourceEvent, kResourceEventFields},
    {"resourceref", kResourceRef, kResourceRefFields},
    {"version", kVersion, kVersionFields},
    {"job", kJob, kJobFields},
    {"colorant", kColorant, kColorantFields},
    {"font", kFont, kFontFields},
    {"flash", kExif, kFlashFields},
    {"oecf/sfr", kExif, kResponseFields},
    {"cfapattern", kExif, kCfaPatternFields},
    {"devicesettings", kExif, kDeviceSettingsFields},
    {"projectlink", kDynamicMedia, kProjectLinkFields},
    {"media", kDynamicMedia, kMediaFields},
    {"time", kDynamicMedia, kTimeFields},
    {"timecode", kDynamicMedia, kTimecodeFields},
    {"marker", kDynamicMedia, kMarkerFields},
    {"resamplestretch", kDynamicMedia, kResampleFields},
    {"timescalestretch", kDynamicMedia, kTimeScaleFields},
    {"beatsplicestretch", kDynamicMedia, kBeatSpliceFields},
};

}  // namespace

const XmpStructure* FindXmpStructure(std::string_view type) {
  const auto found =
      std::find_if(std::begin(kStructures), std::end(kStructures),
                   [&](const XmpStructure& structure) { return structure.name == type; });
  return found == std::end(kStructures) ? nullptr : &*found;
}

}  // namespace TarnixTools::engines
