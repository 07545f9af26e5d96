// Layers: optional content of copied pages (ISO 32000-2, 8.11). Those that the pages use come along
// with them; here goes what the document says of them, so that what was hidden stays hidden.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "engines/toolbox/copy/layers/LayerConfiguration.h"
#include "engines/toolbox/copy/layers/LayerTree.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyContext;
class SourceDocument;

// Read once per source.
class SourceLayers {
 public:
  explicit SourceLayers(SourceDocument& source);

  const LayerIndex& index() const { return index_; }

  // The default configuration first, then the alternate ones; none when there are no layers.
  const std::vector<SourceLayerConfiguration>& configurations() const { return configurations_; }

 private:
  void ReadConfigurations(const pdf::Object& properties, pdf::Arena& arena);

  LayerIndex index_;
  std::vector<SourceLayerConfiguration> configurations_;
};

// Layers that came from one source in one copy, and what that says of them.
struct LayerContribution {
  struct Layer {
    std::uint32_t number = 0;  // in the target
    bool is_listed = false;
    bool has_effect = true;  // the default configuration's intent covers one of the layer's
  };

  struct Configuration {
    LayerConfigurationFacts facts;
    std::vector<std::uint8_t> marks;  // of each layer
    // Items of arrays; empty for none.
    std::string order;
    std::string radio_groups;
    std::string usages;
  };

  std::vector<Layer> layers;
  std::vector<Configuration> configurations;
};

// The layers of a document being made.
class TargetLayers {
 public:
  void Add(LayerContribution contribution) { contributions_.push_back(std::move(contribution)); }

  bool is_empty() const { return contributions_.empty(); }

  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);

 private:
  void AppendDefault(std::string& out) const;
  void AppendDefaultStates(std::string& out) const;
  void AppendAlternate(std::string& out, const LayerContribution& contribution,
                       const LayerContribution::Configuration& configuration) const;

  std::vector<LayerContribution> contributions_;
};

class LayerCopier {
 public:
  explicit LayerCopier(CopyContext& context) : context_(&context) {}

  // To be called after all else has been written: what has been copied by then tells which layers
  // came along.
  void Copy();

 private:
  std::vector<KeptLayer> FindKept(const LayerIndex& index);

  CopyContext* context_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_LAYERS_H_
