// What the tasks that decorate one document in one way have in common: the output's name, the pages
// that are decorated, and the settings that each of them has. The tasks themselves are
// PdfPageNumberTask, PdfStampTextTask and PdfStampImageTask.
//
//   PdfStampTextTask task(report);
//   task.AddTargetPattern("2-10,12");                              // which pages
//   task.SetVerticalPosition(PdfTransformVerticalPos::Top);        // where on them
//   task.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
//   task.SetHorizontalAdjustment(-20);                             // a little further in
//   task.SetFontName("Liberation Serif");                          // how it looks
//   task.SetFontSize(36);
//   task.SetFontColor("#C03020");
//   task.SetLayerPosition(PdfTransformLayerPos::Under);
//
// Several decorations of one document are better made by one PdfTransformTask, which writes the
// pages only once.
#ifndef TARNIX_PDF_DECORATION_TASK_H_
#define TARNIX_PDF_DECORATION_TASK_H_

#include <string>

#include "PdfPagePoint.h"
#include "PdfPageRange.h"
#include "PdfTask.h"
#include "PdfTransformation.h"
#include "TarnixExport.h"

namespace TarnixTools {

// The task owns one PdfTransformation, and its settings are those of that object: what a setter
// here throws and what it leaves as it was is told there. Lengths are points (1/72 inch) on the
// page as a viewer shows it. None of the settings looks at the document; what cannot be drawn is
// found by Execute of the derived task.
class TARNIX_EXPORT PdfDecorationTask : public PdfTask {
 public:
  // ---- which pages: all of them, until the first of these calls chooses others -----------------

  // Adds all pages that the document has now. Counts them, for which it is opened: throws what
  // PdfDoc::GetPagesNum throws, and InvalidParameter unless there is exactly one document.
  void TargetAllPages();

  // Add a page, a range, or a list such as "1,3-5,10" (PdfTransformation::AddTargetPattern) to the
  // pages that are decorated. Page numbers are one-based; those that the document lacks are passed
  // over when it is decorated. Throw InvalidParameter for a number below 1 and for what is no such
  // list, the items of which stay added up to the bad one.
  void AddTargetPage(int page_number);
  void AddTargetRange(const PdfPageRange& range);
  void AddTargetPattern(const std::string& pattern);

  // Without target pages, all pages are decorated.
  void ClearTargetPages();

  // How many pages have been added, each counted once, whether or not the document has them; 0 for
  // none, which means all. In a task that was just made, the number of pages of its document.
  int GetTargetPagesNum() const;

  // ---- settings --------------------------------------------------------------------------------
  //
  // References that are returned are to the task's own texts; what a host puts into one directly is
  // not checked.

  // The family of the font, "Arial" at first, by the name under which it is installed on this
  // system. Looked for by Execute, which takes Arial where there is none of that name, and tells so
  // in its report. The characters that the font lacks come from other installed fonts.
  std::string& GetFontName() { return transformation_.GetFontName(); }

  void SetFontName(const std::string& name) { transformation_.SetFontName(name); }

  // The style within the family, in words such as "Bold Italic"; empty, as at first, for the
  // regular one.
  std::string& GetFontStyle() { return transformation_.GetFontStyle(); }

  void SetFontStyle(const std::string& style) { transformation_.SetFontStyle(style); }

  // "#" and six hexadecimal digits: red, green, blue; "#000000", black, at first. The setter throws
  // InvalidParameter for anything else and leaves the old colour.
  std::string& GetFontColor() { return transformation_.GetFontColor(); }

  void SetFontColor(const std::string& color) { transformation_.SetFontColor(color); }

  // In points, 24 at first. This setter takes whole points only. A size that is not above 0 is
  // refused by Execute, not here.
  double GetFontSize() const { return transformation_.GetFontSize(); }

  void SetFontSize(int size) { transformation_.SetFontSize(size); }

  // Where the decoration stands between the top and the bottom edge: page numbers at the Bottom,
  // and stamps in the Middle, at first.
  PdfTransformVerticalPos GetVerticalPosition() const {
    return transformation_.GetVerticalPosition();
  }

  void SetVerticalPosition(PdfTransformVerticalPos position) {
    transformation_.SetVerticalPosition(position);
  }

  // Points upwards from that position, 0 at first; negative for downwards.
  int GetVerticalAdjustment() const { return transformation_.GetVerticalAdjustment(); }

