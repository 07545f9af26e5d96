// The levels of compression: what is written is, byte for byte, what the engine writes with the
// settings of the level, in documents in which every one of them shows.
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfCompressTask.h"
#include "engines/optimizer/Optimizer.h"
#include "engines/support/fonts/FontCatalog.h"
#include "support/DocumentTest.h"
#include "support/RawPdf.h"
#include "support/TestFont.h"
#include "support/TestImage.h"
#include "support/TestScene.h"

namespace TarnixTools::engines {
namespace {

using testing::ReadBytes;
using testing::SceneSize;

using Call = std::function<int(TPdfOptimizer*)>;

struct Setting {
  const char* name;
  Call set;
  std::vector<Call> set_otherwise;  // to values that show
};

template <typename Value>
Setting Of(const char* name, int (*set)(TPdfOptimizer*, Value), Value value,
           std::vector<Value> others) {
  const auto to = [set](Value it) {
    return [=](TPdfOptimizer* object) { return set(object, it); };
  };
  Setting setting{name, to(value), {}};
  for (const Value& other : others) {
    setting.set_otherwise.emplace_back(to(other));
  }
  return setting;
}

struct Level {
  const char* name;
  PdfCompressLevel level;
  std::vector<double> resolutions;  // of pictures about its threshold
  std::vector<Setting> settings;    // in their order
};

// Numbers are compared with their neighbours where these show, switches and sets of bits with less.
std::vector<Level> AllLevels() {
  return {
      {"low",
       PdfCompressLevel::Low,
       {400.5, 399.5},
       {Of("color conversion", &PdfOptimizeSetColorConversion, 0, {1}),
        Of("bitonal", &PdfOptimizeSetBitonalCompressions, 0x80U, {0U}),
        Of("continuous", &PdfOptimizeSetContinuousCompressions, 2U, {0U}),
        Of("quality", &PdfOptimizeSetImageQuality, 75, {74, 76}),
        Of("resolution", &PdfOptimizeSetResolutionDPI, 200.0F, {199.0F, 201.0F}),
        Of("threshold", &PdfOptimizeSetThresholdDPI, 400.0F, {399.0F, 401.0F}),
        Of("resources", &PdfOptimizeSetOptimizeResources, 1, {0}),
        Of("redundant objects", &PdfOptimizeSetRemoveRedundantObjects, 1, {0}),
        Of("standard fonts", &PdfOptimizeSetRemoveStandardFonts, 1, {0}),
        Of("subsets", &PdfOptimizeSetSubsetFonts, 1, {0})}},
      {"recommended",
       PdfCompressLevel::Recommended,
       {170},
       {Of("profile", &PdfOptimizeSetProfile, 2, {0}),
        Of("resolution", &PdfOptimizeSetResolutionDPI, 150.0F, {149.0F, 151.0F}),
        Of("threshold", &PdfOptimizeSetThresholdDPI, 150.0F, {0.0F, 171.0F}),
        Of("quality", &PdfOptimizeSetImageQuality, 60, {59, 61}),
        Of("color conversion", &PdfOptimizeSetColorConversion, 0, {1}),
        Of("strip", &PdfOptimizeSetStrip, 0x477U,
           {0x476U, 0x475U, 0x473U, 0x467U, 0x457U, 0x437U, 0x77U, 0x47FU})}},
      {"extreme",
       PdfCompressLevel::Extreme,
       {110.5, 109.5},
       {Of("profile", &PdfOptimizeSetProfile, 2, {0}),
        Of("color conversion", &PdfOptimizeSetColorConversion, 1, {0}),
        Of("bitonal", &PdfOptimizeSetBitonalCompressions, 0x80U, {0U}),
        Of("continuous", &PdfOptimizeSetContinuousCompressions, 2U, {0U}),
        Of("quality", &PdfOptimizeSetImageQuality, 60, {59, 61}),
        Of("resolution", &PdfOptimizeSetResolutionDPI, 72.0F, {71.0F, 73.0F}),
        Of("threshold", &PdfOptimizeSetThresholdDPI, 110.0F, {109.0F, 111.0F}),
        Of("clipping", &PdfOptimizeSetClipImages, 1, {0}),
        Of("resources", &PdfOptimizeSetOptimizeResources, 1, {0}),
        Of("redundant objects", &PdfOptimizeSetRemoveRedundantObjects, 1, {0}),
        Of("standard fonts", &PdfOptimizeSetRemoveStandardFonts, 1, {0}),
        Of("subsets", &PdfOptimizeSetSubsetFonts, 1, {0}),
        Of("strip", &PdfOptimizeSetStrip, 0x7FU,
           {0x7EU, 0x7DU, 0x7BU, 0x77U, 0x6FU, 0x5FU, 0x3FU, 0x47FU}),
        Of("color complexity", &PdfOptimizeSetReduceColorComplexity, 1, {0})}},
  };
}

// The file of a standard font; empty where it is not installed.
std::string StandardFont() {
  const fonts::InstalledFace* face = fonts::FontCatalog::Get().Find("Liberation Sans", "Regular");
  return face != nullptr && face->family == "Liberation Sans" ? ReadBytes(face->file) : "";
}

class Document {
 public:
  // A page with pictures for every setting of them, the larger ones of these resolutions.
  std::string OfPictures(const std::vector<double>& resolutions) {
    for (const double dpi : resolutions) {
      Draw({420, 60}, "/DeviceRGB", Photograph({420, 60}, dpi), dpi);
    }
    Draw({100, 60}, "/DeviceCMYK", testing::SceneSamples({100, 60}, 4, 8), 100);
    Draw({100, 60}, "/DeviceRGB", Grays({100, 60}), 100);
    Draw({240, 240}, "/DeviceGray", Dots({240, 240}), 300, 1);
    content_ += "q 0 0 20 20 re W n\n";
    Draw({120, 120}, "/DeviceRGB", testing::SceneSamples({120, 120}, 3, 8), 100);
    content_ += "Q\n";
    return Whole();
  }

