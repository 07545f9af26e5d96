#include "engines/pdfa/convert/transparency/Flattening.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/ConverterFailure.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/transparency/TransparentAreas.h"
#include "engines/support/drawing/DrawingError.h"
#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/drawing/DrawingTime.h"
#include "engines/support/drawing/DrawnDocument.h"
#include "pdf/Error.h"
#include "pdf/content/ContentBalance.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Box;
using pdf::Object;
using pdf::ObjectChange;

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kDotsPerInch = 200;
// What a picture may have; it is drawn with fewer dots where it would have more.
constexpr double kMaxPixels = 20e6;
// Around an area, so that edges do not shine through.
constexpr double kMargin = 1;
constexpr std::size_t kPixelBytes = 4;
constexpr std::size_t kColors = 3;

// A part of a page as it is seen, in pixels.
struct View {
  int page_index = 0;
  Placement page;
  int width = 0;
  int height = 0;
};

void RequireRenderer(const DrawingError& error) {
  if (error.code() == DrawingErrorCode::kNoRenderer) {
    throw ConverterFailure(kConverterNoRendererError);
  }
}

// Draws pages of the document, once that is asked for. A page is loaded for each of its pictures,
// since placing it takes images out of what was loaded.
class Drawer {
 public:
  Drawer(platform::WidePath path, std::string password)
      : path_(std::move(path)), password_(std::move(password)) {}

  bool CanDraw(int page_index) {
    try {
      Document().LoadPage(page_index);
      Document().ReleasePage();
      return true;
    } catch (const DrawingError& error) {
      RequireRenderer(error);
      return false;
    } catch (const pdf::Error&) {
      return false;
    }
  }

  // Red, green and blue of each pixel; nothing when a page, this one or one before it, is too much to
  // be drawn.
  std::optional<std::string> Draw(const View& view) {
    if (has_given_up_) {
      return std::nullopt;
    }
    try {
      Document().LoadPage(view.page_index);
      Document().Place(view.page);
      std::vector<std::uint8_t> pixels(kPixelBytes * static_cast<std::size_t>(view.width) *
                                           static_cast<std::size_t>(view.height),
                                       0xFF);
      DrawingTime::Duration& used = used_[view.page_index];
      Document().time().set_most(engines::limits::kMaxPageTime - used);
      Document().Draw(pixels.data(), view.width, 0, view.height);
      used += Document().time().used();
      has_given_up_ = Document().is_page_partial();
      Document().ReleasePage();
      return has_given_up_ ? std::nullopt : std::optional(ColorsOf(pixels));
    } catch (const DrawingError& error) {
      RequireRenderer(error);
      throw pdf::Error(pdf::ErrorCode::kReadFailed, "a page cannot be drawn");
    }
  }

 private:
  DrawnDocument& Document() {
    if (document_ == nullptr) {
      document_ = std::make_unique<DrawnDocument>(path_, password_);
    }
    return *document_;
  }

  static std::string ColorsOf(const std::vector<std::uint8_t>& pixels) {
    std::string colors;
    colors.reserve(pixels.size() / kPixelBytes * kColors);
    for (std::size_t i = 0; i < pixels.size(); i += kPixelBytes) {
      colors += static_cast<char>(pixels[i + 2]);
      colors += static_cast<char>(pixels[i + 1]);
      colors += static_cast<char>(pixels[i]);
    }
    return colors;
  }

  platform::WidePath path_;
  std::string password_;
  std::unique_ptr<DrawnDocument> document_;
  std::map<int, DrawingTime::Duration> used_;  // by page, for all of its pictures
  bool has_given_up_ = false;
};

void AppendMatrix(std::string& text, const pdf::Matrix& matrix) {
  constexpr int kDecimals = 5;
  for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
    pdf::AppendNumber(text, number, kDecimals);
    text += " ";
  }
  text += "cm";
}

class Flattener {
 public:
  Flattener(Conversion& conversion, const platform::WidePath& path, const std::string& password)
      : conversion_(&conversion),
        areas_(conversion.document, conversion.pages),
        drawer_(std::make_shared<Drawer>(path, password)) {}

