// Objects as text that is the same for all that mean the same: keys in order, strings and real
// numbers written in one way.
#ifndef TARNIX_ENGINES_OPTIMIZER_STRUCTURE_CANONICALFORM_H_
#define TARNIX_ENGINES_OPTIMIZER_STRUCTURE_CANONICALFORM_H_

#include <cstdint>
#include <functional>
#include <string>

#include "pdf/syntax/Object.h"

namespace TarnixTools::engines::optimizer {

// stand_in: the object that a reference to this one is written as.
std::string CanonicalForm(const pdf::Object& value,
                          const std::function<std::uint32_t(std::uint32_t number)>& stand_in);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_STRUCTURE_CANONICALFORM_H_
