// A stream dictionary's filters as the steps that Decode() takes.
#ifndef TARNIX_PDF_FILE_STREAMFILTERS_H_
#define TARNIX_PDF_FILE_STREAMFILTERS_H_

#include <functional>
#include <string>
#include <vector>

#include "pdf/filters/Filters.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

using Resolver = std::function<Object(const Object&)>;

// /Filter and /DecodeParms (also under their abbreviated names). References are followed through
// `resolve`; without it they count as null. Of more than limits::kMaxFilters filters one too many is
// given, so that Decode refuses them.
std::vector<FilterStep> FilterStepsOf(const Object& dictionary, const Resolver& resolve = nullptr);

// The entries of /DecodeParms for a predictor, those left out that say what holds without them:
// "/Predictor 15/Columns 8".
std::string PredictorEntries(const FilterParameters& parameters);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_STREAMFILTERS_H_
