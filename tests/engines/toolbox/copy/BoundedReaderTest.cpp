#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/BoundedReader.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

// How often the object may be looked at.
std::size_t Looks(const std::string& body) {
  const std::string bytes = testing::RawPdf().Pages(1).Object(4, body).Table();
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  BoundedReader reader(*document);
  pdf::Arena arena;
  std::size_t count = 0;
  while (!reader.Look(pdf::Object::Ref({4, 0}), arena).IsNull()) {
    ++count;
    arena.Reset();
  }
  EXPECT_TRUE(reader.Look(pdf::Object::Integer(5), arena).IsInteger());  // there already
  return count;
}

std::size_t LooksAt(std::size_t weight) {
  return ((std::size_t{16} << 20U) + weight - 1) / weight;
}

std::string Repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += text;
  }
  return all;
}

// About sixteen million bytes of values can be looked at, whatever is in which.
TEST(BoundedReader, LooksAtSoMuchOnly) {
  constexpr std::size_t kValue = sizeof(pdf::Object);
  EXPECT_EQ(Looks("(" + std::string(100'000, 'x') + ")"), LooksAt(kValue + 100'000));
  EXPECT_EQ(Looks("[" + Repeated("1 ", 20'000) + "]"), LooksAt(20'001 * kValue));
  EXPECT_EQ(Looks("[" + Repeated("[1(abc)]", 5'000) + "]"), LooksAt(15'001 * kValue + 15'000));
  EXPECT_EQ(Looks("[" + Repeated("<</A 1/B<</C 2>>>>", 5'000) + "]"), LooksAt(20'001 * kValue));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
