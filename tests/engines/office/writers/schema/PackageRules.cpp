#include "engines/office/writers/schema/SchemaRules.h"

namespace TarnixTools::engines::office {

namespace {

// ECMA-376 part 2.
constexpr ElementRule kPackage[] = {
    {"Relationships", "Relationship+", ""},
    {"Relationship", "", "Id=id Type=text Target=text TargetMode?=External"},
    {"Types", "(Default|Override)+", ""},
    {"Default", "", "Extension=text ContentType=text"},
    {"Override", "", "PartName=text ContentType=text"},
    {"cp:coreProperties", "(dc:title|dc:subject|dc:creator|cp:keywords|dc:language)*", ""},
    {"dc:title", "#text", ""},
    {"dc:subject", "#text", ""},
    {"dc:creator", "#text", ""},
    {"cp:keywords", "#text", ""},
    {"dc:language", "#text", ""},
};

}  // namespace

std::span<const ElementRule> PackageRules() {
  return kPackage;
}

}  // namespace TarnixTools::engines::office
