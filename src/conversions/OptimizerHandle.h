// The optimizer while it is in use: initialised, with one object.
#ifndef TARNIX_CONVERSIONS_OPTIMIZER_HANDLE_H_
#define TARNIX_CONVERSIONS_OPTIMIZER_HANDLE_H_

#include "engines/optimizer/Optimizer.h"

namespace TarnixTools {

class OptimizerHandle {
 public:
  OptimizerHandle() {
    engines::PdfOptimizeInitialize();
    object_ = engines::PdfOptimizeCreateObject();
  }

  ~OptimizerHandle() {
    if (object_ != nullptr) {
      engines::PdfOptimizeDestroyObject(object_);
    }
    engines::PdfOptimizeUnInitialize();
  }

  OptimizerHandle(const OptimizerHandle&) = delete;
  OptimizerHandle& operator=(const OptimizerHandle&) = delete;

  // Null when it could not be made.
  engines::TPdfOptimizer* Get() const { return object_; }

 private:
  engines::TPdfOptimizer* object_;
};

}  // namespace TarnixTools

#endif  // TARNIX_CONVERSIONS_OPTIMIZER_HANDLE_H_