  void SetVerticalAdjustment(int adjustment) { transformation_.SetVerticalAdjustment(adjustment); }

  // Where it stands between the left and the right edge, Center at first. On facing pages, what is
  // got after Execute is that of the last page.
  PdfTransformHorizontalPos GetHorizontalPosition() const {
    return transformation_.GetHorizontalPosition();
  }

  void SetHorizontalPosition(PdfTransformHorizontalPos position) {
    transformation_.SetHorizontalPosition(position);
  }

  // Points to the right from that position, 0 at first; negative for to the left. On facing pages
  // the sign changes on odd ones.
  int GetHorizontalAdjustment() const { return transformation_.GetHorizontalAdjustment(); }

  void SetHorizontalAdjustment(int adjustment) {
    transformation_.SetHorizontalAdjustment(adjustment);
  }

  // The distance from the left or the right edge of the page, in points: 0 at first of page numbers,
  // and 15 of stamps. Of no effect on what is centred. Added to an absolute position, but for that of
  // an image.
  int GetMarginX() const { return transformation_.GetMarginX(); }

  void SetMarginX(int margin) { transformation_.SetMarginX(margin); }

  // The distance from the top or the bottom edge of the page, in points: 0 at first of page numbers,
  // and 15 of stamps. Of no effect on what is in the middle. Added to an absolute position, but for
  // that of an image.
  int GetMarginY() const { return transformation_.GetMarginY(); }

  void SetMarginY(int margin) { transformation_.SetMarginY(margin); }

  // A fixed place for the lower-left corner of the decoration, in points from the lower-left corner of
  // the page; that of an image is taken crosswise: y from the point's x and x from its y. The setters
  // make both positions Absolute and check nothing: negative coordinates are beyond the edge.
  PdfPagePoint& GetAbsolutePosition() { return transformation_.GetAbsolutePosition(); }

  void SetAbsolutePosition(const PdfPagePoint& point) {
    transformation_.SetAbsolutePosition(point);
  }

  double GetAbsolutePositionX() const { return transformation_.GetAbsolutePositionX(); }

  void SetAbsolutePositionX(double x) { transformation_.SetAbsolutePositionX(x); }

  double GetAbsolutePositionY() const { return transformation_.GetAbsolutePositionY(); }

  void SetAbsolutePositionY(double y) { transformation_.SetAbsolutePositionY(y); }

  // Over or under what the page has already; Over at first.
  PdfTransformLayerPos GetLayerPosition() const { return transformation_.GetLayerPosition(); }

  void SetLayerPosition(PdfTransformLayerPos position) {
    transformation_.SetLayerPosition(position);
  }

  // The output's file name, put behind the output directory as it stands: no extension is added,
  // and a file of that name is replaced. An empty one is ignored. The derived tasks tell their
  // first one.
  std::string& GetOutName() { return out_name_; }

  void SetOutName(const std::string& name);

 protected:
  // With the defaults of the type, and all pages of the document as targets until others are
  // chosen. Throws what TargetAllPages throws.
  PdfDecorationTask(const PdfDoc& document, PdfTransformType type);

  // Not public: a copy is one of the derived task, with settings of its own.
  PdfDecorationTask(const PdfDecorationTask& other);
  PdfDecorationTask(PdfDecorationTask&& other) noexcept;
  PdfDecorationTask& operator=(const PdfDecorationTask& other);
  PdfDecorationTask& operator=(PdfDecorationTask&& other) noexcept;
  ~PdfDecorationTask();

  // As in a task that was just made: this output name, and the pages not chosen yet. The settings
  // themselves are not touched.
  void SetDecorationDefaults(const std::string& out_name);

  // Throws InvalidParameter unless the task has exactly one document.
  void RequireSingleDocument() const;

  // Writes the output, to the document's own directory when none was set, and takes over what the
  // document reports. Throws what PdfDoc::Transform throws.
  void Decorate();

  std::string out_name_;

  // All settings, those of a derived task included. What drawing rewrites in it stays rewritten.
  PdfTransformation transformation_;

  // Whether a page was chosen after the constructor had chosen all of them.
  bool targets_chosen_ = false;

 private:
  // Makes room for the pages of the first call that chooses any.
  void ChooseTargets();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_DECORATION_TASK_H_
