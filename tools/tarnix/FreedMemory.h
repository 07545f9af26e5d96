// What becomes of memory that is given back.
#ifndef TARNIX_CLI_FREED_MEMORY_H_
#define TARNIX_CLI_FREED_MEMORY_H_

namespace TarnixTools::cli {

// Has the process keep some of it for the next piece, up to a bound. Pictures take pieces of some
// megabytes, one after the other, and the system clears every page that it hands out. For jobs on
// pictures, before they begin.
void KeepFreedMemory();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_FREED_MEMORY_H_
