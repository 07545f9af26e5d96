// The rules of a page, what grids they make, and the columns that words are in.
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "engines/support/layout/Dice.h"
#include "engines/support/layout/tables/Rules.h"
#include "engines/support/layout/tables/TableArea.h"
#include "engines/support/layout/tables/TableColumns.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kWhite{255, 255, 255};

PathShape Filled(pdf::Box box, Rgb color = kRed) {
  return {PathShape::Kind::kRectangle, box, color, std::nullopt};
}

PathShape Drawn(pdf::Box box, double width, Rgb color = kRed) {
  return {PathShape::Kind::kLine, box, std::nullopt, color, width};
}

Rules RulesOfPaths(std::vector<PathShape> paths, std::vector<PageLink> links = {}) {
  PageModel page;
  page.width = 600;
  page.height = 800;
  page.paths = std::move(paths);
  page.links = std::move(links);
  return RulesOf(page);
}

std::string Short(double number) {
  std::string text = std::to_string(number);
  text.erase(text.find_last_not_of('0') + 1);
  text.erase(text.find_last_not_of('.') + 1);
  return text;
}

// "at: from-to width", with an asterisk for the edge of a field.
std::vector<std::string> Said(const std::vector<Rule>& rules) {
  std::vector<std::string> said;
  for (const Rule& rule : rules) {
    said.push_back(Short(rule.at) + ": " + Short(rule.from) + "-" + Short(rule.to) + " " +
                   Short(rule.width) + (rule.is_edge ? "*" : ""));
  }
  return said;
}

TEST(Rules, AreThinFieldsAndLines) {
  const Rules rules = RulesOfPaths({Filled({100, 50, 200, 53}), Drawn({100, 80, 200, 80}, 0.5),
                                    Filled({300, 50, 303, 150}), Drawn({320, 50, 320, 150}, 2),
                                    Filled({400, 50, 404, 150})});
  EXPECT_THAT(Said(rules.horizontal), ElementsAre("51.5: 100-200 3", "80: 100-200 0.5"));
  EXPECT_THAT(Said(rules.vertical), ElementsAre("301.5: 50-150 3", "320: 50-150 2"));
  ASSERT_EQ(rules.fills.size(), 1u);  // the last one is too wide for a rule
  EXPECT_EQ(rules.fills[0].box.left, 400);
  EXPECT_EQ(rules.horizontal[0].color, kRed);
}

TEST(Rules, AreSeenAndLongEnough) {
  EXPECT_THAT(RulesOfPaths({Filled({100, 50, 200, 51}, kWhite),
                            Filled({100, 70, 105.9, 71}),
                            {PathShape::Kind::kLine, {100, 90, 200, 90}, {}, {}, 1}})
                  .horizontal,
              IsEmpty());
  EXPECT_THAT(Said(RulesOfPaths({Filled({100, 70, 106, 71})}).horizontal),
              ElementsAre("70.5: 100-106 1"));
  // A short dash is as much a part of a rule that runs down.
  EXPECT_THAT(Said(RulesOfPaths({Filled({100, 70, 102, 72}), Filled({100, 74, 102, 76}),
                                 Filled({100, 78, 102, 80})})
                       .vertical),
              ElementsAre("101: 70-80 2"));
}

TEST(Rules, AreJoinedOfPieces) {
  const Rules rules =
      RulesOfPaths({Drawn({150, 80.8, 180, 80.8}, 2), Drawn({100, 80, 146.8, 80}, 1),
                    Drawn({183.3, 80, 250, 80}, 1), Drawn({100, 81.7, 200, 81.7}, 1)});
  EXPECT_THAT(Said(rules.horizontal),
              ElementsAre("80: 100-180 2", "80: 183.3-250 1", "81.7: 100-200 1"));
}

TEST(Rules, AreFramesOfBoxesAndNotPaper) {
  PathShape frame{PathShape::Kind::kRectangle, {100, 100, 200, 150}, kRed, Rgb{0, 0, 255}, 2};
  const Rules rules = RulesOfPaths({frame, Filled({10, 10, 590, 790})});
  EXPECT_THAT(Said(rules.horizontal), ElementsAre("100: 100-200 2", "150: 100-200 2"));
  EXPECT_THAT(Said(rules.vertical), ElementsAre("100: 100-150 2", "200: 100-150 2"));
  EXPECT_EQ(rules.horizontal[0].color, (Rgb{0, 0, 255}));
  EXPECT_EQ(rules.fills.size(), 1u);
  frame.stroke = kWhite;
  EXPECT_THAT(RulesOfPaths({frame}).horizontal, IsEmpty());
}

