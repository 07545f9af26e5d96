// All public headers of the library.
#ifndef TARNIX_TARNIX_TOOLS_H_
#define TARNIX_TARNIX_TOOLS_H_

#include "Logger.h"
#include "PdfCommonUtils.h"
#include "PdfDoc.h"
#include "PdfException.h"
#include "PdfMergeTask.h"
#include "PdfMetadataParam.h"
#include "PdfPagePoint.h"
#include "PdfPageRange.h"
#include "PdfProtectTask.h"
#include "PdfRemovePagesTask.h"
#include "PdfReport.h"
#include "PdfRotateTask.h"
#include "PdfRotationAngle.h"
#include "PdfSetMetaDataTask.h"
#include "PdfSize.h"
#include "PdfSplitTask.h"
#include "PdfTask.h"
#include "PdfUnlockTask.h"
#include "TarnixExport.h"

#endif  // TARNIX_TARNIX_TOOLS_H_
