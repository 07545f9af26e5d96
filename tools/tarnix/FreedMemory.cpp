#include "FreedMemory.h"

#include <malloc.h>

namespace TarnixTools::cli {

void KeepFreedMemory() {
#ifdef __GLIBC__
  constexpr int kMostKept = 32 << 20;
  constexpr int kLargestPieceKept = 16 << 20;
  mallopt(M_TRIM_THRESHOLD, kMostKept);
  mallopt(M_MMAP_THRESHOLD, kLargestPieceKept);
#endif
}

}  // namespace TarnixTools::cli
