// What is the same for all engines that are used in sessions: errors that can still be read, null
// handles, and objects that are left behind.
#include <filesystem>
#include <thread>

#include <gtest/gtest.h>

#include "engines/img2pdf/ErrorCodes.h"
#include "engines/img2pdf/Img2Pdf.h"
#include "engines/optimizer/ErrorCodes.h"
#include "engines/optimizer/Optimizer.h"
#include "engines/parser/ErrorCodes.h"
#include "engines/parser/Parser.h"
#include "engines/pdfa/ErrorCodes.h"
#include "engines/pdfa/PdfA.h"
#include "engines/rasteriser/ErrorCodes.h"
#include "engines/rasteriser/Rasteriser.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;

struct Img2PdfEngine {
  static constexpr auto kInitialize = Img2PdfInitialize;
  static constexpr auto kUnInitialize = Img2PdfUnInitialize;
  static constexpr auto kCreate = Img2PdfCreateObject;
  static constexpr auto kDestroy = Img2PdfDestroyObject;
  static constexpr auto kClose = Img2PdfClose;
  static constexpr auto kLastError = Img2PdfGetErrorCode;
  static constexpr auto kArgumentError = kImg2PdfArgumentError;
  static constexpr auto kMissingError = kImg2PdfCreateError;

  static int Open(TImg2Pdf* object, const std::string& path) {
    return Img2PdfCreateW(object, WidePath(path), L"", L"", 0);
  }
};

struct RasteriserEngine {
  static constexpr auto kInitialize = Pdf2ImgInitialize;
  static constexpr auto kUnInitialize = Pdf2ImgUnInitialize;
  static constexpr auto kCreate = Pdf2ImgCreateObject;
  static constexpr auto kDestroy = Pdf2ImgDestroyObject;
  static constexpr auto kClose = Pdf2ImgClose;
  static constexpr auto kLastError = Pdf2ImgGetErrorCode;
  static constexpr auto kArgumentError = kPdf2ImgArgumentError;
  static constexpr auto kMissingError = kPdf2ImgFileError;

  static int Open(TPdf2Img* object, const std::string& path) {
    return Pdf2ImgOpenW(object, WidePath(path), L"");
  }
};

struct ParserEngine {
  static constexpr auto kInitialize = ExpaInitialize;
  static constexpr auto kUnInitialize = ExpaUnInitialize;
  static constexpr auto kCreate = ExpaDocCreateObject;
  static constexpr auto kDestroy = ExpaDocDestroyObject;
  static constexpr auto kClose = ExpaDocClose;
  static constexpr auto kLastError = ExpaDocGetLastError;
  static constexpr auto kArgumentError = kExpaArgumentError;
  static constexpr auto kMissingError = kExpaFileError;

  static int Open(TExpaDoc* document, const std::string& path) {
    return ExpaDocOpenW(document, WidePath(path), L"");
  }
};

struct OptimizerEngine {
  static constexpr auto kInitialize = PdfOptimizeInitialize;
  static constexpr auto kUnInitialize = PdfOptimizeUnInitialize;
  static constexpr auto kCreate = PdfOptimizeCreateObject;
  static constexpr auto kDestroy = PdfOptimizeDestroyObject;
  static constexpr auto kClose = PdfOptimizeClose;
  static constexpr auto kLastError = PdfOptimizeGetErrorCode;
  static constexpr auto kArgumentError = kOptimizerArgumentError;
  static constexpr auto kMissingError = kOptimizerOpenError;

  static int Open(TPdfOptimizer* object, const std::string& path) {
    return PdfOptimizeOpenW(object, WidePath(path), L"");
  }
};

struct ValidatorEngine {
  static constexpr auto kInitialize = PdfValidatorInitialize;
  static constexpr auto kUnInitialize = PdfValidatorUnInitialize;
  static constexpr auto kCreate = PdfValidatorCreateObject;
  static constexpr auto kDestroy = PdfValidatorDestroyObject;
  static constexpr auto kClose = PdfValidatorClose;
  static constexpr auto kLastError = PdfValidatorGetErrorCode;
  static constexpr auto kArgumentError = kValidatorArgumentError;
  static constexpr auto kMissingError = kValidatorOpenError;

  static int Open(TPdfValidator* object, const std::string& path) {
    return PdfValidatorOpenW(object, WidePath(path), L"", 0);
  }
};

template <typename Engine>
class SessionThread : public ::testing::Test {
 protected:
  void SetUp() override {
    const PdfiumLock pdfium;
    if (!pdfium.is_available()) {
      GTEST_SKIP() << "needs PDFium";
    }
    TestPdf().Pages(1).Write(Path());
  }

  std::string Path() const { return directory_.Path("in.pdf"); }

  // How many files of the test's directory are open.
  std::size_t OpenFileCount() const {
    namespace fs = std::filesystem;
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd")) {
      std::error_code gone;  // the one that reads the directory
      const std::string target = fs::read_symlink(entry.path(), gone).string();
      count += target.starts_with(directory_.Path()) ? 1 : 0;
    }
    return count;
  }

  // Leaves an object with an open document behind.
  auto LeaveBehind() const {
    Engine::kInitialize();
    auto* object = Engine::kCreate();
    EXPECT_EQ(Engine::Open(object, Path()), 1);
    Engine::kUnInitialize();
    return object;
  }

  template <typename Function>
  static void OnThread(Function&& function) {
    std::thread(function).join();
  }

  testing::TempDir directory_;

  using TestPdf = testing::TestPdf;
};

using Engines = ::testing::Types<Img2PdfEngine, RasteriserEngine, ParserEngine, OptimizerEngine,
                                 ValidatorEngine>;
TYPED_TEST_SUITE(SessionThread, Engines);

TYPED_TEST(SessionThread, LeavesErrorsToBeRead) {
  TypeParam::kInitialize();
  auto* object = TypeParam::kCreate();
  EXPECT_EQ(TypeParam::Open(object, this->directory_.Path("missing/file")), 0);
  TypeParam::kUnInitialize();
  EXPECT_EQ(TypeParam::kLastError(object), TypeParam::kMissingError);
  TypeParam::kClose(object);
  TypeParam::kDestroy(object);
}

TYPED_TEST(SessionThread, RefusesNull) {
  decltype(TypeParam::kCreate()) null = nullptr;
  EXPECT_EQ(TypeParam::Open(null, this->Path()), 0);
  EXPECT_EQ(TypeParam::kLastError(null), TypeParam::kArgumentError);
  EXPECT_EQ(TypeParam::kClose(null), 0);
  TypeParam::kDestroy(null);
}

TYPED_TEST(SessionThread, ReclaimsWhatIsLeftBehind) {
  this->OnThread([this] {
    this->LeaveBehind();
    EXPECT_GT(this->OpenFileCount(), 0U);
    TypeParam::kInitialize();
    EXPECT_EQ(this->OpenFileCount(), 0U);
    TypeParam::kUnInitialize();
    this->LeaveBehind();
  });
  EXPECT_EQ(this->OpenFileCount(), 0U);
}

TYPED_TEST(SessionThread, LetsWhatIsLeftBehindBeDestroyed) {
  this->OnThread([this] {
    auto* object = this->LeaveBehind();
    TypeParam::kClose(object);
    EXPECT_EQ(this->OpenFileCount(), 0U);
    TypeParam::kDestroy(object);
  });
}

}  // namespace
}  // namespace TarnixTools::engines
