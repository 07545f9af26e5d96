#include "engines/support/fonts/PredefinedMaps.h"

#include <algorithm>
#include <array>

namespace TarnixTools::engines::fonts {

namespace {

struct MapRow {
  std::string_view name;  // without -H and -V
  PredefinedMap map;
};

constexpr std::string_view kChina = "GB1";
constexpr std::string_view kTaiwan = "CNS1";
constexpr std::string_view kJapan = "Japan1";
constexpr std::string_view kKorea = "Korea1";

constexpr std::array<MapRow, 33> kMaps = {{
    {"GB-EUC", {kChina, 0}},
    {"GBpc-EUC", {kChina, 0}},
    {"GBK-EUC", {kChina, 2}},
    {"GBKp-EUC", {kChina, 2}},
    {"GBK2K", {kChina, 4}},
    {"UniGB-UCS2", {kChina, 4}},
    {"UniGB-UTF16", {kChina, 4}},
    {"B5pc", {kTaiwan, 0}},
    {"HKscs-B5", {kTaiwan, 3}},
    {"ETen-B5", {kTaiwan, 0}},
    {"ETenms-B5", {kTaiwan, 0}},
    {"CNS-EUC", {kTaiwan, 0}},
    {"UniCNS-UCS2", {kTaiwan, 3}},
    {"UniCNS-UTF16", {kTaiwan, 3}},
    {"90ms-RKSJ", {kJapan, 2}},
    {"90msp-RKSJ", {kJapan, 2}},
    {"Add-RKSJ", {kJapan, 1}},
    {"EUC", {kJapan, 1}},
    {"Ext-RKSJ", {kJapan, 2}},
    {"UniJIS-UCS2", {kJapan, 4}},
    {"UniJIS-UCS2-HW", {kJapan, 4}},
    {"UniJIS-UTF16", {kJapan, 5}},
    {"KSC-EUC", {kKorea, 0}},
    {"KSCms-UHC", {kKorea, 1}},
    {"KSCms-UHC-HW", {kKorea, 1}},
    {"UniKS-UCS2", {kKorea, 1}},
    {"UniKS-UTF16", {kKorea, 2}},
    // These have no vertical form, or are nothing but the writing direction.
    {"83pv-RKSJ-H", {kJapan, 1}},
    {"90pv-RKSJ-H", {kJapan, 1}},
    {"90pv-RKSJ-V", {kJapan, 1}},
    {"KSCpc-EUC-H", {kKorea, 0}},
    {"H", {kJapan, 1}},
    {"V", {kJapan, 1}},
}};

}  // namespace

std::optional<PredefinedMap> PredefinedMapOf(std::string_view name) {
  const bool has_direction = name.ends_with("-H") || name.ends_with("-V");
  if (!has_direction && name != "H" && name != "V") {
    return std::nullopt;
  }
  const std::string_view base = has_direction ? name.substr(0, name.size() - 2) : name;
  const auto* const found = std::find_if(kMaps.begin(), kMaps.end(), [&](const MapRow& row) {
    return row.name == name || (row.name == base && base.size() > 1);
  });
  return found == kMaps.end() ? std::nullopt : std::optional(found->map);
}

bool IsIdentityMap(std::string_view name) {
  return name == "Identity-H" || name == "Identity-V";
}

bool IsKnownCollection(std::string_view registry, std::string_view ordering) {
  return registry == "Adobe" &&
         (ordering == kChina || ordering == kTaiwan || ordering == kJapan || ordering == kKorea);
}

}  // namespace TarnixTools::engines::fonts
