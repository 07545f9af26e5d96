// What is painted onto the pages of one document being made: fonts, graphics states and streams,
// each written once however many pages use it.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_TARGETCONTENT_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_TARGETCONTENT_H_

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engines/support/fonts/TextShaper.h"
#include "engines/toolbox/content/EmbeddedFont.h"
#include "engines/toolbox/content/PageContent.h"
#include "engines/toolbox/content/TargetImages.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

class TargetContent {
 public:
  // The writer outlives this.
  explicit TargetContent(pdf::FileWriter& writer) : writer_(&writer), images_(writer) {}

  // A face that may be embedded, by family and style. Throws ToolboxFailure: kToolboxFontNotFoundError,
  // kToolboxFontEmbeddingError, kToolboxLibraryError.
  const fonts::InstalledFace& FindFace(const std::string& family, const std::string& style);

  // Loaded; never null for a face that FindFace gave.
  fonts::FontFace* Load(const fonts::InstalledFace& face) { return faces_.Load(face); }

  // A line of text in the face, shaped. Throws fonts::LibraryMissing.
  std::shared_ptr<const fonts::ShapedLine> Shape(const fonts::InstalledFace& face,
                                                 const std::u32string& text);

  // The font by which glyphs of the face are painted.
  EmbeddedFont& FontOf(fonts::FontFace& face);

  TargetImages& images() { return images_; }

  // A graphics state with this opacity.
  AddedResource GraphicsStateOf(double alpha);

  // The number of a stream with this text; short ones that come again are written once. entries: of
  // its dictionary, without strings.
  std::uint32_t StreamOf(const std::string& text, const std::string& entries = {});

  // A colour space, as text, for what a page calls DefaultGray, DefaultRGB or DefaultCMYK: there
  // the device's colours are what they are without such an entry.
  std::string PlainSpaceOf(std::string_view default_name);

  // Runs what writes into the document while its pages are painted onto. A failure, which may leave
  // half an object behind, is kept for Finish.
  template <typename Operation>
  auto Write(Operation&& operation) {
    try {
      return operation();
    } catch (...) {
      failure_ = failure_ ? failure_ : std::current_exception();
      throw;
    }
  }

  // Writes what all pages share. Throws what Write has kept.
  void Finish();

 private:
  std::string WriteProfile(int components, const std::string& profile);

  pdf::FileWriter* writer_;
  TargetImages images_;
  fonts::FaceStore faces_;
  std::map<std::pair<std::string, std::string>, const fonts::InstalledFace*> found_faces_;
  std::unordered_map<std::u32string, std::shared_ptr<const fonts::ShapedLine>> lines_;
  std::size_t kept_characters_ = 0;  // in the keys of lines_
  std::map<const fonts::FontFace*, std::unique_ptr<EmbeddedFont>> fonts_by_face_;
  std::vector<EmbeddedFont*> fonts_;  // in the order of their use
  std::map<double, AddedResource> graphics_states_;
  std::unordered_map<std::string, std::uint32_t> streams_;
  std::map<std::string, std::string, std::less<>> plain_spaces_;  // by the default's name
  std::exception_ptr failure_;
};

// Sets the opacity of what is filled and of images, 0 to 1; nothing for 1.
void AppendAlpha(double alpha, TargetContent& target, std::string& out, PageContent& resources);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_TARGETCONTENT_H_
