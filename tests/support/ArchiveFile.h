// A small document that is valid by a level of PDF/A, for tests that spoil a part of it.
//
//   const std::string bytes = ArchiveFile("2b").Catalog("/AA<<>>").Bytes();
//
// Its catalog is object 1, the root of its pages 2, its page 3, the XMP packet 4, the profile of its
// output intent 5 and an empty form, for appearances, 6. Tests may use numbers from 20 on.
#ifndef TARNIX_TESTS_SUPPORT_ARCHIVE_FILE_H_
#define TARNIX_TESTS_SUPPORT_ARCHIVE_FILE_H_

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TarnixTools::testing {

class ArchiveFile {
 public:
  // "1a", "1b", "2a", ...
  explicit ArchiveFile(const std::string& level) : level_(level) {}

  // Entries that are added to a dictionary.
  ArchiveFile& Catalog(const std::string& entries);
  ArchiveFile& Page(const std::string& entries);
  ArchiveFile& Trailer(const std::string& entries);
  // What is between << and >>.
  ArchiveFile& Annotation(const std::string& entries);
  // What the object is.
  ArchiveFile& Object(int number, const std::string& body);
  ArchiveFile& Stream(int number, const std::string& entries, const std::string& data);
  // Into the RDF of the packet.
  ArchiveFile& Packet(const std::string& descriptions);
  // The content of the page.
  ArchiveFile& Content(const std::string& operators);
  // Where the text stands first in the file, this stands instead, whatever the offsets are then.
  ArchiveFile& Replace(const std::string& text, const std::string& by);

  std::string Bytes() const;

  // An ICC profile that is nothing but its header.
  //   space - four letters
  static std::string Profile(char version, const std::string& device_class,
                             const std::string& space);

 private:
  std::string PacketBytes() const;

  std::string level_;
  std::string catalog_;
  std::string page_;
  std::string trailer_;
  std::string packet_;
  std::string content_;
  std::map<int, std::string> objects_;
  std::vector<std::pair<std::string, std::string>> replacements_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_ARCHIVE_FILE_H_