// A line of one point, whose middle is at this height, over a link of 40 points from 100 and 90 on.
TEST(Rules, AreLinesBesideLinks) {
  const auto is_rule = [](double left, double right, double y) {
    return !RulesOfPaths({Drawn({left, y - 0.5, right, y + 0.5}, 1)},
                         {{{100, 90, 150, 102}, "http://example.org/"}})
                .horizontal.empty();
  };
  EXPECT_TRUE(is_rule(100, 150, 96));
  EXPECT_FALSE(is_rule(100, 150, 96.25));
  EXPECT_FALSE(is_rule(100, 150, 105));
  EXPECT_TRUE(is_rule(100, 150, 105.25));
  EXPECT_FALSE(is_rule(97, 150, 102));
  EXPECT_TRUE(is_rule(96.75, 150, 102));
  EXPECT_FALSE(is_rule(100, 153, 102));
  EXPECT_TRUE(is_rule(100, 153.25, 102));
}

TEST(Rules, AreNotLinesUnderLinks) {
  const PageLink link{{100, 90, 150, 102}, "http://example.org/"};
  EXPECT_THAT(RulesOfPaths({Drawn({100, 101, 150, 101}, 1)}, {link}).horizontal, IsEmpty());
  EXPECT_THAT(Said(RulesOfPaths({Drawn({100, 95, 150, 95}, 1), Drawn({100, 106, 150, 106}, 1),
                                 Drawn({96, 101, 150, 101}, 1)},
                                {link})
                       .horizontal),
              ElementsAre("95: 100-150 1", "101: 96-150 1", "106: 100-150 1"));
}

TEST(Rules, AreEdgesOfFieldsToo) {
  Rules rules = RulesOfPaths({Filled({100, 100, 200, 120}),
                              Filled({100, 120.5, 200, 140}),  // two strips of one cell
                              Filled({110, 105, 150, 115}),    // within the first
                              Filled({200, 100, 300, 140}, Rgb{0, 0, 255}),
                              Filled({0, 0, 50, 50}, kWhite), Filled({400, 400, 450, 450})});
  const std::vector<pdf::Box> areas = {{390, 390, 460, 460}};
  AddFillEdges(areas, rules);
  EXPECT_THAT(Said(rules.horizontal), ElementsAre("100: 100-300 0*", "140: 100-300 0*"));
  EXPECT_THAT(Said(rules.vertical),
              ElementsAre("100: 100-140 0*", "200: 100-140 0*", "300: 100-140 0*"));
}

TEST(Rules, AreTakenForOneWhereTheyAreClose) {
  EXPECT_THAT(Snap({50, 10, 14, 54.1, 100, 104, 106.5}), ElementsAre(12, 50, 54.1, 102, 106.5));
  EXPECT_THAT(Snap({}), IsEmpty());
}

TEST(Rules, MakeGridsWhereTheyMeet) {
  std::vector<PathShape> paths;
  for (const double y : {100.0, 120.0, 140.0}) {
    paths.push_back(Drawn({100, y, 300, y}, 1));
  }
  for (const double x : {100.0, 200.0, 302.4}) {  // the last stands off the lines a little
    paths.push_back(Drawn({x, 100, x, 142.4}, 1));
  }
  paths.push_back(Drawn({100, 400, 300, 400}, 1));  // meets none
  paths.push_back(Drawn({330, 90, 330, 150}, 1));
  const std::vector<TableArea> grids = FindGrids(RulesOfPaths(paths));
  ASSERT_EQ(grids.size(), 1u);
  EXPECT_EQ(grids[0].kind, AreaKind::kGrid);
  EXPECT_THAT(grids[0].columns, ElementsAre(100, 200, 302.4));
  EXPECT_THAT(grids[0].rows, ElementsAre(100, 120, 141.2));
  EXPECT_EQ(grids[0].box.left, 100);
  EXPECT_EQ(grids[0].box.right, 302.4);
  EXPECT_EQ(grids[0].box.bottom, 100);
  EXPECT_EQ(grids[0].box.top, 142.4);
  EXPECT_EQ(grids[0].horizontal.size(), 3u);
  EXPECT_EQ(grids[0].vertical.size(), 3u);
}

