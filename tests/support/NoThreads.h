// A process that gets no thread.
#ifndef TARNIX_TESTS_SUPPORT_NOTHREADS_H_
#define TARNIX_TESTS_SUPPORT_NOTHREADS_H_

#include <cstddef>

#include <pthread.h>

namespace TarnixTools::testing {

// While it lives, no thread can be started: none can have a stack as large as all addresses.
class NoThreads {
 public:
  NoThreads() {
    pthread_getattr_default_np(&before_);
    pthread_attr_t huge;
    pthread_getattr_default_np(&huge);
    pthread_attr_setstacksize(&huge, std::size_t{1} << 47);
    pthread_setattr_default_np(&huge);
    pthread_attr_destroy(&huge);
  }

  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;

  ~NoThreads() {
    pthread_setattr_default_np(&before_);
    pthread_attr_destroy(&before_);
  }

 private:
  pthread_attr_t before_{};
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_NOTHREADS_H_
