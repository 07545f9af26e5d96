#include <algorithm>
#include <utility>

#include "engines/support/layout/DisjointSets.h"
#include "engines/support/layout/tables/TableArea.h"

namespace TarnixTools::engines {

namespace {

constexpr double kTouch = 2.5;  // points between rules that meet
constexpr double kSnap = 4;     // between the lines of a double rule

// Of rules as far down as the vertical one.
bool Meet(const Rule& horizontal, const Rule& vertical) {
  return vertical.at >= horizontal.from - kTouch && vertical.at <= horizontal.to + kTouch;
}

// Which rules hang together; numbers of vertical ones follow those of horizontal ones.
DisjointSets GroupsOf(const Rules& rules) {
  const std::vector<Rule>& across = rules.horizontal;
  DisjointSets groups(across.size() + rules.vertical.size());
  for (std::size_t v = 0; v < rules.vertical.size(); ++v) {
    const Rule& vertical = rules.vertical[v];
    auto h = std::lower_bound(across.begin(), across.end(), vertical.from - kTouch,
                              [](const Rule& rule, double y) { return rule.at < y; });
    for (; h != across.end() && h->at <= vertical.to + kTouch; ++h) {
      if (Meet(*h, vertical)) {
        groups.Join(static_cast<std::size_t>(h - across.begin()), across.size() + v);
      }
    }
  }
  return groups;
}

// The places of rules, and the ends of those that cross them where no rule closes the table.
std::vector<double> Places(const std::vector<Rule>& along, double from, double to) {
  std::vector<double> places = {from, to};
  for (const Rule& rule : along) {
    places.push_back(rule.at);
  }
  return Snap(std::move(places));
}

void SetBox(TableArea& area) {
  pdf::Box box = {1e9, 1e9, -1e9, -1e9};
  for (const Rule& rule : area.horizontal) {
    box = {std::min(box.left, rule.from), std::min(box.bottom, rule.at),
           std::max(box.right, rule.to), std::max(box.top, rule.at)};
  }
  for (const Rule& rule : area.vertical) {
    box = {std::min(box.left, rule.at), std::min(box.bottom, rule.from),
           std::max(box.right, rule.at), std::max(box.top, rule.to)};
  }
  area.box = box;
}

bool HasCells(const TableArea& area) {
  return area.rows.size() >= 2 && area.columns.size() >= 2 &&
         area.rows.size() + area.columns.size() >= 5;
}

}  // namespace

std::vector<double> Snap(std::vector<double> places) {
  std::sort(places.begin(), places.end());
  std::vector<double> snapped;
  for (std::size_t i = 0; i < places.size();) {
    std::size_t end = i + 1;
    while (end < places.size() && places[end] - places[end - 1] <= kSnap &&
           places[end] - places[i] <= 1.5 * kSnap) {
      ++end;
    }
    snapped.push_back((places[i] + places[end - 1]) / 2);
    i = end;
  }
  return snapped;
}

std::vector<TableArea> FindGrids(const Rules& rules) {
  DisjointSets groups = GroupsOf(rules);
  const std::size_t count = rules.horizontal.size() + rules.vertical.size();
  std::vector<std::size_t> area_of(count, count);
  std::vector<TableArea> areas;
  for (std::size_t i = 0; i < count; ++i) {
    std::size_t& number = area_of[groups.Find(i)];
    if (number == count) {
      number = areas.size();
      areas.emplace_back().kind = AreaKind::kGrid;
    }
    const bool is_horizontal = i < rules.horizontal.size();
    (is_horizontal ? areas[number].horizontal : areas[number].vertical)
        .push_back(is_horizontal ? rules.horizontal[i]
                                 : rules.vertical[i - rules.horizontal.size()]);
  }
  std::vector<TableArea> grids;
  for (TableArea& area : areas) {
    if (area.horizontal.empty() || area.vertical.empty()) {
      continue;
    }
    SetBox(area);
    area.rows = Places(area.horizontal, area.box.bottom, area.box.top);
    area.columns = Places(area.vertical, area.box.left, area.box.right);
    if (HasCells(area)) {
      grids.push_back(std::move(area));
    }
  }
  return grids;
}

}  // namespace TarnixTools::engines