  // A page with something for every other setting.
  std::string OfParts() {
    AddForms();
    AddFonts();
    AddParts();
    return Whole();
  }

 private:
  int Add(const std::string& body) {
    file_.Object(next_, body);
    return next_++;
  }

  int AddStream(const std::string& entries, const std::string& data) {
    file_.Stream(next_, entries, data);
    return next_++;
  }

  static std::string Ref(int number) { return " " + std::to_string(number) + " 0 R"; }

  // Scenes that are not equal, with some noise, which makes them large unless they are coded with
  // loss.
  static std::string Photograph(const SceneSize& size, double share) {
    return testing::PackedSamples(size, 3, 8, [=](int x, int y, int component) {
      const double noise = (x * 7919 + y * 104'729 + x * y * 31) % 97 / 3000.0;
      const double color = testing::SceneColor(x, y).at(static_cast<std::size_t>(component));
      return 0.95 * color * (1 - share / 4000) + noise;
    });
  }

  // The red of the scene in all three colours.
  static std::string Grays(const SceneSize& size) {
    return testing::PackedSamples(size, 3, 8,
                                  [](int x, int y, int) { return testing::SceneColor(x, y)[0]; });
  }

  // No two of its shapes are alike.
  static std::string Dots(const SceneSize& size) {
    std::mt19937 random(1);
    std::vector<bool> dots(static_cast<std::size_t>(size.width * size.height / 9));
    for (std::size_t i = 0; i < dots.size(); ++i) {
      dots[i] = random() % 3 == 0;
    }
    return testing::PackedSamples(size, 1, 1, [&](int x, int y, int) {
      return dots[static_cast<std::size_t>(y / 3 * (size.width / 3) + x / 3)] ? 0.0 : 1.0;
    });
  }

  void Draw(const SceneSize& size, const std::string& space, const std::string& samples, double dpi,
            int bits = 8, const std::string& entries = "") {
    const int image =
        AddStream("/Type/XObject/Subtype/Image/Width " + std::to_string(size.width) + "/Height " +
                      std::to_string(size.height) + "/ColorSpace" + space + "/BitsPerComponent " +
                      std::to_string(bits) + "/Filter/FlateDecode" + entries,
                  testing::Deflated(samples));
    const std::string name = "/I" + std::to_string(image);
    objects_ += name + Ref(image);
    content_ += "q " + std::to_string(size.width * 72 / dpi) + " 0 0 " +
                std::to_string(size.height * 72 / dpi) + " 0 0 cm " + name + " Do Q\n";
  }

  // Two that are alike, and one that nothing draws.
  void AddForms() {
    for (const char* const name : {"/A", "/B"}) {
      objects_ += name + Ref(AddStream("/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f"));
      content_ += name + std::string(" Do\n");
    }
    objects_ += "/C" + Ref(AddStream("/Subtype/Form/BBox[0 0 9 9]", "1 1 9 9 re f"));
  }

  void AddFont(const std::string& name, const std::string& type, const std::string& program,
               const std::string& text) {
    const int file = AddStream("/Length1 " + std::to_string(program.size()), program);
    const int descriptor =
        Add("<</Type/FontDescriptor/FontName/" + name + "/Flags 32/FontFile2" + Ref(file) + ">>");
    fonts_ += "/" + name +
              Ref(Add("<</Type/Font/Subtype/" + type + "/BaseFont/" + name +
                      "/Encoding/WinAnsiEncoding/FontDescriptor" + Ref(descriptor) + ">>"));
    content_ += "BT /" + name + " 9 Tf (" + text + ") Tj ET\n";
  }

  // One with a glyph that is not shown, and a standard font where it is installed.
  void AddFonts() {
    AddFont("Own", "TrueType", testing::TestFont().Bytes(), " ");
    if (const std::string program = StandardFont(); !program.empty()) {
      AddFont("Helvetica", "Type1", program, "AB");
    }
  }

  // What can be taken out.
  void AddParts() {
    const int alternate =
        AddStream("/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "x");
    const int metadata = AddStream("/Type/Metadata/Subtype/XML", "<x/>");
    Draw({9, 9}, "/DeviceGray", std::string(81, 'a'), 50, 8,
         "/Metadata" + Ref(metadata) + "/Alternates[<</Image" + Ref(alternate) + ">>]");
    const int thread = next_++;
    const int bead = next_++;
    file_.Object(thread, "<</F" + Ref(bead) + ">>");
    file_.Object(
        bead, "<</T" + Ref(thread) + "/N" + Ref(bead) + "/V" + Ref(bead) + "/P 3 0 R/R[0 0 9 9]>>");
    const int root = next_++;
    const int element = Add("<</Type/StructElem/S/Document/P" + Ref(root) + ">>");
    file_.Object(root, "<</Type/StructTreeRoot/K" + Ref(element) + ">>");
    catalog_ += "/Threads[" + Ref(thread) + "]/StructTreeRoot" + Ref(root) +
                "/SpiderInfo<</V 1>>/ViewerPreferences<</NumCopies 2>>";
    page_ +=
        "/B[" + Ref(bead) + "]/LastModified(D:2026)/PieceInfo<</App<<>>>>/Thumb" + Ref(alternate);
  }

  std::string Whole() {
    const int content = AddStream("", content_);
    return file_.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog_ + ">>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Contents" + Ref(content) +
                       "/Resources<</XObject<<" + objects_ + ">>/Font<<" + fonts_ + ">>>>" + page_ +
                       ">>")
        .Table();
  }

  testing::RawPdf file_;
  int next_ = 4;
  std::string objects_;
  std::string fonts_;
  std::string content_;
  std::string catalog_;
  std::string page_;
};

class CompressionLevels : public testing::DocumentTest {
 protected:
  CompressionLevels() {
    testing::WriteBytes(Path("parts.pdf"), Document().OfParts());
    PdfOptimizeInitialize();
  }

