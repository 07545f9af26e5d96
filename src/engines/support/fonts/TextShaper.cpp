#include "engines/support/fonts/TextShaper.h"

#include <algorithm>

#include "engines/support/fonts/BidiLevels.h"
#include "engines/support/fonts/FontLibraries.h"
#include "engines/support/fonts/TextItems.h"

namespace TarnixTools::engines::fonts {

namespace {

struct BufferDestroyer {
  void operator()(hb_buffer_t* buffer) const { HarfBuzz::Get().hb_buffer_destroy(buffer); }
};

using BufferPtr = std::unique_ptr<hb_buffer_t, BufferDestroyer>;

bool IsUnseen(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

// Adds glyphs with the same cluster value as one cluster.
void AddClusters(GlyphRun& run, const std::vector<std::size_t>& starts, const TextItem& item) {
  for (std::size_t i = 0; i < starts.size();) {
    std::size_t end = i;
    while (end < starts.size() && starts[end] == starts[i]) {
      ++end;
    }
    run.clusters.push_back({i, end - i, starts[i], 0});
    i = end;
  }
  // A cluster reaches to where the next in the text begins.
  std::size_t next = item.first + item.count;
  const auto close = [&](GlyphCluster& cluster) {
    cluster.character_count = next - cluster.first_character;
    next = cluster.first_character;
  };
  if (run.is_right_to_left) {
    std::for_each(run.clusters.begin(), run.clusters.end(), close);
  } else {
    std::for_each(run.clusters.rbegin(), run.clusters.rend(), close);
  }
  // What is not seen at the start of the text goes with what follows it.
  if (!run.clusters.empty()) {
    GlyphCluster& first = run.is_right_to_left ? run.clusters.back() : run.clusters.front();
    first.character_count += first.first_character - item.first;
    first.first_character = item.first;
  }
}

GlyphRun ShapeItem(const std::u32string& shown, const TextItem& item) {
  const HarfBuzz& hb = HarfBuzz::Get();
  const BufferPtr buffer(hb.hb_buffer_create());
  hb.hb_buffer_add_utf32(buffer.get(), reinterpret_cast<const std::uint32_t*>(shown.data()),
                         static_cast<int>(shown.size()), static_cast<unsigned>(item.first),
                         static_cast<int>(item.count));
  GlyphRun run;
  run.face = item.face;
  run.is_right_to_left = item.level % 2 != 0;
  hb.hb_buffer_set_direction(buffer.get(),
                             run.is_right_to_left ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
  hb.hb_buffer_set_script(buffer.get(), static_cast<hb_script_t>(item.script));
  hb.hb_buffer_set_flags(buffer.get(), HB_BUFFER_FLAG_REMOVE_DEFAULT_IGNORABLES);
  hb.hb_shape(item.face->font(), buffer.get(), nullptr, 0);
  unsigned count = 0;
  const hb_glyph_info_t* infos = hb.hb_buffer_get_glyph_infos(buffer.get(), &count);
  const hb_glyph_position_t* places = hb.hb_buffer_get_glyph_positions(buffer.get(), &count);
  std::vector<std::size_t> starts;
  for (unsigned i = 0; i < count; ++i) {
    run.glyphs.push_back(
        {infos[i].codepoint, places[i].x_advance, places[i].x_offset, places[i].y_offset});
    starts.push_back(infos[i].cluster);
  }
  AddClusters(run, starts, item);
  return run;
}

// A face may still lack what shaping turns a character into.
char32_t FirstWithoutGlyph(const GlyphRun& run, const std::u32string& text) {
  for (const GlyphCluster& cluster : run.clusters) {
    for (std::size_t i = 0; i < cluster.glyph_count; ++i) {
      if (run.glyphs[cluster.first_glyph + i].glyph == 0 && cluster.character_count > 0) {
        return text[cluster.first_character];
      }
    }
  }
  return 0;
}

}  // namespace

FontFace* FaceStore::Load(const InstalledFace& face) {
  auto place = faces_.find(&face);
  if (place == faces_.end()) {
    place = faces_.emplace(&face, FontFace::Load(face.file, face.index)).first;
  }
  return place->second.get();
}

const std::vector<const InstalledFace*>& FaceStore::Substitutes(const InstalledFace& face,
                                                                const std::string& language) {
  const std::pair key(&face, language);
  auto place = substitutes_.find(key);
  if (place == substitutes_.end()) {
    place = substitutes_.emplace(key, FontCatalog::Get().Substitutes(face, language)).first;
  }
  return place->second;
}

ShapedLine ShapeLine(FaceStore& faces, const InstalledFace& face, std::u32string text) {
  ShapedLine line;
  std::replace(text.begin(), text.end(), U'\t', U' ');
  std::erase_if(text, IsUnseen);
  line.text = std::move(text);
  const std::vector<std::uint8_t> levels = BidiLevels(line.text);
  const TextItems cut = CutIntoItems(faces, face, line.text, levels);
  line.missing = cut.missing;
  std::vector<std::uint8_t> item_levels;
  for (const TextItem& item : cut.items) {
    item_levels.push_back(item.level);
  }
  for (const std::size_t index : VisualOrder(item_levels)) {
    GlyphRun run = ShapeItem(line.text, cut.items[index]);
    if (line.missing == 0) {
      line.missing = FirstWithoutGlyph(run, line.text);
    }
    for (const ShapedGlyph& glyph : run.glyphs) {
      line.width += static_cast<double>(glyph.advance) / run.face->units_per_em();
    }
    line.runs.push_back(std::move(run));
  }
  return line;
}

}  // namespace TarnixTools::engines::fonts