TEST(Rules, MakeNoGridOfOneCell) {
  EXPECT_THAT(
      FindGrids(RulesOfPaths({{PathShape::Kind::kRectangle, {100, 100, 200, 150}, {}, kRed, 1}})),
      IsEmpty());
}

TEST(ColumnsOfChunks, AreThoseTheyReachWellInto) {
  const std::vector<double> edges = {0, 100, 200, 300};
  const auto columns = [&edges](double left, double right) {
    return ColumnsOf({0, 0, left, right, false}, edges);
  };
  EXPECT_THAT(columns(10, 90), Pair(0u, 0u));
  EXPECT_THAT(columns(110, 130), Pair(1u, 1u));
  EXPECT_THAT(columns(60, 139), Pair(0u, 1u));  // nearly half of itself is in each
  EXPECT_THAT(columns(20, 130), Pair(0u, 0u));  // 30 of 110, and of 100: too little
  EXPECT_THAT(columns(20, 141), Pair(0u, 1u));  // 41 of the second column
  EXPECT_THAT(columns(10, 290), Pair(0u, 2u));
  EXPECT_THAT(columns(-50, -10), Pair(0u, 0u));  // beside all
  EXPECT_THAT(columns(310, 350), Pair(2u, 2u));
}

TEST(Rules, MeetWhereTheyAreTwoAndAHalfPointsApart) {
  const auto grids = [](double gap) {
    std::vector<PathShape> paths = {Drawn({100, 100, 300, 100}, 1)};
    for (const double y : {120.0, 140.0}) {
      paths.push_back(Drawn({100, y, 300, y}, 1));
    }
    for (const double x : {100.0, 200.0, 300.0}) {
      paths.push_back(Drawn({x, 100 + gap, x, 140}, 1));
    }
    return FindGrids(RulesOfPaths(paths)).at(0).horizontal.size();
  };
  EXPECT_EQ(grids(2.5), 3u);
  EXPECT_EQ(grids(2.6), 2u);
}

Ink WordAt(double left, double right, double upper) {
  Ink ink;
  ink.left = left;
  ink.right = right;
  ink.upper = upper;
  ink.lower = upper + 10;
  ink.baseline = upper + 8;
  ink.size = 10;
  return ink;
}

TEST(Areas, AreAroundWordsWithTheRulesWithin) {
  Rules rules;
  for (const double to : {89.0, 89.1, 150.0}) {
    rules.horizontal.push_back({125, 50, to, 1, Rgb{}, false});
  }
  rules.horizontal.push_back({99, 50, 500, 1, Rgb{}, false});
  rules.horizontal.push_back({141, 50, 500, 1, Rgb{}, false});
  rules.horizontal.push_back({130, 211, 500, 1, Rgb{}, false});
  const TableArea area =
      AreaAround(std::vector<Ink>{WordAt(90, 150, 100), WordAt(160, 210, 130)}, rules);
  EXPECT_EQ(area.kind, AreaKind::kStripes);
  EXPECT_EQ(area.box.left, 89);
  EXPECT_EQ(area.box.right, 211);
  EXPECT_EQ(area.box.bottom, 99);
  EXPECT_EQ(area.box.top, 141);
  // One that ends where the area begins is not within it, nor those at its edges.
  EXPECT_EQ(area.horizontal.size(), 2u);
  EXPECT_THAT(area.rows, ElementsAre(125));
}

TEST(Areas, AreRowsOfSeveralChunks) {
  std::vector<Ink> inks;
  for (int row = 0; row < 3; ++row) {
    inks.push_back(WordAt(100, 150, 100 + 26 * row));
    inks.push_back(WordAt(200, 240, 100 + 26 * row));
  }
  const auto areas = FindTextAreas({}, inks);
  ASSERT_EQ(areas.size(), 1u);
  EXPECT_EQ(areas[0].kind, AreaKind::kText);
  EXPECT_EQ(areas[0].box.left, 99);
  EXPECT_EQ(areas[0].box.right, 241);
  EXPECT_EQ(areas[0].box.bottom, 99);
  EXPECT_EQ(areas[0].box.top, 163);
  // Two rows are none; nor are rows that stand more than 2.6 times their size apart.
  EXPECT_THAT(FindTextAreas({}, std::vector<Ink>(inks.begin(), inks.begin() + 4)), IsEmpty());
  for (std::size_t i = 4; i < 6; ++i) {
    inks[i] = WordAt(inks[i].left, inks[i].right, 153);
  }
  EXPECT_THAT(FindTextAreas({}, inks), IsEmpty());
  Rules rules;
  rules.horizontal = {{145, 100, 240, 1, Rgb{}, false}};
  EXPECT_EQ(FindTextAreas(rules, inks).size(), 1u);  // a rule is between
}

