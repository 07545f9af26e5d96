// A process that may have few files open.
#ifndef TARNIX_TESTS_SUPPORT_OPEN_FILES_LIMIT_H_
#define TARNIX_TESTS_SUPPORT_OPEN_FILES_LIMIT_H_

#include <sys/resource.h>

namespace TarnixTools::testing {

// While it lives, no more files than these are open at a time, those of the process itself included.
class OpenFilesLimit {
 public:
  explicit OpenFilesLimit(rlim_t files) {
    getrlimit(RLIMIT_NOFILE, &old_limit_);
    rlimit limit = old_limit_;
    limit.rlim_cur = files;
    setrlimit(RLIMIT_NOFILE, &limit);
  }

  OpenFilesLimit(const OpenFilesLimit&) = delete;
  OpenFilesLimit& operator=(const OpenFilesLimit&) = delete;

  ~OpenFilesLimit() { setrlimit(RLIMIT_NOFILE, &old_limit_); }

 private:
  rlimit old_limit_{};
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_OPEN_FILES_LIMIT_H_
