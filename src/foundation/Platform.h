// The room of paths and files: the only place of the library's own logic where the system's file
// functions are called. A port to another system is another Platform.cpp.
//
// Paths come as the interface has them: UTF-8 with backslashes or slashes, ending at their first
// NUL; or wide, as the engines' contracts take them. Their bytes reach the system as they are,
// backslashes turned into slashes, so names that are not valid UTF-8 work like any other. Nobody
// else converts. What fails leaves the reason in errno.
#ifndef TARNIX_FOUNDATION_PLATFORM_H_
#define TARNIX_FOUNDATION_PLATFORM_H_

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

struct stat;

namespace TarnixTools::platform {

struct FileCloser {
  void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// A path as the contracts of engines take it: UTF-16, one unit in each wchar_t, ready for a system
// whose file functions are wide. It is no text and cannot be made of one by mistake: text turns
// what is not UTF-8 into U+FFFD, a path keeps each such byte as a low surrogate of its own, U+DC00
// plus the byte, which no well-formed text has. So every path comes back as it was.
class WidePath {
 public:
  explicit WidePath(std::string_view path);

  const std::wstring& units() const { return units_; }

 private:
  std::wstring units_;
};

std::string NativePath(const std::string& path);
std::string NativePath(const WidePath& path);

// The system's text for an errno value.
std::string ErrorText(int error);

// Why the system refused what the last call of an engine that failed on this thread had it do: an
// errno value; 0 where the call failed for another reason. Noted by the guard around the engines'
// contracts, asked right after the call.
void NoteSystemError(int error) noexcept;
int LastSystemError() noexcept;

bool IsDirectory(const std::string& path);

// Whether there is anything of that name, be it a link to nothing.
bool Exists(const std::string& path);

// Opens for reading, unbuffered: the engines have buffers of their own. Null for a directory too.
// Never waits for the other end of a pipe.
FilePtr OpenForReading(const std::string& path);
FilePtr OpenForReading(const WidePath& path);

// False when the file cannot be deleted; a missing one counts as failed, with ENOENT. Directories
// are not deleted.
bool RemoveFile(const std::string& path);

// Absolute position; false when it cannot be reached.
bool Seek(std::FILE* file, std::int64_t position);
bool SeekToEnd(std::FILE* file);

// -1 when the position cannot be told.
std::int64_t Tell(std::FILE* file);

// Takes everything out of a file that is open for writing, and goes to its start. False for what is
// no file, such as a pipe: what was written is gone from here.
bool Empty(std::FILE* file);

// A file that appears under its name when it is complete, or not at all.
//
//   std::optional<OutputFile> output = OutputFile::Create(path);
//   ... write to output->TakeStream(), close it ...
//   if (!output->Commit()) ...errno...
//
// Until Commit it has no name at all, so that nothing is left of it however the process ends; where
// the file system cannot do that, it has a hidden one in the same directory, which the destructor
// removes when Commit was not reached. Symbolic links are followed to the file they lead to. A
// file that is replaced hands down its permissions, and its owner where the system allows it. What
// is neither a file nor a directory (a device, a pipe) is written to directly, and Commit has
// nothing to do.
//
// An existing file in a directory that takes no new ones, and one that is a mount point, cannot be
// replaced: Commit copies the finished content over it instead, once there is space for all of it.
// A process that ends during this copy leaves a part. A file that this process has open elsewhere,
// as one that the content is read from, is refused then, with EBUSY.
class OutputFile {
 public:
  // Nothing when the output cannot be made: no such directory, no permission, a directory of that
  // name, an existing file that may not be written, a pipe that nobody reads, ...
  static std::optional<OutputFile> Create(const std::string& path);
  static std::optional<OutputFile> Create(const WidePath& path);

  OutputFile(OutputFile&& other) noexcept;
  OutputFile& operator=(OutputFile&& other) noexcept;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  // The open file, for writing and reading (a device or a pipe: for writing), unbuffered. The first
  // call hands it over; the caller closes it before Commit.
  FilePtr TakeStream();

  bool Commit();
  void Discard() noexcept;

 private:
  // An open descriptor, closed by the destructor; -1 for none.
  class Descriptor {
   public:
    Descriptor() = default;

    explicit Descriptor(int number) : number_(number) {}

    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    bool IsOpen() const { return number_ >= 0; }

    int Get() const { return number_; }

    int Release();

   private:
    int number_ = -1;
  };

  OutputFile() = default;

  static std::optional<OutputFile> OpenDirectly(const std::string& native_path);
  static std::optional<OutputFile> CreateSibling(const std::string& native_path,
                                                 const struct ::stat* replaced);
  static std::optional<OutputFile> CreateElsewhere(const std::string& native_path);
  bool CopyOverTarget();
  bool CopyContent();
  bool CreateUnnamed(mode_t mode);
  bool CreateHidden(mode_t mode);
  bool GiveName();
  bool AttachStream(Descriptor descriptor, const char* mode);

  // The names are relative to this directory: a change of the current one in between does no harm.
  Descriptor directory_;
  std::string temporary_name_;  // empty when there is nothing to rename or to remove
  std::string final_name_;
  Descriptor copied_over_;  // the file that gets the finished content; else not open
  Descriptor unnamed_;      // keeps a file without a name from vanishing when its stream is closed
  FilePtr stream_;
};

}  // namespace TarnixTools::platform

#endif  // TARNIX_FOUNDATION_PLATFORM_H_
