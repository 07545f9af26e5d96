// A library to be loaded before a program (LD_PRELOAD), which makes one thing fail that the program
// asks the system for.
//
//   TARNIX_FAULT=KIND:N       the N-th of a kind fails, counted from 1; of reads and writes all that
//                             follow it, too, as on a device that is broken or full
//   TARNIX_MISSING=WORD       libraries with this in their names cannot be loaded at run time
//   TARNIX_FAULT_COUNTS=FILE  how many there were of each kind is written there at the end
//
// Kinds: "new" (memory for the program's own code, or for the standard library on its behalf),
// "allocate" (any memory: many libraries end the process then, as PDFium does on purpose), "open",
// "read", "write", "disk" (a write to anything but standard output and standard error), "name" (a file
// is renamed, or gets its first name); "kill" ends the process in the middle of its N-th write,
// "kill-name" before and "kill-named" after it has given its N-th name. "interrupt-KIND" and
// "terminate-KIND" send the process SIGINT and SIGTERM at the N-th of the kind, which then goes on when
// the program has taken the signal.
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

enum Kind : unsigned { kNew, kAllocate, kOpen, kRead, kWrite, kDisk, kName, kKinds };

constexpr std::array<const char*, kKinds> kNames = {"new",   "allocate", "open", "read",
                                                    "write", "disk",     "name"};

struct Plan {
  Kind kind = kKinds;
  bool kills = false;
  bool kills_after = false;
  int signal = 0;  // that is sent instead of a failure
  long place = 0;
};

std::atomic<bool> is_ready{false};  // what is done before main() counts for nothing
std::array<std::atomic<long>, kKinds> counts{};
std::atomic<bool> is_watched{false};  // some thread waits for signals
std::atomic<bool> is_signal_taken{false};
Plan plan;

// Where code is loaded that counts as the program's own.
struct Range {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
};

std::array<Range, 16> own_code{};
std::size_t own_ranges = 0;

int NoteCode(dl_phdr_info* object, std::size_t /*size*/, void* /*data*/) {
  const char* const name = object->dlpi_name;
  const bool is_own = name[0] == '\0' || std::strstr(name, "libtarnixtools") != nullptr ||
                      std::strstr(name, "libstdc++") != nullptr;
  for (int i = 0; is_own && i < object->dlpi_phnum && own_ranges < own_code.size(); ++i) {
    const auto& segment = object->dlpi_phdr[i];
    if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0) {
      const std::uintptr_t begin = object->dlpi_addr + segment.p_vaddr;
      own_code[own_ranges++] = {begin, begin + segment.p_memsz};
    }
  }
  return 0;
}

bool IsOwn(const void* caller) {
  const auto place = reinterpret_cast<std::uintptr_t>(caller);
  for (std::size_t i = 0; i < own_ranges; ++i) {
    if (place >= own_code[i].begin && place < own_code[i].end) {
      return true;
    }
  }
  return false;
}

Plan ReadPlan() {
  Plan read;
  const char* const text = std::getenv("TARNIX_FAULT");
  const char* const colon = text == nullptr ? nullptr : std::strchr(text, ':');
  if (colon == nullptr) {
    return read;
  }
  const char* kind_text = text;
  for (const auto& [prefix, signal] : {std::pair{"interrupt-", SIGINT}, {"terminate-", SIGTERM}}) {
    if (std::strncmp(text, prefix, std::strlen(prefix)) == 0) {
      read.signal = signal;
      kind_text = text + std::strlen(prefix);
    }
  }
  const auto length = static_cast<std::size_t>(colon - kind_text);
  const auto is = [&](const char* name) {
    return std::strlen(name) == length && std::strncmp(kind_text, name, length) == 0;
  };
  for (unsigned kind = 0; kind < kKinds; ++kind) {
    read.kind = is(kNames[kind]) ? static_cast<Kind>(kind) : read.kind;
  }
  read.kills = is("kill") || is("kill-name") || is("kill-named");
  read.kills_after = is("kill-named");
  if (read.kills) {
    read.kind = is("kill") ? kWrite : kName;
  }
  read.place = std::strtol(colon + 1, nullptr, 10);
  return read;
}

bool IsBlocked(int signal) {
  sigset_t blocked;
  return pthread_sigmask(SIG_BLOCK, nullptr, &blocked) == 0 && sigismember(&blocked, signal) == 1;
}

