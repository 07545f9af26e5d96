#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/files/DynamicLibrary.h"

namespace TarnixTools::engines {
namespace {

using Cosine = double(double);

void ThrowMissing(const std::string& text) {
  throw std::runtime_error(text);
}

using Required = RequiredLibrary<ThrowMissing>;

std::string TroubleWith(const char* library_name, const char* function_name) {
  try {
    Cosine* function = nullptr;
    Required(library_name).Resolve(function, function_name);
    return function == nullptr ? "nothing was set" : "";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(DynamicLibrary, IsTheFirstThatIsThere) {
  const DynamicLibrary library({nullptr, "", "libnobodyhas.so.1", "libm.so.6"});
  ASSERT_TRUE(library.is_loaded());
  Cosine* cosine = nullptr;
  ASSERT_TRUE(library.Resolve("cos", cosine));
  EXPECT_EQ(cosine(0), 1);
  EXPECT_FALSE(library.Resolve("no_such_function", cosine));
  EXPECT_EQ(cosine, nullptr);
}

TEST(DynamicLibrary, MayBeMissing) {
  const DynamicLibrary library({"libnobodyhas.so.1"});
  EXPECT_FALSE(library.is_loaded());
  Cosine* cosine = nullptr;
  EXPECT_FALSE(library.Resolve("cos", cosine));
}

TEST(RequiredLibrary, TellsWhatIsMissing) {
  EXPECT_EQ(TroubleWith("libm.so.6", "cos"), "");
  EXPECT_EQ(TroubleWith("libm.so.6", "no_such_function"), "libm.so.6 has no no_such_function");
  EXPECT_EQ(TroubleWith("libnobodyhas.so.1", "cos"), "libnobodyhas.so.1 is not installed");
}

}  // namespace
}  // namespace TarnixTools::engines
