#include "engines/support/metadata/XmpSchemas.h"

#include <algorithm>

#include "engines/support/metadata/XmpNames.h"

namespace TarnixTools::engines {

namespace {

constexpr XmpRelease k2005 = XmpRelease::k2005;

// Choices are of the type that is chosen from; the specifications leave most of them open.
constexpr XmpDefinition kDcProperties[] = {
    {"contributor", "bag propername"},
    {"coverage", "text"},
    {"creator", "seq propername"},
    {"date", "seq date"},
    {"description", "lang alt"},
    {"format", "mimetype"},
    {"identifier", "text"},
    {"language", "bag locale"},
    {"publisher", "bag propername"},
    {"relation", "bag text"},
    {"rights", "lang alt"},
    {"source", "text"},
    {"subject", "bag text"},
    {"title", "lang alt"},
    {"type", "bag text"},
};

constexpr XmpDefinition kXmpProperties[] = {
    {"Advisory", "bag xpath"},
    {"BaseURL", "url"},
    {"CreateDate", "date"},
    {"CreatorTool", "agentname"},
    {"Identifier", "bag text"},
    {"Label", "text", k2005},
    {"MetadataDate", "date"},
    {"ModifyDate", "date"},
    {"Nickname", "text"},
    {"Rating", "integer", k2005},
    {"Thumbnails", "alt thumbnail"},
};

constexpr XmpDefinition kRightsProperties[] = {
    {"Certificate", "url"},     {"Marked", "boolean"},   {"Owner", "bag propername"},
    {"UsageTerms", "lang alt"}, {"WebStatement", "url"},
};

constexpr XmpDefinition kManagementProperties[] = {
    {"DerivedFrom", "resourceref"},
    {"DocumentID", "uri"},
    {"History", "seq resourceevent"},
    {"InstanceID", "uri"},
    {"LastURL", "url"},
    {"ManageTo", "uri"},
    {"ManageUI", "uri"},
    {"ManagedFrom", "resourceref"},
    {"Manager", "agentname"},
    {"ManagerVariant", "text"},
    {"RenditionClass", "renditionclass"},
    {"RenditionOf", "resourceref"},
    {"RenditionParams", "text"},
    {"SaveID", "integer"},
    {"VersionID", "text"},
    {"Versions", "seq version"},
};

constexpr XmpDefinition kJobsProperties[] = {
    {"JobRef", "bag job"},
};

constexpr XmpDefinition kPagedTextProperties[] = {
    {"Colorants", "seq colorant", k2005}, {"Fonts", "bag font", k2005},
    {"MaxPageSize", "dimensions"},        {"NPages", "integer"},
    {"PlateNames", "seq text", k2005},
};

constexpr XmpDefinition kMediaProperties[] = {
    {"absPeakAudioFilePath", "uri", k2005},
    {"album", "text", k2005},
    {"altTapeName", "text", k2005},
    {"altTimecode", "timecode", k2005},
    {"artist", "text", k2005},
    {"audioChannelType", "text", k2005},
    {"audioCompressor", "text", k2005},
    {"audioModDate", "date", k2005},
    {"audioSampleRate", "integer", k2005},
    {"audioSampleType", "text", k2005},
    {"beatSpliceParams", "beatsplicestretch", k2005},
    {"composer", "text", k2005},
    {"contributedMedia", "bag media", k2005},
    {"copyright", "text", k2005},
    {"duration", "time", k2005},
    {"engineer", "text", k2005},
    {"fileDataRate", "rational", k2005},
    {"genre", "text", k2005},
    {"instrument", "text", k2005},
    {"introTime", "time", k2005},
    {"key", "text", k2005},
    {"logComment", "text", k2005},
    {"loop", "boolean", k2005},
    {"markers", "seq marker", k2005},
    {"metadataModDate", "date", k2005},
    {"numberOfBeats", "real", k2005},
    {"outCue", "time", k2005},
    {"projectRef", "projectlink", k2005},
    {"pullDown", "text", k2005},
    {"relativePeakAudioFilePath", "uri", k2005},
    {"relativeTimestamp", "time", k2005},
    {"releaseDate", "date", k2005},
    {"resampleParams", "resamplestretch", k2005},
    {"scaleType", "text", k2005},
    {"scene", "text", k2005},
    {"shotDate", "date", k2005},
    {"shotLocation", "text", k2005},
    {"shotName", "text", k2005},
    {"speakerPlacement", "text", k2005},
    {"startTimecode", "timecode", k2005},
    {"stretchMode", "text", k2005},
    {"tapeName", "text", k2005},
    {"tempo", "real", k2005},
    {"timeScaleParams", "timescalestretch", k2005},
    {"timeSignature", "text", k2005},
    {"trackNumber", "integer", k2005},
    {"videoAlphaMode", "text", k2005},
    {"videoAlphaPremultipleColor", "colorant", k2005},
    {"videoAlphaUnityIsTransparent", "boolean", k2005},
    {"videoColorSpace", "text", k2005},
    {"videoCompressor", "text", k2005},
    {"videoFieldOrder", "text", k2005},
    {"videoFrameRate", "text", k2005},
    {"videoFrameSize", "dimensions", k2005},
    {"videoModDate", "date", k2005},
    {"videoPixelAspectRatio", "rational", k2005},
    {"videoPixelDepth", "text", k2005},
};

constexpr XmpDefinition kPdfProperties[] = {
    {"Keywords", "text"},
    {"PDFVersion", "text"},
    {"Producer", "agentname"},
};

constexpr XmpDefinition kPhotoshopProperties[] = {
    {"AuthorsPosition", "text"},
    {"CaptionWriter", "propername"},
    {"Category", "text"},
    {"City", "text"},
    {"Country", "text"},
    {"Credit", "text"},
    {"DateCreated", "date"},
    {"Headline", "text"},
    {"Instructions", "text"},
    {"Source", "text"},
    {"State", "text"},
    {"SupplementalCategories", "bag text"},
    {"TransmissionReference", "text"},
    {"Urgency", "integer"},
};

constexpr XmpDefinition kCameraRawProperties[] = {
    {"AutoBrightness", "boolean", k2005},
    {"AutoContrast", "boolean", k2005},
    {"AutoExposure", "boolean", k2005},
    {"AutoShadows", "boolean", k2005},
    {"BlueHue", "integer", k2005},
    {"BlueSaturation", "integer", k2005},
    {"Brightness", "integer", k2005},
    {"CameraProfile", "text", k2005},
    {"ChromaticAberrationB", "integer", k2005},
    {"ChromaticAberrationR", "integer", k2005},
    {"ColorNoiseReduction", "integer", k2005},
    {"Contrast", "integer", k2005},
    {"CropAngle", "real", k2005},
    {"CropBottom", "real", k2005},
    {"CropHeight", "real", k2005},
    {"CropLeft", "real", k2005},
    {"CropRight", "real", k2005},
    {"CropTop", "real", k2005},
    {"CropUnits", "integer", k2005},
    {"CropWidth", "real", k2005},
    {"Exposure", "real", k2005},
    {"GreenHue", "integer", k2005},
    {"GreenSaturation", "integer", k2005},
    {"HasCrop", "boolean", k2005},
    {"HasSettings", "boolean", k2005},
    {"LuminanceSmoothing", "integer", k2005},
    {"RawFileName", "text", k2005},
    {"RedHue", "integer", k2005},
    {"RedSaturation", "integer", k2005},
    {"Saturation", "integer", k2005},
    {"ShadowTint", "integer", k2005},
    {"Shadows", "integer", k2005},
    {"Sharpness", "integer", k2005},
    {"Temperature", "integer", k2005},
    {"Tint", "integer", k2005},
    {"ToneCurve", "seq text", k2005},
    {"ToneCurveName", "text", k2005},
    {"Version", "text", k2005},
    {"VignetteAmount", "integer", k2005},
    {"VignetteMidpoint", "integer", k2005},
    {"WhiteBalance", "text", k2005},
};

constexpr XmpDefinition kTiffProperties[] = {
    {"Artist", "propername"},
    {"BitsPerSample", "seq integer"},
    {"Compression", "integer"},
    {"Copyright", "lang alt"},
    {"DateTime", "date"},
    {"ImageDescription", "lang alt"},
    {"ImageLength", "integer"},
    {"ImageWidth", "integer"},
    {"Make", "propername"},
    {"Model", "propername"},
    {"Orientation", "integer"},
    {"PhotometricInterpretation", "integer"},
    {"PlanarConfiguration", "integer"},
    {"PrimaryChromaticities", "seq rational"},
    {"ReferenceBlackWhite", "seq rational"},
    {"ResolutionUnit", "integer"},
    {"SamplesPerPixel", "integer"},
    {"Software", "agentname"},
    {"TransferFunction", "seq integer"},
    {"WhitePoint", "seq rational"},
    {"XResolution", "rational"},
    {"YCbCrCoefficients", "seq rational"},
    {"YCbCrPositioning", "integer"},
    {"YCbCrSubSampling", "seq integer"},
    {"YResolution", "rational"},
};

constexpr XmpDefinition kExifProperties[] = {
    {"ApertureValue", "rational"},
    {"BrightnessValue", "rational"},
    {"CFAPattern", "cfapattern"},
    {"ColorSpace", "integer"},
    {"ComponentsConfiguration", "seq integer"},
    {"CompressedBitsPerPixel", "rational"},
    {"Contrast", "integer"},
    {"CustomRendered", "integer"},
    {"DateTimeDigitized", "date"},
    {"DateTimeOriginal", "date"},
    {"DeviceSettingDescription", "devicesettings"},
    {"DigitalZoomRatio", "rational"},
    {"ExifVersion", "text"},
    {"ExposureBiasValue", "rational"},
    {"ExposureIndex", "rational"},
    {"ExposureMode", "integer"},
    {"ExposureProgram", "integer"},
    {"ExposureTime", "rational"},
    {"FNumber", "rational"},
    {"FileSource", "integer"},
    {"Flash", "flash"},
    {"FlashEnergy", "rational"},
    {"FlashpixVersion", "text"},
    {"FocalLength", "rational"},
    {"FocalLengthIn35mmFilm", "integer"},
    {"FocalPlaneResolutionUnit", "integer"},
    {"FocalPlaneXResolution", "rational"},
    {"FocalPlaneYResolution", "rational"},
    {"GPSAltitude", "rational"},
    {"GPSAltitudeRef", "integer"},
    {"GPSAreaInformation", "text"},
    {"GPSDOP", "rational"},
    {"GPSDestBearing", "rational"},
    {"GPSDestBearingRef", "text"},
    {"GPSDestDistance", "rational"},
    {"GPSDestDistanceRef", "text"},
    {"GPSDestLatitude", "gpscoordinate"},
    {"GPSDestLongitude", "gpscoordinate"},
    {"GPSDifferential", "integer"},
    {"GPSImgDirection", "rational"},
    {"GPSImgDirectionRef", "text"},
    {"GPSLatitude", "gpscoordinate"},
    {"GPSLongitude", "gpscoordinate"},
    {"GPSMapDatum", "text"},
    {"GPSMeasureMode", "text"},
    {"GPSProcessingMethod", "text"},
    {"GPSSatellites", "text"},
    {"GPSSpeed", "rational"},
    {"GPSSpeedRef", "text"},
    {"GPSStatus", "text"},
    {"GPSTimeStamp", "date"},
    {"GPSTrack", "rational"},
    {"GPSTrackRef", "text"},
    {"GPSVersionID", "text"},
    {"GainControl", "integer"},
    {"ISOSpeedRatings", "seq integer"},
    {"ImageUniqueID", "text"},
    {"LightSource", "integer"},
    {"MakerNote", "text"},
    {"MaxApertureValue", "rational"},
    {"MeteringMode", "integer"},
    {"OECF", "oecf/sfr"},
    {"PixelXDimension", "integer"},
    {"PixelYDimension", "integer"},
    {"RelatedSoundFile", "text"},
    {"Saturation", "integer"},
    {"SceneCaptureType", "integer"},
    {"SceneType", "integer"},
    {"SensingMethod", "integer"},
    {"Sharpness", "integer"},
    {"ShutterSpeedValue", "rational"},
    {"SpatialFrequencyResponse", "oecf/sfr"},
    {"SpectralSensitivity", "text"},
    {"SubjectArea", "seq integer"},
    {"SubjectDistance", "rational"},
    {"SubjectDistanceRange", "integer"},
    {"SubjectLocation", "seq integer"},
    {"UserComment", "lang alt"},
    {"WhiteBalance", "integer"},
};

constexpr XmpDefinition kAuxiliaryProperties[] = {
    {"Lens", "text", k2005},
    {"SerialNumber", "text", k2005},
};

constexpr XmpDefinition kPdfAIdProperties[] = {
    {"amd", "text"},
    {"conformance", "text"},
    {"corr", "text", k2005},
    {"part", "integer"},
};

constexpr XmpDefinition kExtensionProperties[] = {
    {"schemas", "bag schema"},
};

constexpr XmpSchema kSchemas[] = {
    {kDcNamespace, kDcProperties},
    {kXmpNamespace, kXmpProperties},
    {"http://ns.adobe.com/xap/1.0/rights/", kRightsProperties},
    {"http://ns.adobe.com/xap/1.0/mm/", kManagementProperties},
    {"http://ns.adobe.com/xap/1.0/bj/", kJobsProperties},
    {"http://ns.adobe.com/xap/1.0/t/pg/", kPagedTextProperties},
    {"http://ns.adobe.com/xmp/1.0/DynamicMedia/", kMediaProperties},
    {kPdfNamespace, kPdfProperties},
    {"http://ns.adobe.com/photoshop/1.0/", kPhotoshopProperties},
    {"http://ns.adobe.com/camera-raw-settings/1.0/", kCameraRawProperties},
    {"http://ns.adobe.com/tiff/1.0/", kTiffProperties},
    {"http://ns.adobe.com/exif/1.0/", kExifProperties},
    {"http://ns.adobe.com/exif/1.0/aux/", kAuxiliaryProperties},
    {kPdfAIdNamespace, kPdfAIdProperties},
    {kPdfAExtensionNamespace, kExtensionProperties},
};

}  // namespace

const XmpDefinition* FindXmpProperty(XmpRelease release, std::string_view name_space,
                                     std::string_view name) {
  for (const XmpSchema& schema : kSchemas) {
    if (schema.name_space != name_space) {
      continue;
    }
    const auto found =
        std::find_if(schema.properties.begin(), schema.properties.end(),
                     [&](const XmpDefinition& property) { return property.name == name; });
    if (found != schema.properties.end() && found->since <= release) {
      return &*found;
    }
  }
  return nullptr;
}

}  // namespace TarnixTools::engines