  void FlattenPage(std::size_t index) {
    const pdf::PageTree::Page& page = conversion_->pages.pages()[index];
    if (!seen_.insert(page.number).second) {
      return;  // the page stands in the document more than once
    }
    TransparentPage found = areas_.Find(index);
    AddPictured(page, found.annotations);
    if (page.number == 0 || (found.areas.empty() && found.annotations.empty())) {
      return;
    }
    if (!drawer_->CanDraw(static_cast<int>(index))) {
      conversion_->report.Dropped("transparency of pages that cannot be drawn");
      return;
    }
    page_index_ = index;
    geometry_ = pdf::ReadPageGeometry(conversion_->document, conversion_->pages, page);
    if (!found.areas.empty()) {
      CoverAreas(page, found.areas);
    }
    ReplaceAppearances(found.annotations);
  }

 private:
  // A picture, and how it is painted.
  struct Picture {
    std::uint32_t number = 0;
    pdf::Matrix matrix;  // from the unit square to the page
  };

  // Those of the page that are to be pictures without being transparent.
  void AddPictured(const pdf::PageTree::Page& page, std::set<std::uint32_t>& annotations) {
    if (page.number == 0 || conversion_->pictured_annotations.empty()) {
      return;
    }
    Arena arena;
    const Object list = conversion_->document.Resolve(
        conversion_->rewriter.Load(page.number, arena).Get("Annots"), arena);
    for (const Object& item : list.Items()) {
      if (conversion_->pictured_annotations.contains(item.AsReference().number)) {
        annotations.insert(item.AsReference().number);
      }
    }
  }

  // Nothing for an area that is not on the page.
  std::optional<Picture> PictureOf(const Box& area) {
    const Box seen =
        Box{area.left - kMargin, area.bottom - kMargin, area.right + kMargin, area.top + kMargin}
            .Within(geometry_.crop_box);
    if (seen.IsEmpty()) {
      return std::nullopt;
    }
    const Box points = seen.Through(geometry_.ToSeenPoints());
    const double page_width = geometry_.SeenWidth();
    const double page_height = geometry_.SeenHeight();
    const double inches = points.width() * points.height() / (kPointsPerInch * kPointsPerInch);
    const double dots = std::min(kDotsPerInch, std::sqrt(kMaxPixels / inches)) / kPointsPerInch;
    View view{.page_index = static_cast<int>(page_index_), .page = {}};
    view.page.width = ToPixels(page_width * dots);
    view.page.height = ToPixels(page_height * dots);
    const double x_dots = view.page.width / page_width;
    const double y_dots = view.page.height / page_height;
    const auto left = static_cast<int>(std::floor(points.left * x_dots));
    const auto top = static_cast<int>(std::floor((page_height - points.top) * y_dots));
    view.page.left = -left;
    view.page.top = -top;
    view.width = ToPixels(std::ceil(points.right * x_dots) - left);
    view.height = ToPixels(std::ceil((page_height - points.bottom) * y_dots) - top);
    const pdf::Matrix in_points = {view.width / x_dots,
                                   0,
                                   0,
                                   view.height / y_dots,
                                   left / x_dots,
                                   page_height - (top + view.height) / y_dots};
    return Picture{AddPicture(view), in_points * geometry_.FromSeenPoints()};
  }

  static int ToPixels(double pixels) {
    constexpr double kMost = 1e6;
    return static_cast<int>(std::clamp(std::round(pixels), 1.0, kMost));
  }

  std::uint32_t AddPicture(const View& view) {
    const std::string dictionary =
        "<</Type/XObject/Subtype/Image/ColorSpace/DeviceRGB"
        "/BitsPerComponent 8/Width " +
        std::to_string(view.width) + "/Height " + std::to_string(view.height) + ">>";
    return conversion_->rewriter.AddLater(
        [drawer = drawer_, report = &conversion_->report, view, dictionary] {
          std::optional<std::string> colors = drawer->Draw(view);
          if (!colors) {
            report->Blocking("a page with transparency is too much to be drawn");
            return ObjectChange::Value("null");
          }
          return ObjectChange::Stream(dictionary, std::move(*colors));
        });
  }

