// What the tasks that decorate one document in one way have in common: the output's name, the pages
// that are decorated, and the settings that each of them has.
#ifndef TARNIX_PDF_DECORATION_TASK_H_
#define TARNIX_PDF_DECORATION_TASK_H_

#include <string>

#include "PdfPageRange.h"
#include "PdfTask.h"
#include "PdfTransformation.h"
#include "TarnixExport.h"

namespace TarnixTools {

// The settings are those of PdfTransformation, where they are described.
class TARNIX_EXPORT PdfDecorationTask : public PdfTask {
 public:
  // ---- which pages: all of them, until the first of these calls chooses others -----------------

  // Counts the document's pages, for which it is opened: throws what PdfDoc::GetPagesNum throws,
  // and InvalidParameter unless there is exactly one document.
  void TargetAllPages();
  void AddTargetPage(int page_number);
  void AddTargetRange(const PdfPageRange& range);
  void AddTargetPattern(const std::string& pattern);

  // Without target pages, all pages are decorated.
  void ClearTargetPages();
  int GetTargetPagesNum() const;

  // ---- settings --------------------------------------------------------------------------------

  std::string& GetFontName() { return transformation_.GetFontName(); }

  void SetFontName(const std::string& name) { transformation_.SetFontName(name); }

  std::string& GetFontStyle() { return transformation_.GetFontStyle(); }

  void SetFontStyle(const std::string& style) { transformation_.SetFontStyle(style); }

  std::string& GetFontColor() { return transformation_.GetFontColor(); }

  void SetFontColor(const std::string& color) { transformation_.SetFontColor(color); }

  double GetFontSize() const { return transformation_.GetFontSize(); }

  void SetFontSize(int size) { transformation_.SetFontSize(size); }

  PdfTransformVerticalPos GetVerticalPosition() const {
    return transformation_.GetVerticalPosition();
  }

  void SetVerticalPosition(PdfTransformVerticalPos position) {
    transformation_.SetVerticalPosition(position);
  }

  int GetVerticalAdjustment() const { return transformation_.GetVerticalAdjustment(); }

  void SetVerticalAdjustment(int adjustment) { transformation_.SetVerticalAdjustment(adjustment); }

  PdfTransformHorizontalPos GetHorizontalPosition() const {
    return transformation_.GetHorizontalPosition();
  }

  void SetHorizontalPosition(PdfTransformHorizontalPos position) {
    transformation_.SetHorizontalPosition(position);
  }

  int GetHorizontalAdjustment() const { return transformation_.GetHorizontalAdjustment(); }

  void SetHorizontalAdjustment(int adjustment) {
    transformation_.SetHorizontalAdjustment(adjustment);
  }

  PdfTransformLayerPos GetLayerPosition() const { return transformation_.GetLayerPosition(); }

  void SetLayerPosition(PdfTransformLayerPos position) {
    transformation_.SetLayerPosition(position);
  }

  // The output's file name, put behind the output directory as it stands. An empty one is ignored.
  std::string& GetOutName() { return out_name_; }

  void SetOutName(const std::string& name);

 protected:
  PdfDecorationTask(const PdfDoc& document, PdfTransformType type);

  PdfDecorationTask(const PdfDecorationTask& other);
  PdfDecorationTask(PdfDecorationTask&& other) noexcept;
  PdfDecorationTask& operator=(const PdfDecorationTask& other);
  PdfDecorationTask& operator=(PdfDecorationTask&& other) noexcept;
  ~PdfDecorationTask();

  // As in a task that was just made: this output name, and the pages not chosen yet.
  void SetDecorationDefaults(const std::string& out_name);

  void RequireSingleDocument() const;
  void Decorate();

  std::string out_name_;
  PdfTransformation transformation_;
  bool targets_chosen_ = false;

 private:
  void ChooseTargets();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_DECORATION_TASK_H_
