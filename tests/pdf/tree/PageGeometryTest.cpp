#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/tree/PageGeometry.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {

void PrintTo(const Box& box, std::ostream* out) {
  *out << '[' << box.left << ' ' << box.bottom << ' ' << box.right << ' ' << box.top << ']';
}

namespace {

using ::TarnixTools::testing::RawPdf;

constexpr Box kOwn = {0, 0, 200, 100};

// The geometry of the only page of a document, which inherits from a node and the root above that.
PageGeometry GeometryOf(const std::string& page, const std::string& node = "",
                        const std::string& root = "") {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1" + root + ">>")
      .Object(3, "<</Type/Pages/Parent 2 0 R/Kids[4 0 R]/Count 1" + node + ">>")
      .Object(4, "<</Type/Page/Parent 3 0 R" + page + ">>")
      .Object(5, "90")
      .Object(6, "200")
      .Object(7, "[0 0 6 0 R 100]")
      .Object(8, "7 0 R")
      .Object(9, "null");
  const std::string bytes = pdf.Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  const PageTree pages(*document);
  return ReadPageGeometry(*document, pages, pages.pages().at(0));
}

Box MediaBoxOf(const std::string& value) {
  return GeometryOf("/MediaBox" + value).media_box;
}

Box CropBoxOf(const std::string& value) {
  return GeometryOf("/MediaBox[0 0 200 100]/CropBox" + value).crop_box;
}

int TurnOf(const std::string& value) {
  return GeometryOf("/Rotate " + value).rotation;
}

double UnitOf(const std::string& value) {
  return GeometryOf("/UserUnit " + value).user_unit;
}

struct Point {
  double x = 0;
  double y = 0;

