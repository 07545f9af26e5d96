// All public headers of the library.
#ifndef TARNIX_TARNIX_TOOLS_H_
#define TARNIX_TARNIX_TOOLS_H_

#include "Img2PdfTask.h"
#include "Logger.h"
#include "PdfCommonUtils.h"
#include "PdfCompliance.h"
#include "PdfDecorationTask.h"
#include "PdfDoc.h"
#include "PdfException.h"
#include "PdfMergeTask.h"
#include "PdfMetadataParam.h"
#include "PdfPageNumberTask.h"
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
#include "PdfStampImageTask.h"
#include "PdfStampTextTask.h"
#include "PdfTask.h"
#include "PdfText.h"
#include "PdfTransformTask.h"
#include "PdfTransformation.h"
#include "PdfUnlockTask.h"
#include "TarnixExport.h"

#endif  // TARNIX_TARNIX_TOOLS_H_
