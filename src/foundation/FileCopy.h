// Copying over a file that cannot be replaced by renaming another one over it.
#ifndef TARNIX_FOUNDATION_FILECOPY_H_
#define TARNIX_FOUNDATION_FILECOPY_H_

namespace TarnixTools::platform {

// Whether this process has the file of a descriptor open by another descriptor, too. In doubt it
// has.
bool IsOpenElsewhere(int descriptor);

// Makes the content of `to`, open for reading and writing, that of `from`, from its start. The space
// is reserved first, so that a full disk leaves `to` as it was. False with errno on failure.
bool CopyOver(int from, int to);

}  // namespace TarnixTools::platform

#endif  // TARNIX_FOUNDATION_FILECOPY_H_