// Lines of prose beside a column are no part of a table: five words over 18 ems.
TEST(Areas, LeaveProseOut) {
  const auto areas_with = [](int words, double width) {
    std::vector<Ink> inks;
    for (int row = 0; row < 3; ++row) {
      for (int i = 0; i < words; ++i) {
        const double step = width / words;
        const double left = 100 + step * i;
        inks.push_back(WordAt(left, left + step - (i + 1 < words ? 3 : 0), 100 + 12 * row));
      }
      inks.push_back(WordAt(400, 440, 100 + 12 * row));
    }
    return FindTextAreas({}, inks).size();
  };
  EXPECT_EQ(areas_with(5, 181), 0u);
  EXPECT_EQ(areas_with(4, 181), 1u);
  EXPECT_EQ(areas_with(5, 180), 1u);
}

std::string Listed(const char* name, const std::vector<Rule>& rules) {
  std::string text;
  for (const std::string& rule : Said(rules)) {
    text += (text.empty() ? name : "; ") + rule;
  }
  return text;
}

// A thing near the one before it, or anywhere.
PathShape NearBy(Dice& dice, const pdf::Box& last) {
  const bool is_level = dice.Chance(50);
  const double thickness = dice.Chance(80) ? dice.Between(0, 3, 0.25) : dice.Between(2, 60, 1);
  const double length = dice.Between(2, dice.Chance(95) ? 80 : 560, 1);
  const double left = dice.Chance(60)   ? last.left + dice.Between(-2, 2, 0.25)
                      : dice.Chance(60) ? last.right + dice.Between(-1, 5, 0.25)
                                        : dice.Between(-20, 590, 5);
  const double top = dice.Chance(60)   ? last.bottom + dice.Between(-2, 2, 0.25)
                     : dice.Chance(60) ? last.top + dice.Between(-1, 5, 0.25)
                                       : dice.Between(-20, 790, 5);
  const pdf::Box box{left, top, left + (is_level ? length : thickness),
                     top + (is_level ? thickness : length)};
  const Rgb color = dice.Chance(90) ? kRed : kWhite;
  if (dice.Chance(50)) {
    return Filled(box, color);
  }
  PathShape drawn = Drawn(box, dice.Between(0.25, 2, 0.25), color);
  drawn.kind = dice.Chance(60)   ? PathShape::Kind::kLine
               : dice.Chance(80) ? PathShape::Kind::kRectangle
                                 : PathShape::Kind::kOther;
  return drawn;
}

TEST(Rules, AreThoseOfAnyPaths) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 150; ++seed) {
    Dice dice(seed);
    std::vector<PathShape> paths;
    std::vector<PageLink> links;
    pdf::Box last{100, 100, 160, 101};
    for (std::size_t count = dice.Under(8) + 2; count > 0; --count) {
      paths.push_back(NearBy(dice, last));
      last = paths.back().box;
      if (dice.Chance(10)) {
        links.push_back({{last.left + dice.Between(-4, 4, 1), last.bottom - dice.Between(0, 12, 1),
                          last.right + dice.Between(-4, 4, 1), last.top + dice.Between(-4, 4, 1)}});
      }
    }
    Rules rules = RulesOfPaths(paths, links);
    const std::string lines =
        Listed(" level ", rules.horizontal) + Listed(" upright ", rules.vertical);
    AddFillEdges({}, rules);
    text += std::to_string(seed) + ":" + lines + " fills " + std::to_string(rules.fills.size()) +
            Listed(" edges ", rules.horizontal) + "\n";
    for (std::size_t i = 1; i < rules.horizontal.size(); ++i) {
      EXPECT_LE(rules.horizontal[i - 1].at, rules.horizontal[i].at + 0.8) << seed;
    }
  }
  EXPECT_TRUE(TarnixTools::testing::IsAsExpected("layout/random-rules.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
