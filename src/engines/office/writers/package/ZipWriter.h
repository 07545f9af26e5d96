// Writes a ZIP archive in one pass, each entry as it is ready. Entries have no date of their own:
// the same entries always give the same bytes.
//
//   ZipWriter zip(sink);
//   zip.Add("mimetype", bytes);
//   DeflatedData text;
//   text.Write("...");
//   zip.Add("text.xml", text.Finish());
//   zip.Finish();
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_ZIPWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_ZIPWRITER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/file/ByteSink.h"

struct z_stream_s;

namespace TarnixTools::engines::office {

// The data of an entry, as the archive has it.
struct ZipData {
  std::string bytes;
  std::uint32_t checksum = 0;  // of what it was made from
  std::uint64_t size = 0;      // of what it was made from
  bool is_deflated = false;
};

// Takes data block by block, and keeps it deflated.
class DeflatedData : public pdf::ByteSink {
 public:
  DeflatedData();
  ~DeflatedData() override;
  DeflatedData(const DeflatedData&) = delete;
  DeflatedData& operator=(const DeflatedData&) = delete;

  void Write(std::string_view bytes) override;
  // Nothing can be written any more.
  ZipData Finish();

 private:
  void Deflate(std::string_view bytes, int flush);

  std::unique_ptr<z_stream_s> stream_;
  ZipData data_;
};

class ZipWriter {
 public:
  // The sink outlives this.
  explicit ZipWriter(pdf::ByteSink& sink) : sink_(&sink) {}

  // Throws pdf::Error: kLimitExceeded for an archive of 4 GB, and what the sink throws.
  void Add(const std::string& name, const ZipData& data);
  // Stored as it is: what would not become smaller.
  void Add(const std::string& name, std::string_view bytes);
  // Writes the directory.
  void Finish();

 private:
  struct Entry {
    std::string name;
    std::uint32_t checksum = 0;
    std::uint32_t packed_size = 0;
    std::uint32_t size = 0;
    std::uint32_t offset = 0;
    bool is_deflated = false;
  };

  static void PutDescription(std::string& out, const Entry& entry);
  void AddEntry(Entry entry, std::string_view bytes);
  void Write(std::string_view bytes);

  pdf::ByteSink* sink_;
  std::vector<Entry> entries_;
  std::uint64_t written_ = 0;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_ZIPWRITER_H_
