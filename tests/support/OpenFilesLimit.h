// A process that may open few more files.
#ifndef TARNIX_TESTS_SUPPORT_OPEN_FILES_LIMIT_H_
#define TARNIX_TESTS_SUPPORT_OPEN_FILES_LIMIT_H_

#include <sys/resource.h>
#include <unistd.h>

namespace TarnixTools::testing {

// While it lives, no more than so many files can be open beside those that are open already.
class OpenFilesLimit {
 public:
  explicit OpenFilesLimit(rlim_t more_files) {
    getrlimit(RLIMIT_NOFILE, &old_limit_);
    const int next = dup(STDERR_FILENO);  // the lowest number that is free
    close(next);
    rlimit limit = old_limit_;
    limit.rlim_cur = static_cast<rlim_t>(next) + more_files;
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