  ~CompressionLevels() override { PdfOptimizeUnInitialize(); }

  void MakePictures(const Level& level) const {
    testing::WriteBytes(Path("pictures.pdf"), Document().OfPictures(level.resolutions));
  }

  // A document as the engine writes it when it has got these calls.
  std::string Written(const std::string& name, const std::vector<Call>& calls) const {
    TPdfOptimizer* object = PdfOptimizeCreateObject();
    for (const Call& call : calls) {
      EXPECT_EQ(call(object), 1);
    }
    EXPECT_EQ(PdfOptimizeOpenW(object, platform::WidePath(Path(name)), L""), 1);
    EXPECT_EQ(PdfOptimizeSaveAsW(object, platform::WidePath(Path("out.pdf")), L"", L"", 0), 1);
    PdfOptimizeDestroyObject(object);
    return ReadBytes(Path("out.pdf"));
  }

  static std::vector<Call> CallsOf(const Level& level) {
    std::vector<Call> calls;
    for (const Setting& setting : level.settings) {
      calls.push_back(setting.set);
    }
    return calls;
  }

  std::string Compressed(const std::string& name, PdfCompressLevel level) const {
    PdfCompressTask task({Doc(name)}, level);
    task.SetOutPdfName("out.pdf");
    task.Execute();
    return ReadBytes(Path("out.pdf"));
  }
};

TEST_F(CompressionLevels, HaveTheirSettings) {
  for (const Level& level : AllLevels()) {
    MakePictures(level);
    for (const char* const name : {"parts.pdf", "pictures.pdf"}) {
      EXPECT_TRUE(Compressed(name, level.level) == Written(name, CallsOf(level)))
          << level.name << ": " << name;
    }
  }
}

TEST_F(CompressionLevels, ShowEachOfTheirSettings) {
  for (const Level& level : AllLevels()) {
    MakePictures(level);
    const std::vector<Call> calls = CallsOf(level);
    const std::string parts = Written("parts.pdf", calls);
    const std::string pictures = Written("pictures.pdf", calls);
    for (std::size_t i = 0; i < calls.size(); ++i) {
      const std::string name = level.settings[i].name;
      for (const Call& other : level.settings[i].set_otherwise) {
        std::vector<Call> others = calls;
        others[i] = other;
        EXPECT_TRUE(Written("parts.pdf", others) != parts ||
                    Written("pictures.pdf", others) != pictures ||
                    (name == "standard fonts" && StandardFont().empty()))
            << level.name << ": " << name;
      }
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines
