#include <thread>

#include <gtest/gtest.h>

#include "engines/support/pdfium/PdfiumFile.h"
#include "pdf/Error.h"
#include "pdf/file/ByteSource.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using testing::TestPdf;

constexpr int kSide = 100;

class PdfiumFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const PdfiumLock pdfium;
    if (!pdfium.is_available()) {
      GTEST_SKIP() << "needs PDFium";
    }
  }

  // Opens the bytes, which are kept.
  std::unique_ptr<PdfiumFile> Open(PdfiumLock& pdfium, const std::string& bytes,
                                   const std::string& password = "") {
    bytes_ = bytes;
    return PdfiumFile::Open(pdfium, std::make_unique<pdf::MemorySource>(bytes_), password,
                            needs_password_);
  }

  // Draws a page on white; is_done_ tells whether all of it.
  void Draw(PdfiumLock& pdfium, PdfiumFile& file, const std::function<bool()>& stops) {
    pixels_.assign(std::size_t{4} * kSide * kSide, 0xFF);
    pdfium::Page* page = file.LoadPage(0);
    ASSERT_NE(page, nullptr);
    {
      const PdfiumBitmapPtr bitmap(
          pdfium->FPDFBitmap_CreateEx(kSide, kSide, pdfium::kBgrx, pixels_.data(), 4 * kSide),
          {pdfium.operator->()});
      is_done_ = file.Draw(bitmap.get(), page, 0, 0, kSide, kSide, pdfium::kDrawAnnotations, stops);
    }
    file.ClosePage(page);
  }

  // Its components as one number: 0xRRGGBB.
  int ColorAt(std::size_t x, std::size_t y) const {
    const std::uint8_t* pixel = pixels_.data() + 4 * (y * kSide + x);
    return pixel[2] << 16 | pixel[1] << 8 | pixel[0];
  }

  std::string bytes_;
  bool needs_password_ = false;
  std::vector<std::uint8_t> pixels_;
  bool is_done_ = false;
};

bool Never() {
  return false;
}

TestPdf Square(const std::string& content) {
  TestPdf file;
  file.Page().Size(kSide, kSide).Content(content);
  return file;
}

TEST_F(PdfiumFileTest, DrawsPages) {
  PdfiumLock pdfium;
  const auto file = Open(pdfium, Square("1 0 0 rg 0 0 50 50 re f").Bytes());
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->page_count(), 1);
  Draw(pdfium, *file, Never);
  EXPECT_TRUE(is_done_);
  EXPECT_EQ(ColorAt(10, 90), 0xFF0000);
  EXPECT_EQ(ColorAt(10, 10), 0xFFFFFF);
  EXPECT_EQ(file->LoadPage(1), nullptr);
}

TEST_F(PdfiumFileTest, StopsBetweenObjects) {
  std::string content = "1 0 0 rg 0 0 50 50 re f\n";
  for (int i = 0; i < 5000; ++i) {
    content += "0 0 1 rg 50 50 " + std::to_string(i % 50) + " 50 re f\n";
  }
  PdfiumLock pdfium;
  const auto file = Open(pdfium, Square(content).Bytes());
  int asked = 0;
  Draw(pdfium, *file, [&] {
    ++asked;
    return asked > 3;
  });
  EXPECT_FALSE(is_done_);
  EXPECT_EQ(asked, 4);
  EXPECT_EQ(ColorAt(10, 90), 0xFF0000);
  Draw(pdfium, *file, Never);
  EXPECT_TRUE(is_done_);
  EXPECT_EQ(ColorAt(60, 10), 0x0000FF);
}

