#include "pdf/crypt/Random.h"

#include <errno.h>
#include <sys/random.h>

#include "pdf/Error.h"
#include "pdf/crypt/Bytes.h"

namespace TarnixTools::pdf::crypt {

void FillRandom(std::uint8_t* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t got = getrandom(bytes, count, 0);
    if (got < 0 && errno != EINTR) {
      throw Error(ErrorCode::kInternal, "the system gives no random bytes");
    }
    if (got > 0) {
      bytes += got;
      count -= static_cast<std::size_t>(got);
    }
  }
}

std::string RandomBytes(std::size_t count) {
  std::string bytes(count, '\0');
  FillRandom(Octets(bytes), count);
  return bytes;
}

}  // namespace TarnixTools::pdf::crypt