  friend bool operator==(const Point&, const Point&) = default;
};

Point Moved(const Matrix& matrix, Point point) {
  return {matrix.a * point.x + matrix.c * point.y + matrix.e,
          matrix.b * point.x + matrix.d * point.y + matrix.f};
}

TEST(PageGeometry, ReadsMediaBoxes) {
  for (const char* value :
       {"[0 0 200 100]", "[200 100 0 0]", "[200 0 0 100]", "[0 0 200.0 100.]", "[0 0 6 0 R 100]",
        " 7 0 R", " 8 0 R", "[/a 0 200 100]", "[null 99 0 R 200 100]", "[[5] (5) 200 100]"}) {
    EXPECT_EQ(MediaBoxOf(value), kOwn) << value;
  }
  EXPECT_EQ(MediaBoxOf("[-50 -20 150.5 80]"), (Box{-50, -20, 150.5, 80}));
}

TEST(PageGeometry, TakesLetterForMediaBoxesThatAreNone) {
  for (const char* value :
       {"[]", "[0 0 200]", "[0 0 200 100 7]", "[[0 0 200 100]]", "[0 0 [200] 100]", "[0 0 0 0]",
        "[0 0 200 0]", "[5 5 5.0000001 9]", "/Name", "(text)", "<<>>", " 99 0 R", " null", " 9 0 R",
        " 7", "[0 0 99999999999999999999999999 100]", "[0 0 1e5 1e5]", "[-2147483648 0 1 1]"}) {
    EXPECT_EQ(MediaBoxOf(value), kDefaultMediaBox) << value;
  }
  EXPECT_EQ(GeometryOf("").media_box, kDefaultMediaBox);
  EXPECT_EQ(GeometryOf("").crop_box, kDefaultMediaBox);
}

TEST(PageGeometry, ClipsTheCropBoxToTheMediaBox) {
  EXPECT_EQ(CropBoxOf("[10 20 110 70]"), (Box{10, 20, 110, 70}));
  EXPECT_EQ(CropBoxOf("[110 70 10 20]"), (Box{10, 20, 110, 70}));
  EXPECT_EQ(CropBoxOf("[-50 -50 400 400]"), kOwn);
  EXPECT_EQ(CropBoxOf("[150 50 400 400]"), (Box{150, 50, 200, 100}));
}

TEST(PageGeometry, ShowsTheMediaBoxWhereTheCropBoxShowsNothing) {
  for (const char* value : {"[300 300 400 400]", "[200 0 300 100]", "[0 0 0 0]", "[0 0 10]",
                            "[0 0 10 10 10]", "/Name", " null", " 99 0 R", " 9 0 R"}) {
    EXPECT_EQ(CropBoxOf(value), kOwn) << value;
  }
}

TEST(PageGeometry, GivesInnerBoxesTheirDefaults) {
  const PageGeometry plain = GeometryOf("/MediaBox[0 0 200 100]/CropBox[10 20 110 70]");
  for (const Box& box : {plain.bleed_box, plain.trim_box, plain.art_box}) {
    EXPECT_EQ(box, plain.crop_box);
  }
  const PageGeometry geometry = GeometryOf(
      "/MediaBox[0 0 200 100]/CropBox[10 20 110 70]/BleedBox[5 5 300 95]/TrimBox[60 60 20 30]"
      "/ArtBox[900 900 950 950]");
  EXPECT_EQ(geometry.bleed_box, (Box{5, 5, 200, 95}));
  EXPECT_EQ(geometry.trim_box, (Box{20, 30, 60, 60}));
  EXPECT_EQ(geometry.art_box, geometry.crop_box);
}

TEST(PageGeometry, DoesNotInheritInnerBoxesAndUnits) {
  const PageGeometry geometry = GeometryOf("", "", "/TrimBox[1 1 2 2]/UserUnit 2");
  EXPECT_EQ(geometry.trim_box, kDefaultMediaBox);
  EXPECT_EQ(geometry.user_unit, 1);
}

TEST(PageGeometry, InheritsFromTheNearestThatHasAValue) {
  const std::string root = "/MediaBox[0 0 200 100]/CropBox[10 20 110 70]/Rotate 90";
  const PageGeometry far = GeometryOf("", "", root);
  EXPECT_EQ(far.media_box, kOwn);
  EXPECT_EQ(far.crop_box, (Box{10, 20, 110, 70}));
  EXPECT_EQ(far.rotation, 90);
  const PageGeometry near = GeometryOf("/CropBox null", "/CropBox[0 0 50 50]/Rotate 180", root);
  EXPECT_EQ(near.media_box, kOwn);
  EXPECT_EQ(near.crop_box, (Box{0, 0, 50, 50}));
  EXPECT_EQ(near.rotation, 180);
}

TEST(PageGeometry, HidesInheritedValuesBehindUnusableOnes) {
  const PageGeometry geometry = GeometryOf("/MediaBox(a)/CropBox[]/Rotate/Left",
                                           "/MediaBox[0 0 200 100]/CropBox[0 0 9 9]/Rotate 90");
  EXPECT_EQ(geometry.media_box, kDefaultMediaBox);
  EXPECT_EQ(geometry.crop_box, kDefaultMediaBox);
  EXPECT_EQ(geometry.rotation, 0);
}

TEST(PageGeometry, CountsQuartersOfATurn) {
  const std::vector<std::pair<const char*, int>> turns = {
      {"0", 0},     {"90", 90},    {"180", 180}, {"270", 270},  {"360", 0},
      {"450", 90},  {"-90", 270},  {"-270", 90}, {"-450", 270}, {"3600", 0},
      {"90.0", 90}, {"5 0 R", 90}, {"+90", 90},  {"-90.0", 270}};
  for (const auto& [value, turn] : turns) {
    EXPECT_EQ(TurnOf(value), turn) << value;
  }
}

TEST(PageGeometry, CutsOffWhatIsMoreThanWholeQuarters) {
  const std::vector<std::pair<const char*, int>> turns = {
      {"1", 0},     {"45", 0},    {"89.9", 0},       {"91", 90},          {"100", 90},
      {"135", 90},  {"225", 180}, {"359", 270},      {"-45", 0},          {"-100", 270},
      {"90.5", 90}, {"463", 90},  {"1000000090", 0}, {"-2147483648", 270}};
  for (const auto& [value, turn] : turns) {
    EXPECT_EQ(TurnOf(value), turn) << value;
  }
}

TEST(PageGeometry, DoesNotTurnByWhatIsNoNumber) {
  for (const char* value : {"/90", "(90)", "[90]", "<<>>", "true", "null", "99 0 R", "2147483648",
                            "-4294967386", "99999999999999999999", "2147483670.0"}) {
    EXPECT_EQ(TurnOf(value), 0) << value;
  }
}

TEST(PageGeometry, ReadsUnits) {
  EXPECT_EQ(UnitOf("2"), 2);
  EXPECT_EQ(UnitOf("0.5"), 0.5);
  EXPECT_EQ(UnitOf("6 0 R"), 200);
  EXPECT_EQ(UnitOf("75000"), 75000);
  for (const char* value :
       {"0", "-1", "/x", "[2]", "null", "75001", "0.0001", "99999999999999999999"}) {
    EXPECT_EQ(UnitOf(value), 1) << value;
  }
}

TEST(PageGeometry, MeasuresWhatIsSeen) {
  const std::string page = "/MediaBox[0 0 200 100]/CropBox[10 20 110 70]/UserUnit 2";
  const PageGeometry upright = GeometryOf(page);
  EXPECT_EQ(upright.SeenWidth(), 200);
  EXPECT_EQ(upright.SeenHeight(), 100);
  const PageGeometry turned = GeometryOf(page + "/Rotate 270");
  EXPECT_EQ(turned.SeenWidth(), 100);
  EXPECT_EQ(turned.SeenHeight(), 200);
}

TEST(PageGeometry, MovesTheSeenLowerLeftCornerToTheOrigin) {
  const std::string page = "/MediaBox[0 0 200 100]/CropBox[10 20 110 70]/UserUnit 2/Rotate ";
  const std::vector<std::pair<const char*, Point>> corners = {
      {"0", {10, 20}}, {"90", {110, 20}}, {"180", {110, 70}}, {"270", {10, 70}}};
  for (const auto& [rotate, corner] : corners) {
    const PageGeometry geometry = GeometryOf(page + rotate);
    EXPECT_EQ(Moved(geometry.ToSeen(), corner), (Point{0, 0})) << rotate;
    EXPECT_EQ(Moved(geometry.ToSeenPoints(), corner), (Point{0, 0})) << rotate;
    EXPECT_EQ(Moved(geometry.FromSeen(), {0, 0}), corner) << rotate;
    EXPECT_EQ(Moved(geometry.FromSeenPoints(), {0, 0}), corner) << rotate;
  }
}

TEST(PageGeometry, KeepsWhatIsSeenWithinItsSize) {
  const std::string page = "/MediaBox[0 0 200 100]/CropBox[10 20 110 70]/UserUnit 2/Rotate ";
  for (const char* rotate : {"0", "90", "180", "270"}) {
    const PageGeometry geometry = GeometryOf(page + rotate);
    EXPECT_EQ(geometry.crop_box.Through(geometry.ToSeenPoints()),
              (Box{0, 0, geometry.SeenWidth(), geometry.SeenHeight()}))
        << rotate;
    EXPECT_EQ(geometry.crop_box.Through(geometry.ToSeen()),
              (Box{0, 0, geometry.SeenWidth() / 2, geometry.SeenHeight() / 2}))
        << rotate;
    EXPECT_TRUE((geometry.ToSeen() * geometry.FromSeen()).IsIdentity()) << rotate;
    EXPECT_TRUE((geometry.ToSeenPoints() * geometry.FromSeenPoints()).IsIdentity()) << rotate;
  }
}

TEST(PageGeometry, TurnsFurther) {
  const PageGeometry geometry = GeometryOf("/Rotate 270");
  EXPECT_EQ(geometry.Turned(180).rotation, 90);
  EXPECT_EQ(geometry.Turned(-270).rotation, 0);
  EXPECT_EQ(geometry.Turned(0).rotation, 270);
}

TEST(PageGeometryTest, IsMadeAsSmallAsTheRoomWantsIt) {
  const PageGeometry geometry = GeometryOf("/MediaBox[0 0 200 100]/UserUnit 2/Rotate 90");
  EXPECT_EQ(geometry.Within({}).user_unit, 2);
  EXPECT_EQ(geometry.Within({200, 400}).user_unit, 2);
  EXPECT_EQ(geometry.Within({100, 400}).user_unit, 1);
  EXPECT_EQ(geometry.Within({100, 100}).SeenHeight(), 100);
  EXPECT_EQ(geometry.Within({100, 100}).SeenWidth(), 50);
}

TEST(PageGeometry, ReadsPagesThatAreNoObjectsOfTheirOwn) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2,
              "<</Type/Pages/Kids[<</Type/Page/MediaBox[0 0 200 100]/UserUnit 2>>]/Count 1"
              "/Rotate 90>>");
  const std::string bytes = pdf.Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  const PageTree pages(*document);
  const PageGeometry geometry = ReadPageGeometry(*document, pages, pages.pages().at(0));
  EXPECT_EQ(geometry.media_box, kOwn);
  EXPECT_EQ(geometry.SeenWidth(), 200);
  EXPECT_EQ(geometry.SeenHeight(), 400);
}

}  // namespace
}  // namespace TarnixTools::pdf