TEST_F(PdfiumFileTest, DrawsTheFieldsOfItsForm) {
  TestPdf pdf = Square("");
  pdf.Object(
         "form",
         "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]/Length 24>>\nstream\n0 0 1 rg 0 0 9 9 re f "
         " \nendstream")
      .Object("field",
              "<</Type/Annot/Subtype/Widget/FT/Tx/T(a)/F 4/Rect[0 0 50 50]/AP<</N {{form}}>>>>")
      .CatalogEntry("/AcroForm<</Fields[{{field}}]>>")
      .PageEntry("/Annots[{{field}}]");
  PdfiumLock pdfium;
  const auto plain = Open(pdfium, pdf.Bytes());
  Draw(pdfium, *plain, Never);
  EXPECT_EQ(ColorAt(10, 90), 0xFFFFFF);
  const auto filled = Open(pdfium, pdf.Bytes());
  filled->OpenForm();
  Draw(pdfium, *filled, Never);
  EXPECT_EQ(ColorAt(10, 90), 0x0000FF);
}

TEST_F(PdfiumFileTest, TellsWhatItCannotOpen) {
  PdfiumLock pdfium;
  EXPECT_EQ(Open(pdfium, "no document"), nullptr);
  EXPECT_FALSE(needs_password_);
}

TEST_F(PdfiumFileTest, AsksForPasswords) {
  TARNIX_NEED_PROGRAM("qpdf");
  const testing::TempDir directory;
  testing::EncryptWithQpdf(Square("").Write(directory.Path("in.pdf")), directory.Path("locked.pdf"),
                           "user", "owner");
  const std::string locked = testing::ReadBytes(directory.Path("locked.pdf"));
  PdfiumLock pdfium;
  EXPECT_EQ(Open(pdfium, locked, "wrong"), nullptr);
  EXPECT_TRUE(needs_password_);
  EXPECT_NE(Open(pdfium, locked, "user"), nullptr);
  EXPECT_FALSE(needs_password_);
}

TEST_F(PdfiumFileTest, CountsWhatIsRead) {
  PdfiumLock pdfium;
  const auto file = Open(pdfium, Square("0 g " + std::string(100'000, ' ')).Bytes());
  EXPECT_GT(file->bytes_of_opening(), 0U);
  EXPECT_LT(file->bytes_of_opening(), 50'000U);
  EXPECT_EQ(file->bytes_read(), 0U);
  Draw(pdfium, *file, Never);
  EXPECT_GT(file->bytes_read(), 100'000U);
}

// Fails as soon as it is told to.
class FailingSource : public pdf::ByteSource {
 public:
  FailingSource(std::string bytes, const bool& fails) : bytes_(std::move(bytes)), fails_(&fails) {}

  std::uint64_t Size() const override { return bytes_.size(); }

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override {
    if (*fails_) {
      throw pdf::Error(pdf::ErrorCode::kReadFailed, "the disk is gone");
    }
    return pdf::MemorySource(bytes_).ReadAt(offset, buffer, size);
  }

 private:
  std::string bytes_;
  const bool* fails_;
};

TEST_F(PdfiumFileTest, SurvivesSourcesThatFail) {
  for (const bool fails_at_once : {true, false}) {
    bool fails = fails_at_once;
    const std::string padding(60'000, ' ');
    PdfiumLock pdfium;
    const auto file = PdfiumFile::Open(
        pdfium,
        std::make_unique<FailingSource>(Square(padding + "1 0 0 rg 0 0 50 50 re f").Bytes(), fails),
        "", needs_password_);
    EXPECT_EQ(file == nullptr, fails_at_once);
    EXPECT_FALSE(needs_password_);
    if (file != nullptr) {
      fails = true;
      if (pdfium::Page* page = file->LoadPage(0)) {
        file->ClosePage(page);
      }
    }
  }
}

TEST(PdfiumSessionThread, LetsOneThreadInAtATime) {
  int inside = 0;
  int most = 0;
  const auto enter = [&] {
    for (int i = 0; i < 1000; ++i) {
      const PdfiumLock pdfium;
      ++inside;
      most = std::max(most, inside);
      --inside;
    }
  };
  std::thread first(enter);
  std::thread second(enter);
  first.join();
  second.join();
  EXPECT_EQ(most, 1);
}

}  // namespace
}  // namespace TarnixTools::engines
