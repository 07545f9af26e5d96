#include "foundation/Platform.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/FileCopy.h"
#include "foundation/JobWatch.h"
#include "foundation/Utf8.h"

namespace TarnixTools::platform {
namespace {

static_assert(sizeof(off_t) == 8, "files beyond 2 GiB need 64-bit positions");

constexpr int kMaxLinkHops = 40;  // as many as Linux itself follows
constexpr int kMaxSiblingAttempts = 1000;
constexpr mode_t kPermissionBits = 0777;

// A byte of a path that is not UTF-8, in its wide form.
constexpr char32_t kWideBytes = 0xDC00;
constexpr char32_t kFirstWideByte = kWideBytes + 0x80;
constexpr char32_t kLastWideByte = kWideBytes + 0xFF;

#ifdef O_PATH
// A handle on a directory that need not be readable.
constexpr int kDirectoryFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int kDirectoryFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

thread_local int last_system_error = 0;

struct SplitPath {
  std::string directory;  // with its slash; empty for the current directory
  std::string name;
};

SplitPath Split(const std::string& native_path) {
  const std::size_t slash = native_path.rfind('/');
  if (slash == std::string::npos) {
    return {"", native_path};
  }
  return {native_path.substr(0, slash + 1), native_path.substr(slash + 1)};
}

bool ReadLink(const std::string& native_path, std::string& target) {
  std::array<char, PATH_MAX> buffer{};
  const ssize_t length = readlink(native_path.c_str(), buffer.data(), buffer.size());
  if (length < 0) {
    return false;
  }
  target.assign(buffer.data(), static_cast<std::size_t>(length));
  return true;
}

// Follows the links that the last component is, also to a file that does not exist yet.
std::optional<std::string> ResolveLinks(std::string native_path) {
  for (int hop = 0; hop < kMaxLinkHops; ++hop) {
    struct stat info {};

    if (lstat(native_path.c_str(), &info) != 0) {
      return errno == ENOENT ? std::optional(native_path) : std::nullopt;
    }
    if (!S_ISLNK(info.st_mode)) {
      return native_path;
    }
    std::string target;
    if (!ReadLink(native_path, target)) {
      return std::nullopt;
    }
    native_path = target.starts_with('/') ? target : Split(native_path).directory + target;
  }
  errno = ELOOP;
  return std::nullopt;
}

// Short, so that it fits wherever the final name fits.
std::string SiblingName() {
  static std::atomic<unsigned> counter{0};
  return ".tnx" + std::to_string(getpid()) + "-" + std::to_string(counter.fetch_add(1));
}

// Best effort: where the system does not allow it, the new file keeps what it was created with.
void TakeOverAttributes(int descriptor, const struct stat& replaced) {
  struct stat created {};

  if (fstat(descriptor, &created) != 0) {
    return;
  }
  if (created.st_uid != replaced.st_uid || created.st_gid != replaced.st_gid) {
    static_cast<void>(fchown(descriptor, replaced.st_uid, replaced.st_gid) == 0);
  }
  static_cast<void>(fchmod(descriptor, replaced.st_mode & kPermissionBits) == 0);
}

}  // namespace

WidePath::WidePath(std::string_view path) {
  path = path.substr(0, path.find('\0'));
  units_.reserve(path.size());
  while (!path.empty()) {
    const DecodedCharacter decoded = DecodeUtf8(path);
    if (decoded.is_well_formed) {
      AppendWide(units_, decoded.character);
    } else {
      for (const char byte : path.substr(0, decoded.length)) {
        units_ += static_cast<wchar_t>(kWideBytes + static_cast<unsigned char>(byte));
      }
    }
    path.remove_prefix(decoded.length);
  }
}

std::string NativePath(const std::string& path) {
  std::string native = path.substr(0, path.find('\0'));
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

std::string NativePath(const WidePath& path) {
  std::string narrow;
  narrow.reserve(path.units().size());
  std::wstring_view rest = path.units();
  while (!rest.empty()) {
    const auto unit = static_cast<char32_t>(rest[0]);
    const DecodedCharacter decoded = DecodeUtf16(rest);
    if (!decoded.is_well_formed && unit >= kFirstWideByte && unit <= kLastWideByte) {
      narrow += static_cast<char>(unit - kWideBytes);
    } else {
      AppendUtf8(narrow, decoded.character);
    }
    rest.remove_prefix(decoded.length);
  }
  return NativePath(narrow);
}

std::string ErrorText(int error) {
  return std::generic_category().message(error);
}

void NoteSystemError(int error) noexcept {
  last_system_error = error;
}

int LastSystemError() noexcept {
  return last_system_error;
}

bool IsDirectory(const std::string& path) {
  struct stat info {};

  return stat(NativePath(path).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool Exists(const std::string& path) {
  struct stat info {};

  return lstat(NativePath(path).c_str(), &info) == 0;
}

FilePtr OpenForReading(const std::string& path) {
  const int descriptor = open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) {
    return nullptr;
  }

  struct stat info {};

  int error = fstat(descriptor, &info) != 0 ? errno : 0;
  if (error == 0 && S_ISDIR(info.st_mode)) {
    error = EISDIR;
  }
  std::FILE* file = error == 0 ? fdopen(descriptor, "rb") : nullptr;
  if (file == nullptr) {
    error = error == 0 ? errno : error;
    close(descriptor);
    errno = error;
    return nullptr;
  }
  std::setvbuf(file, nullptr, _IONBF, 0);
  return FilePtr(file);
}

FilePtr OpenForReading(const WidePath& path) {
  return OpenForReading(NativePath(path));
}

bool RemoveFile(const std::string& path) {
  return unlink(NativePath(path).c_str()) == 0;
}

bool Seek(std::FILE* file, std::int64_t position) {
  return position >= 0 && fseeko(file, position, SEEK_SET) == 0;
}

bool SeekToEnd(std::FILE* file) {
  return fseeko(file, 0, SEEK_END) == 0;
}

std::int64_t Tell(std::FILE* file) {
  return ftello(file);
}

bool Empty(std::FILE* file) {
  return ftruncate(fileno(file), 0) == 0 && Seek(file, 0);
}

OutputFile::Descriptor::Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}

OutputFile::Descriptor& OutputFile::Descriptor::operator=(Descriptor&& other) noexcept {
  std::swap(number_, other.number_);
  return *this;
}

OutputFile::Descriptor::~Descriptor() {
  if (IsOpen()) {
    const int error = errno;  // that of what made us give up
    close(number_);
    errno = error;
  }
}

int OutputFile::Descriptor::Release() {
  return std::exchange(number_, -1);
}

std::optional<OutputFile> OutputFile::Create(const std::string& path) {
  const std::string native = NativePath(path);

  struct stat info {};

  const bool exists = stat(native.c_str(), &info) == 0;
  if (!exists && errno != ENOENT) {
    return std::nullopt;
  }
  if (exists && S_ISDIR(info.st_mode)) {
    errno = EISDIR;
    return std::nullopt;
  }
  if (exists && !S_ISREG(info.st_mode)) {
    return OpenDirectly(native);
  }
  // The rename would replace a file that may not be written.
  if (exists && faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) != 0) {
    return std::nullopt;
  }
  const std::optional<std::string> target = ResolveLinks(native);
  if (!target) {
    return std::nullopt;
  }
  std::optional<OutputFile> output = CreateSibling(*target, exists ? &info : nullptr);
  const bool takes_no_files = errno == EACCES || errno == EPERM || errno == EROFS;
  return !output && exists && takes_no_files ? CreateElsewhere(*target) : std::move(output);
}

std::optional<OutputFile> OutputFile::Create(const WidePath& path) {
  return Create(NativePath(path));
}

std::optional<OutputFile> OutputFile::OpenDirectly(const std::string& native_path) {
  // Without O_NONBLOCK a pipe that nobody reads would be waited for forever.
  Descriptor descriptor(open(native_path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
  if (!descriptor.IsOpen()) {
    return std::nullopt;
  }
  const int flags = fcntl(descriptor.Get(), F_GETFL);
  if (flags < 0 || fcntl(descriptor.Get(), F_SETFL, flags & ~O_NONBLOCK) != 0) {
    return std::nullopt;
  }
  OutputFile output;
  if (!output.AttachStream(std::move(descriptor), "wb")) {
    return std::nullopt;
  }
  return output;
}

std::optional<OutputFile> OutputFile::CreateSibling(const std::string& native_path,
                                                    const struct ::stat* replaced) {
  const SplitPath split = Split(native_path);
  if (split.name.empty()) {
    errno = native_path.empty() ? ENOENT : EISDIR;
    return std::nullopt;
  }
  const char* directory = split.directory.empty() ? "." : split.directory.c_str();
  OutputFile output;
  output.final_name_ = split.name;
  output.directory_ = Descriptor(open(directory, kDirectoryFlags));
  if (!output.directory_.IsOpen()) {
    return std::nullopt;
  }
  // A file to be replaced hands its permissions down below; until then the new one is private.
  const mode_t mode = replaced != nullptr ? 0600 : 0666;
  if (!output.CreateUnnamed(mode) && !output.CreateHidden(mode)) {
    return std::nullopt;
  }
  if (replaced != nullptr) {
    TakeOverAttributes(fileno(output.stream_.get()), *replaced);
  }
  return output;
}

// In the system's directory for temporary files, without a name.
std::optional<OutputFile> OutputFile::CreateElsewhere(const std::string& native_path) {
  OutputFile output;
  output.copied_over_ = Descriptor(open(native_path.c_str(), O_RDWR | O_CLOEXEC));
  if (!output.copied_over_.IsOpen()) {
    return std::nullopt;
  }
  output.stream_.reset(std::tmpfile());
  if (output.stream_ == nullptr) {
    return std::nullopt;
  }
  std::setvbuf(output.stream_.get(), nullptr, _IONBF, 0);
  output.unnamed_ = Descriptor(fcntl(fileno(output.stream_.get()), F_DUPFD_CLOEXEC, 0));
  return output.unnamed_.IsOpen() ? std::optional(std::move(output)) : std::nullopt;
}

// Not every file system can do it, and it can be given a name only where /proc is there.
bool OutputFile::CreateUnnamed(mode_t mode) {
#ifdef O_TMPFILE
  static const bool can_be_named = access("/proc/self/fd", X_OK) == 0;
  if (!can_be_named) {
    return false;
  }
  Descriptor descriptor(openat(directory_.Get(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
  if (!descriptor.IsOpen()) {
    return false;
  }
  unnamed_ = Descriptor(fcntl(descriptor.Get(), F_DUPFD_CLOEXEC, 0));
  if (unnamed_.IsOpen() && AttachStream(std::move(descriptor), "wb+")) {
    return true;
  }
  unnamed_ = Descriptor();  // else it would get the name of what is written elsewhere
  return false;
#else
  static_cast<void>(mode);
  return false;
#endif
}

bool OutputFile::CreateHidden(mode_t mode) {
  for (int attempt = 0; attempt < kMaxSiblingAttempts; ++attempt) {
    std::string name = SiblingName();
    Descriptor descriptor(
        openat(directory_.Get(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!descriptor.IsOpen() && errno == EEXIST) {
      continue;  // left by a process of the same number that was killed
    }
    if (!descriptor.IsOpen()) {
      return false;
    }
    temporary_name_ = std::move(name);
    return AttachStream(std::move(descriptor), "wb+");
  }
  return false;
}

// Gives a file without a name its final one when that is free, else a hidden one to be renamed.
bool OutputFile::GiveName() {
  const std::string file = "/proc/self/fd/" + std::to_string(unnamed_.Get());
  const auto link = [&](const std::string& name) {
    return linkat(AT_FDCWD, file.c_str(), directory_.Get(), name.c_str(), AT_SYMLINK_FOLLOW) == 0;
  };
  bool is_named = link(final_name_);
  for (int attempt = 0; !is_named && errno == EEXIST && attempt < kMaxSiblingAttempts; ++attempt) {
    std::string name = SiblingName();
    is_named = link(name);
    if (is_named) {
      temporary_name_ = std::move(name);
    }
  }
  return is_named;
}

bool OutputFile::AttachStream(Descriptor descriptor, const char* mode) {
  std::FILE* file = fdopen(descriptor.Get(), mode);
  if (file == nullptr) {
    return false;
  }
  descriptor.Release();
  std::setvbuf(file, nullptr, _IONBF, 0);
  stream_.reset(file);
  return true;
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : directory_(std::move(other.directory_)),
      temporary_name_(std::exchange(other.temporary_name_, {})),
      final_name_(std::move(other.final_name_)),
      copied_over_(std::move(other.copied_over_)),
      unnamed_(std::move(other.unnamed_)),
      stream_(std::move(other.stream_)) {}

OutputFile& OutputFile::operator=(OutputFile&& other) noexcept {
  std::swap(directory_, other.directory_);
  std::swap(temporary_name_, other.temporary_name_);
  std::swap(final_name_, other.final_name_);
  std::swap(copied_over_, other.copied_over_);
  std::swap(unnamed_, other.unnamed_);
  std::swap(stream_, other.stream_);
  return *this;
}

OutputFile::~OutputFile() {
  Discard();
}

FilePtr OutputFile::TakeStream() {
  return std::move(stream_);
}

// A mount point, under which the finished file lies ready beside it.
bool OutputFile::CopyOverTarget() {
  unnamed_ = Descriptor(openat(directory_.Get(), temporary_name_.c_str(), O_RDONLY | O_CLOEXEC));
  copied_over_ = Descriptor(openat(directory_.Get(), final_name_.c_str(), O_RDWR | O_CLOEXEC));
  return unnamed_.IsOpen() && copied_over_.IsOpen() && CopyContent();
}

bool OutputFile::CopyContent() {
  if (IsOpenElsewhere(copied_over_.Get())) {
    errno = EBUSY;
    return false;
  }
  return CopyOver(unnamed_.Get(), copied_over_.Get());
}

// Nothing gets a name any more once the host has the job stop.
bool OutputFile::Commit() {
  if (JobWatch::IsCancelled()) {
    Discard();
    errno = ECANCELED;
    return false;
  }
  if (copied_over_.IsOpen()) {
    return CopyContent();
  }
  if (unnamed_.IsOpen()) {
    const bool is_named = GiveName();
    unnamed_ = Descriptor();
    if (!is_named) {
      return false;
    }
  }
  if (temporary_name_.empty()) {
    return true;
  }
  const bool is_renamed = renameat(directory_.Get(), temporary_name_.c_str(), directory_.Get(),
                                   final_name_.c_str()) == 0;
  if (is_renamed) {
    temporary_name_.clear();
    return true;
  }
  const bool is_copied = errno == EBUSY && CopyOverTarget();
  const int error = errno;
  Discard();
  errno = error;
  return is_copied;
}

void OutputFile::Discard() noexcept {
  stream_.reset();
  unnamed_ = Descriptor();
  copied_over_ = Descriptor();
  if (!temporary_name_.empty()) {
    const int error = errno;
    unlinkat(directory_.Get(), temporary_name_.c_str(), 0);
    errno = error;
    temporary_name_.clear();
  }
}

}  // namespace TarnixTools::platform
