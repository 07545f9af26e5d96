// Configurations of optional content: which layers are on, and how a viewer lists and links them
// (ISO 32000-2, 8.11.4.3).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERCONFIGURATION_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERCONFIGURATION_H_

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "engines/toolbox/copy/BoundedReader.h"
#include "engines/toolbox/copy/layers/LayerTree.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines::toolbox {

class SourceDocument;

enum class LayerState : std::uint8_t { kOn, kOff, kUnchanged };

// Marks of a layer in a configuration.
enum LayerMark : std::uint8_t { kMarkedOn = 1, kMarkedOff = 2, kMarkedLocked = 4 };

// What a configuration says of itself.
struct LayerConfigurationFacts {
  LayerState base_state = LayerState::kOn;
  std::string name;     // a PDF string; empty for none
  std::string creator;  // a PDF string; empty for none
  std::vector<std::string> intents = {"View"};
  bool lists_visible_pages_only = false;
};

// A configuration as a source has it.
struct SourceLayerConfiguration {
  LayerConfigurationFacts facts;
  std::vector<std::uint8_t> marks;  // by index of the layer; it may be shorter
  LayerTree order;
  LayerTree radio_groups;
  LayerTree usages;  // automatic states
};

// The layers of a source, by index. All that is read for them is read through this, with bounded
// work however entangled it is.
class LayerIndex {
 public:
  struct Layer {
    std::uint32_t number = 0;  // in the source
    bool is_listed = false;    // in the document's list of layers
    std::vector<std::string> intents;
  };

  explicit LayerIndex(SourceDocument& source);

  pdf::Object Look(const pdf::Object& value, pdf::Arena& arena) {
    return reader_.Look(value, arena);
  }

  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  // Index of an object of the source that is a layer, noted when it is new; kNone for others.
  std::uint32_t Note(std::uint32_t number);
  // Index of a layer that has been noted; kNone for all other objects.
  std::uint32_t Find(std::uint32_t number) const;

  std::vector<Layer>& layers() { return layers_; }

  const std::vector<Layer>& layers() const { return layers_; }

 private:
  SourceDocument* source_;
  BoundedReader reader_;
  pdf::Arena arena_;
  std::vector<Layer> layers_;
  std::unordered_map<std::uint32_t, std::uint32_t> indexes_;  // kNone: no layer
};

SourceLayerConfiguration ReadLayerConfiguration(const pdf::Object& dictionary, LayerIndex& index);

// The names of an intent entry: a name, or an array of names.
std::vector<std::string> LayerIntents(const pdf::Object& intent);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERCONFIGURATION_H_
