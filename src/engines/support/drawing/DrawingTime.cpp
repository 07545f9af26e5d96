#include "engines/support/drawing/DrawingTime.h"

#include <time.h>

namespace TarnixTools::engines {

DrawingTime::Duration DrawingTime::Now() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

}  // namespace TarnixTools::engines
