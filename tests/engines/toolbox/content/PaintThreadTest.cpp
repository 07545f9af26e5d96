#include <thread>

#include <gtest/gtest.h>

#include "engines/toolbox/content/Painted.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using TarnixTools::testing::TestPdf;

TEST(PaintThread, PaintsOntoDifferentDocumentsAtOnce) {
  const auto paint = [](Painted& painted) {
    painted.Paint([](Canvas& page) {
      page.Text(U"Page \u05e9\u05dc\u05d5\u05dd", {.font = "Arial", .alpha = 0.5});
      page.Text(U"Page", {.font = "sans-serif", .style = "Bold"});
    });
  };
  const std::string source = TestPdf().Pages(5).Bytes();
  std::vector<std::unique_ptr<Painted>> documents;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    documents.push_back(std::make_unique<Painted>(source));
  }
  for (const auto& document : documents) {
    threads.emplace_back([&paint, &document] { paint(*document); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const auto& document : documents) {
    EXPECT_EQ(document->bytes(), documents[0]->bytes());
  }
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
