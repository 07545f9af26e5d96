// PdfDoc: page numbers and stamps.
#include "PdfDoc.h"
#include "PdfException.h"
#include "PdfTransformation.h"
#include "document/DecorationHandles.h"
#include "document/PageDecorator.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"
#include "foundation/JobWatch.h"

namespace TarnixTools {
namespace {

PageListPtr PagesOf(engines::TPdfDocument* document, const char* none) {
  PageListPtr pages(engines::PdfDocumentGetPages(document));
  if (pages == nullptr) {
    throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(), "%s", none);
  }
  return pages;
}

}  // namespace

void PdfDoc::Transform(PdfTransformation& transformation, const std::string& output_path,
                       const std::string& password) {
  report_.Clear();
  switch (transformation.GetType()) {
    case PdfTransformType::AddPageNumber:
      AddPageNumbersToDoc(transformation, output_path, password);
      return;
    case PdfTransformType::StampText:
      StampTextsInDoc(transformation, output_path, password);
      return;
    case PdfTransformType::StampImage:
      StampImagesInDoc(transformation, output_path, password);
      return;
    case PdfTransformType::PdfA:
      ConvertDocToPdfA(transformation, output_path, password);
      return;
  }
  throw PdfException(PdfExceptionCode::InternalError, 0, "Invalid PDF doc transformation type [%d]",
                     static_cast<int>(transformation.GetType()));
}

void PdfDoc::Transform(std::vector<PdfTransformation>& transformations,
                       const std::string& output_path, const std::string& password) {
  report_.Clear();
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  KeepMetadataIn(output);
  NoteProtection(output, report_);
  KeepClaimIn(output.Document());
  PdfReport report;
  {
    DecorationHandleStore handles(output.Document(), kPageNumberMessages, report);
    AppendPages(output.Document(), transformations, handles, report);
  }
  Complete(output);
  report_.Add(report);
}

void PdfDoc::AddPageNumbersToDoc(PdfTransformation& transformation, const std::string& output_path,
                                 const std::string& password) {
  DecorateDoc(transformation, kPageNumberMessages, output_path, password);
}

void PdfDoc::StampTextsInDoc(PdfTransformation& transformation, const std::string& output_path,
                             const std::string& password) {
  DecorateDoc(transformation, kTextStampMessages, output_path, password);
}

void PdfDoc::StampImagesInDoc(PdfTransformation& transformation, const std::string& output_path,
                              const std::string& password) {
  DecorateDoc(transformation, kPageNumberMessages, output_path, password);
}

void PdfDoc::DecorateDoc(PdfTransformation& transformation, const DecorationMessages& messages,
                         const std::string& output_path, const std::string& password) {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  KeepMetadataIn(output);
  NoteProtection(output, report_);
  KeepClaimIn(output.Document());
  PdfReport report;
  {
    DecorationHandleStore handles(output.Document(), messages, report);
    handles.Get(0, transformation);  // whether or not a page is targeted
    AppendPages(output.Document(), {&transformation, 1}, handles, report);
  }
  Complete(output);
  report_.Add(report);
}

void PdfDoc::AppendPages(engines::TPdfDocument* target,
                         std::span<PdfTransformation> transformations,
                         DecorationHandleStore& handles, PdfReport& report) {
  const PageListPtr pages = PagesOf(Document(), "NULL pages object at PDF doc");
  const PageListPtr target_pages = PagesOf(target, "NULL pages object at output PDF doc");
  pages_num_ = engines::PdfPageListGetCount(pages.get());
  PageDecorator decorator(target, pages_num_, report);
  JobSteps steps(pages_num_);
  for (int i = 0; i < pages_num_; ++i) {
    const PagePtr page(engines::PdfPageListGet(pages.get(), i));
    const PagePtr copy(engines::PdfDocumentCopyPage(target, page.get(), PDF_COPY_OPTIONS));
    if (copy == nullptr) {
      ThrowCannotCopy(i);
    }
    for (std::size_t t = 0; t < transformations.size(); ++t) {
      if (transformations[t].IsTargetPage(i + 1)) {
        decorator.TransformPage({copy.get(), i + 1}, transformations[t],
                                handles.Get(t, transformations[t]));
      }
    }
    if (engines::PdfPageListAppend(target_pages.get(), copy.get()) == 0) {
      ThrowCannotCopy(i);
    }
    steps.Done();
  }
}

}  // namespace TarnixTools
