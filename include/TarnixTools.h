// All public headers of the library, for a host that would rather not choose.
//
//   #include <TarnixTools.h>
//
//   TarnixTools::PdfMergeTask task(documents);
//
// Each header can be included alone, too: it includes what it needs, none includes anything beside
// this folder and the standard library, and C++20 is enough for all of them. A program is linked to
// libtarnixtools.so (find_package(TarnixTools), or pkg-config tarnixtools).
//
// Where to begin:
//   PdfTask.h       what the jobs have in common: documents, an output directory, a password
//   PdfDoc.h        one document, for what is done without a task
//   PdfException.h  how every failure is told
//   PdfReport.h     what became of links, bookmarks, forms and the like
//
// The jobs:
//   PdfMergeTask.h        several documents become one
//   PdfSplitTask.h        one document becomes several
//   PdfRemovePagesTask.h  some pages are left out
//   PdfRotateTask.h       all pages are turned
//   PdfProtectTask.h      a password is put on, and by PdfUnlockTask.h taken off
//   PdfSetMetaDataTask.h  author, keywords, creator and producer are set
//   PdfPageNumberTask.h   page numbers; PdfStampTextTask.h and PdfStampImageTask.h for stamps
//   PdfTransformTask.h    several of these decorations at once
//   PdfCompressTask.h     documents become smaller
//   Img2PdfTask.h         images become a document
//   Pdf2ImgTask.h         pages become images, or images are taken out
//
// Everything is in the namespace TarnixTools, but for the macro TARNIX_EXPORT. Paths and texts are
// UTF-8 unless something else is said, page numbers are one-based, lengths are points (1/72 inch).
// Objects of these classes may be used on any thread, one of them by one thread at a time; the
// Logger alone is shared by all.
#ifndef TARNIX_TARNIX_TOOLS_H_
#define TARNIX_TARNIX_TOOLS_H_

#include "Img2PdfTask.h"
#include "Logger.h"
#include "Pdf2ImgTask.h"
#include "Pdf2OfficeTask.h"
#include "Pdf2PdfATask.h"
#include "PdfCommonUtils.h"
#include "PdfCompliance.h"
#include "PdfCompressTask.h"
#include "PdfDecorationTask.h"
#include "PdfDoc.h"
#include "PdfEngineTypes.h"
#include "PdfException.h"
#include "PdfFinding.h"
#include "PdfFont.h"
#include "PdfMergeTask.h"
#include "PdfMetadataParam.h"
#include "PdfPageNumberTask.h"
#include "PdfPagePoint.h"
#include "PdfPageRange.h"
#include "PdfProtectTask.h"
#include "PdfRemovePagesTask.h"
#include "PdfRepairTask.h"
#include "PdfReport.h"
#include "PdfRotateTask.h"
#include "PdfRotationAngle.h"
#include "PdfSetMetaDataTask.h"
#include "PdfSize.h"
#include "PdfSplitTask.h"
#include "PdfStampImageTask.h"
#include "PdfStampTextTask.h"
#include "PdfSummary.h"
#include "PdfTask.h"
#include "PdfText.h"
#include "PdfTransformTask.h"
#include "PdfTransformation.h"
#include "PdfUnlockTask.h"
#include "TarnixExport.h"

#endif  // TARNIX_TARNIX_TOOLS_H_
