// All images of a document: read one after the other, made smaller on all cores, and put in the
// places of those that they come from.
//
//   ImagePass pass(document, survey, settings);
//   pass.Run(rewriter, pool, store);
//   pass.Apply(rewriter);
//   report.images = pass.Figures();
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEPASS_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEPASS_H_

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engines/optimizer/OptimizerReport.h"
#include "engines/optimizer/WorkPool.h"
#include "engines/optimizer/images/ImageGoals.h"
#include "engines/optimizer/images/ImageOptimizer.h"
#include "engines/optimizer/images/ImageReader.h"
#include "engines/optimizer/survey/DocumentSurvey.h"
#include "engines/support/files/DataStore.h"
#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

class ImagePass {
 public:
  // Document and survey outlive the pass.
  ImagePass(pdf::Document& document, const DocumentSurvey& survey,
            const OptimizerSettings& settings);

  // Reads the images on this thread and codes them on those of the pool; not those that the rewriter
  // leaves out or takes others for. Throws pdf::Error for a document that cannot be read any more.
  //   store - of what they become
  void Run(pdf::DocumentRewriter& rewriter, WorkPool& pool, DataStore& store);

  // Tells the rewriter of the images that have become smaller. The pass outlives the writing.
  void Apply(pdf::DocumentRewriter& rewriter);

  const ImageGoals& goals() const { return goals_; }

  // By ImageClass.
  std::array<ClassFigures, kImageClassCount> Figures() const;

 private:
  struct Entry {
    std::uint64_t bytes_before = 0;
    std::uint32_t matte_mask = 0;   // number of the soft mask that its colours are mixed by
    std::optional<ImagePart> part;  // that the outcome is about
    ImageOutcome outcome;           // its data is in the store
    StoredData data;
    std::vector<StoredData> stencils;  // of the outcome's inks

    // Of what the image has become.
    std::uint64_t BytesAfter() const;
  };

  // What images are worked on with.
  struct Workshop {
    WorkPool* pool = nullptr;
    DataStore* store = nullptr;
  };

  using Placements = std::map<std::uint32_t, ImagePlacement>;

  bool HasCmykIntent();
  static void AddUse(Placements& placements, std::uint32_t number, const ImagePlacement& placement);
  void Add(std::uint32_t number, ImageRole role, const ImagePlacement& placement,
           pdf::DocumentRewriter& rewriter, const Workshop& workshop);
  void Start(Entry& entry, ImageInput input, const Workshop& workshop) const;
  void KeepPairsTogether();
  pdf::ObjectChange StreamOf(std::uint32_t number, const Entry& entry,
                             pdf::DocumentRewriter& rewriter) const;
  void PutForm(std::uint32_t number, const Entry& entry, pdf::DocumentRewriter& rewriter) const;
  std::string ColorSpaceOf(std::uint32_t number, const CodedPicture& coded) const;
  std::string DictionaryOf(std::uint32_t number, const CodedPicture& coded,
                           pdf::DocumentRewriter& rewriter) const;

  pdf::Document* document_;
  const DocumentSurvey* survey_;
  ImageGoals goals_;
  Placements soft_masks_;  // of images that are drawn
  Placements stencil_masks_;
  std::map<std::uint32_t, Entry> entries_;  // by number; work holds references to them
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEPASS_H_
