#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/PredefinedMaps.h"

namespace TarnixTools::engines::fonts {
namespace {

TEST(PredefinedMaps, HasThoseOfBothDirections) {
  for (const char* name : {"UniJIS-UTF16-H", "UniJIS-UTF16-V", "H", "V", "EUC-V", "90pv-RKSJ-H"}) {
    ASSERT_TRUE(PredefinedMapOf(name).has_value()) << name;
    EXPECT_EQ(PredefinedMapOf(name)->ordering, "Japan1") << name;
  }
  EXPECT_EQ(PredefinedMapOf("GBK2K-V")->supplement, 4);
}

TEST(PredefinedMaps, AreThoseOfTheStandardWithTheirCollections) {
  // Table 118, and table 119 for PDF 1.7.
  const std::map<std::string, std::vector<std::string>> by_collection = {
      {"GB1-0", {"GB-EUC", "GBpc-EUC"}},
      {"GB1-2", {"GBK-EUC", "GBKp-EUC"}},
      {"GB1-4", {"GBK2K", "UniGB-UCS2", "UniGB-UTF16"}},
      {"CNS1-0", {"B5pc", "ETen-B5", "ETenms-B5", "CNS-EUC"}},
      {"CNS1-3", {"HKscs-B5", "UniCNS-UCS2", "UniCNS-UTF16"}},
      {"Japan1-1", {"Add-RKSJ", "EUC"}},
      {"Japan1-2", {"90ms-RKSJ", "90msp-RKSJ", "Ext-RKSJ"}},
      {"Japan1-4", {"UniJIS-UCS2", "UniJIS-UCS2-HW"}},
      {"Japan1-5", {"UniJIS-UTF16"}},
      {"Korea1-0", {"KSC-EUC"}},
      {"Korea1-1", {"KSCms-UHC", "KSCms-UHC-HW", "UniKS-UCS2"}},
      {"Korea1-2", {"UniKS-UTF16"}},
  };
  const auto collection_of = [](const std::string& name) {
    const auto map = PredefinedMapOf(name);
    return map ? std::string(map->ordering) + "-" + std::to_string(map->supplement) : "";
  };
  for (const auto& [collection, names] : by_collection) {
    for (const std::string& name : names) {
      EXPECT_EQ(collection_of(name + "-H"), collection) << name;
      EXPECT_EQ(collection_of(name + "-V"), collection) << name;
    }
    EXPECT_TRUE(IsKnownCollection("Adobe", collection.substr(0, collection.find('-'))));
  }
  for (const char* name : {"83pv-RKSJ-H", "90pv-RKSJ-H", "90pv-RKSJ-V", "H", "V"}) {
    EXPECT_EQ(collection_of(name), "Japan1-1") << name;
  }
  EXPECT_EQ(collection_of("KSCpc-EUC-H"), "Korea1-0");
}

TEST(PredefinedMaps, HasNoOthers) {
  for (const char* name : {"", "-H", "Identity-H", "UniJIS-UTF16", "KSCpc-EUC-V", "83pv-RKSJ-V",
                           "Adobe-Japan1-UCS2", "HH"}) {
    EXPECT_FALSE(PredefinedMapOf(name).has_value()) << name;
  }
  EXPECT_TRUE(IsIdentityMap("Identity-V"));
  EXPECT_FALSE(IsIdentityMap("Identity"));
  EXPECT_TRUE(IsKnownCollection("Adobe", "Korea1"));
  EXPECT_FALSE(IsKnownCollection("Adobe", "Identity"));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