  // What the page's own content leaves in force is not, for the pictures.
  void CoverAreas(const pdf::PageTree::Page& page, const std::vector<Box>& areas) {
    std::string pictures;
    std::string names;
    for (const Box& area : areas) {
      const std::optional<Picture> picture = PictureOf(area);
      if (picture) {
        const std::string name = "/Flat" + std::to_string(picture->number);
        names += name;
        pdf::AppendReference(names, picture->number);
        pictures += "q ";
        AppendMatrix(pictures, picture->matrix);
        pictures += name + " Do Q\n";
      }
    }
    if (pictures.empty()) {
      return;
    }
    ContentEdits& edits = conversion_->page_edits[page.number];
    const std::string content = ContentOfPage(*conversion_, page.number).bytes;
    edits.Insert(0, "q\n");
    edits.Append(pdf::MeasureBalance(content).closing() + "\nQ\n/Artifact BMC\n" + pictures +
                 "EMC");
    AddXObjects(page, names);
    conversion_->report.Changed(
        "transparent parts of pages into pictures over what can still be selected", areas.size());
  }

  // In resources of the page's own.
  void AddXObjects(const pdf::PageTree::Page& page, const std::string& names) {
    Arena arena;
    Object given = conversion_->rewriter.Load(page.number, arena).Get("Resources");
    if (given.IsNull()) {
      given = conversion_->pages.Attribute(page, pdf::InheritableKey::kResources, arena);
    }
    const Object resources = Loaded(given, arena);
    std::string text = "<<";
    pdf::AppendEntries(text, resources, {"XObject"});
    text += "/XObject<<";
    pdf::AppendEntries(text, Loaded(resources.Get("XObject"), arena));
    conversion_->rewriter.SetEntry(page.number, "Resources", text + names + ">>>>");
  }

  Object Loaded(const Object& value, Arena& arena) {
    return value.IsReference() ? conversion_->rewriter.Load(value.AsReference().number, arena)
                               : value;
  }

  void ReplaceAppearances(const std::set<std::uint32_t>& annotations) {
    std::size_t replaced = 0;
    for (const std::uint32_t number : annotations) {
      if (replaced == limits::kMaxPicturedAnnotations) {
        conversion_->report.Dropped("transparency of annotations that are too many for one page",
                                    annotations.size() - replaced);
        return;
      }
      ReplaceAppearance(number);
      ++replaced;
    }
  }

  // By what is seen in its place.
  void ReplaceAppearance(std::uint32_t number) {
    Arena arena;
    const Object annotation = conversion_->rewriter.Load(number, arena);
    const Object normal = annotation.Get("AP").Get("N");
    const auto box = pdf::ReadPageBox(conversion_->document, annotation.Get("Rect"));
    const std::optional<Picture> picture =
        box && normal.IsReference() ? PictureOf(*box) : std::nullopt;
    if (!picture) {
      return;
    }
    std::string dictionary = "<</Type/XObject/Subtype/Form/BBox";
    pdf::AppendBox(dictionary, *box);
    dictionary += "/Resources<</XObject<</Flat";
    pdf::AppendReference(dictionary, picture->number);
    std::string content = "q ";
    AppendMatrix(content, picture->matrix);
    std::string appearance = "<</N";
    pdf::AppendReference(appearance, conversion_->rewriter.Add(ObjectChange::Stream(
                                         dictionary + ">>>>>>", content + "/Flat Do Q")));
    conversion_->rewriter.SetEntry(number, "AP", appearance + ">>");
    conversion_->report.Changed("transparent annotations into pictures");
  }

  Conversion* conversion_;
  TransparentAreas areas_;
  std::shared_ptr<Drawer> drawer_;
  std::set<std::uint32_t> seen_;  // numbers of pages
  std::size_t page_index_ = 0;
  pdf::PageGeometry geometry_;
};

}  // namespace

void FlattenTransparency(Conversion& conversion, const platform::WidePath& path,
                         const std::string& password) {
  if (!conversion.is_part1()) {
    return;
  }
  Flattener flattener(conversion, path, password);
  for (std::size_t i = 0; i < conversion.pages.pages().size(); ++i) {
    flattener.FlattenPage(i);
  }
}

}  // namespace TarnixTools::engines::pdfa