// A program that waits for signals on a thread of its own blocks them in the others, and asks for a
// second one when it has made out the first. Memory is taken before there is that thread, too.
void SendSignal() {
  kill(getpid(), plan.signal);
  if (IsBlocked(plan.signal) && (is_watched || plan.kind != kNew)) {
    is_signal_taken.wait(false);
  }
}

// Counts; says whether this one is to fail, or the process to end at it.
bool IsDue(Kind kind) {
  if (!is_ready.load(std::memory_order_relaxed)) {
    return false;
  }
  const long count = ++counts[kind];
  if (plan.signal != 0 && plan.kind == kind && count == plan.place) {
    SendSignal();
  }
  const bool goes_on = kind == kRead || kind == kWrite || kind == kDisk;
  return plan.signal == 0 && plan.kind == kind && plan.place > 0 &&
         (count == plan.place || (goes_on && !plan.kills && count > plan.place));
}

// A write is one of two kinds.
bool IsWriteDue(int file) {
  const bool is_disk_due = file > STDERR_FILENO && IsDue(kDisk);
  return IsDue(kWrite) || is_disk_due;
}

[[noreturn]] void Die() {
  kill(getpid(), SIGKILL);
  for (;;) {
    pause();
  }
}

template <typename Function>
Function* Next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// The next function of the name, looked up once.
#define NEXT(name) static auto* const next = Next<decltype(name)>(#name)

template <typename Result>
Result Fail(int error, Result result) {
  errno = error;
  return result;
}

void WriteCounts(const char* path) {
  const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  std::array<char, 64> line{};
  for (unsigned kind = 0; kind < kKinds; ++kind) {
    const int length =
        std::snprintf(line.data(), line.size(), "%s %ld\n", kNames[kind], counts[kind].load());
    if (write(file, line.data(), static_cast<std::size_t>(length)) != length) {
      break;
    }
  }
  close(file);
}

// Names the functions that are needed, while nothing fails yet.
struct Session {
  Session() {
    dl_iterate_phdr(NoteCode, nullptr);
    plan = ReadPlan();
    unsetenv("LD_PRELOAD");
  }

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  ~Session() {
    is_ready = false;
    if (const char* const path = std::getenv("TARNIX_FAULT_COUNTS")) {
      WriteCounts(path);
    }
  }
};

const Session session;

using Main = int (*)(int count, char** arguments, char** environment);
Main program = nullptr;

int RunProgram(int count, char** arguments, char** environment) {
  is_ready = true;
  return program(count, arguments, environment);
}

void* New(std::size_t size, const void* caller) {
  void* const block = IsOwn(caller) && IsDue(kNew) ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

int OpenMode(int flags, va_list arguments) {
  const bool has_mode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return has_mode ? static_cast<int>(va_arg(arguments, mode_t)) : 0;
}

}  // namespace

void* operator new(std::size_t size) {
  return New(size, __builtin_return_address(0));
}

