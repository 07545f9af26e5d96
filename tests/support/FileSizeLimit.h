// A disk that is full, as far as this process goes.
#ifndef TARNIX_TESTS_SUPPORT_FILESIZELIMIT_H_
#define TARNIX_TESTS_SUPPORT_FILESIZELIMIT_H_

#include <csignal>

#include <sys/resource.h>

namespace TarnixTools::testing {

// While it lives, no file can grow beyond the limit.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &old_limit_);
    rlimit limit = old_limit_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }

  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &old_limit_);
    std::signal(SIGXFSZ, old_handler_);
  }

 private:
  rlimit old_limit_{};
  void (*old_handler_)(int) = SIG_DFL;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_FILESIZELIMIT_H_