void* operator new[](std::size_t size) {
  return New(size, __builtin_return_address(0));
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete[](void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

extern "C" {

int __libc_start_main(Main main, int count, char** arguments, void (*initialize)(),
                      void (*finish)(), void (*finish_loader)(), void* stack_end) {
  using Start = int(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
  program = main;
  return Next<Start>("__libc_start_main")(RunProgram, count, arguments, initialize, finish,
                                          finish_loader, stack_end);
}

void* malloc(std::size_t size) {
  return IsDue(kAllocate) ? Fail<void*>(ENOMEM, nullptr) : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  return IsDue(kAllocate) ? Fail<void*>(ENOMEM, nullptr) : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
  return IsDue(kAllocate) ? Fail<void*>(ENOMEM, nullptr) : __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return IsDue(kAllocate) ? Fail<void*>(ENOMEM, nullptr) : __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  if (IsDue(kAllocate)) {
    return ENOMEM;
  }
  *block = __libc_memalign(alignment, size);
  return *block == nullptr ? ENOMEM : 0;
}

int open(const char* path, int flags, ...) {
  NEXT(open);
  va_list arguments;
  va_start(arguments, flags);
  const int mode = OpenMode(flags, arguments);
  va_end(arguments);
  return IsDue(kOpen) ? Fail(EMFILE, -1) : next(path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...) {
  NEXT(openat);
  va_list arguments;
  va_start(arguments, flags);
  const int mode = OpenMode(flags, arguments);
  va_end(arguments);
  return IsDue(kOpen) ? Fail(EMFILE, -1) : next(directory, path, flags, mode);
}

std::FILE* fopen(const char* path, const char* mode) {
  NEXT(fopen);
  return IsDue(kOpen) ? Fail<std::FILE*>(EMFILE, nullptr) : next(path, mode);
}

std::FILE* tmpfile() {
  NEXT(tmpfile);
  return IsDue(kOpen) ? Fail<std::FILE*>(EMFILE, nullptr) : next();
}

ssize_t read(int file, void* buffer, std::size_t size) {
  NEXT(read);
  return IsDue(kRead) ? Fail<ssize_t>(EIO, -1) : next(file, buffer, size);
}

ssize_t pread(int file, void* buffer, std::size_t size, off_t offset) {
  NEXT(pread);
  return IsDue(kRead) ? Fail<ssize_t>(EIO, -1) : next(file, buffer, size, offset);
}

// The flag of the stream that an error sets is the C library's own; a stream that the next read
// finds closed has it set.
std::size_t fread(void* buffer, std::size_t size, std::size_t count, std::FILE* file) {
  NEXT(fread);
  if (!IsDue(kRead)) {
    return next(buffer, size, count, file);
  }
  const int descriptor = fileno(file);
  const int kept = dup(descriptor);
  const int directory = ::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  dup2(directory, descriptor);  // reading a directory is an error
  std::fflush(file);
  const std::size_t read = next(buffer, size, count, file);
  dup2(kept, descriptor);
  close(kept);
  close(directory);
  return Fail(EIO, read);
}

ssize_t write(int file, const void* bytes, std::size_t size) {
  NEXT(write);
  if (!IsWriteDue(file)) {
    return next(file, bytes, size);
  }
  if (plan.kills) {
    static_cast<void>(next(file, bytes, size / 2) == 0);
    Die();
  }
  return Fail<ssize_t>(ENOSPC, -1);
}

ssize_t writev(int file, const iovec* parts, int count) {
  NEXT(writev);
  if (!IsWriteDue(file)) {
    return next(file, parts, count);
  }
  if (plan.kills) {
    static_cast<void>(next(file, parts, count / 2) == 0);
    Die();
  }
  return Fail<ssize_t>(ENOSPC, -1);
}

ssize_t pwrite(int file, const void* bytes, std::size_t size, off_t offset) {
  NEXT(pwrite);
  if (!IsWriteDue(file)) {
    return next(file, bytes, size, offset);
  }
  if (plan.kills) {
    static_cast<void>(next(file, bytes, size / 2, offset) == 0);
    Die();
  }
  return Fail<ssize_t>(ENOSPC, -1);
}

std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
  NEXT(fwrite);
  if (!IsWriteDue(fileno(file))) {
    return next(bytes, size, count, file);
  }
  const std::size_t written = next(bytes, size, count / 2, file);
  if (plan.kills) {
    std::fflush(file);
    Die();
  }
  return Fail(ENOSPC, written);
}

void* dlopen(const char* name, int flags) {
  NEXT(dlopen);
  const char* const missing = std::getenv("TARNIX_MISSING");
  const bool is_missing =
      name != nullptr && missing != nullptr && std::strstr(name, missing) != nullptr;
  return next(is_missing ? "/a library that is not there" : name, flags);
}

int sigwait(const sigset_t* signals, int* signal) {
  NEXT(sigwait);
  is_watched = true;
  return next(signals, signal);
}

int sigtimedwait(const sigset_t* signals, siginfo_t* info, const timespec* patience) {
  NEXT(sigtimedwait);
  is_signal_taken = true;
  is_signal_taken.notify_all();
  return next(signals, info, patience);
}

int rename(const char* from, const char* to) {
  NEXT(rename);
  const bool is_due = IsDue(kName);
  if (is_due && !plan.kills_after) {
    return plan.kills ? (Die(), -1) : Fail(EIO, -1);
  }
  const int result = next(from, to);
  return is_due ? (Die(), -1) : result;
}

int renameat(int from_directory, const char* from, int to_directory, const char* to) {
  NEXT(renameat);
  const bool is_due = IsDue(kName);
  if (is_due && !plan.kills_after) {
    return plan.kills ? (Die(), -1) : Fail(EIO, -1);
  }
  const int result = next(from_directory, from, to_directory, to);
  return is_due ? (Die(), -1) : result;
}

int linkat(int from_directory, const char* from, int to_directory, const char* to, int flags) {
  NEXT(linkat);
  const bool is_due = IsDue(kName);
  if (is_due && !plan.kills_after) {
    return plan.kills ? (Die(), -1) : Fail(EIO, -1);
  }
  const int result = next(from_directory, from, to_directory, to, flags);
  return is_due ? (Die(), -1) : result;
}

}  // extern "C"
