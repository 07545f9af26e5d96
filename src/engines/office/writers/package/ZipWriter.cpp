#include "engines/office/writers/package/ZipWriter.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <utility>

#include <zlib.h>

#include "pdf/Error.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::uint32_t kLocalSignature = 0x04034B50;
constexpr std::uint32_t kDirectorySignature = 0x02014B50;
constexpr std::uint32_t kEndSignature = 0x06054B50;
constexpr std::uint16_t kVersion = 20;  // that can deflate
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint16_t kDate = 0x21;        // 1 January 1980, the first that there is
constexpr std::size_t kMaxEntries = 0xFFFE;  // one more stands for a larger directory
constexpr std::size_t kBlockBytes = 1 << 16;
constexpr int kRawDeflate = -15;  // without zlib's wrapping
constexpr int kMemoryLevel = 8;
constexpr int kLevel = 6;

void Put16(std::string& out, std::uint16_t number) {
  out += static_cast<char>(number & 0xFF);
  out += static_cast<char>(number >> 8);
}

void Put32(std::string& out, std::uint32_t number) {
  Put16(out, static_cast<std::uint16_t>(number & 0xFFFF));
  Put16(out, static_cast<std::uint16_t>(number >> 16));
}

std::uint32_t Within4Gb(std::uint64_t number) {
  if (number >= std::numeric_limits<std::uint32_t>::max()) {
    throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the archive would be larger than 4 GB");
  }
  return static_cast<std::uint32_t>(number);
}

std::uint32_t Checksum(std::uint32_t checksum, std::string_view bytes) {
  return static_cast<std::uint32_t>(
      crc32_z(checksum, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace

// What the entry's header and the directory both say of it (APPNOTE 4.4).
void ZipWriter::PutDescription(std::string& out, const Entry& entry) {
  Put16(out, 0);  // flags
  Put16(out, entry.is_deflated ? kDeflated : 0);
  Put16(out, 0);  // time
  Put16(out, kDate);
  Put32(out, entry.checksum);
  Put32(out, entry.packed_size);
  Put32(out, entry.size);
  Put16(out, static_cast<std::uint16_t>(entry.name.size()));
}

DeflatedData::DeflatedData() : stream_(std::make_unique<z_stream_s>()) {
  data_.is_deflated = true;
  if (deflateInit2(stream_.get(), kLevel, Z_DEFLATED, kRawDeflate, kMemoryLevel,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
}

DeflatedData::~DeflatedData() {
  deflateEnd(stream_.get());
}

void DeflatedData::Write(std::string_view bytes) {
  data_.checksum = Checksum(data_.checksum, bytes);
  data_.size += bytes.size();
  while (!bytes.empty()) {
    const std::string_view block = bytes.substr(0, kBlockBytes);
    Deflate(block, Z_NO_FLUSH);
    bytes.remove_prefix(block.size());
  }
}

ZipData DeflatedData::Finish() {
  Deflate({}, Z_FINISH);
  return std::move(data_);
}

void DeflatedData::Deflate(std::string_view bytes, int flush) {
  std::array<char, kBlockBytes> out;
  stream_->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream_->avail_in = static_cast<uInt>(bytes.size());
  do {
    stream_->next_out = reinterpret_cast<Bytef*>(out.data());
    stream_->avail_out = static_cast<uInt>(out.size());
    deflate(stream_.get(), flush);
    data_.bytes.append(out.data(), out.size() - stream_->avail_out);
  } while (stream_->avail_out == 0);
}

void ZipWriter::Add(const std::string& name, const ZipData& data) {
  AddEntry({.name = name,
            .checksum = data.checksum,
            .size = Within4Gb(data.size),
            .is_deflated = data.is_deflated},
           data.bytes);
}

void ZipWriter::Add(const std::string& name, std::string_view bytes) {
  AddEntry({.name = name, .checksum = Checksum(0, bytes), .size = Within4Gb(bytes.size())}, bytes);
}

void ZipWriter::AddEntry(Entry entry, std::string_view bytes) {
  if (entries_.size() >= kMaxEntries) {
    throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the archive would have too many entries");
  }
  entry.packed_size = Within4Gb(bytes.size());
  entry.offset = Within4Gb(written_);
  std::string header;
  Put32(header, kLocalSignature);
  Put16(header, kVersion);
  PutDescription(header, entry);
  Put16(header, 0);  // no extra field
  header += entry.name;
  Write(header);
  Write(bytes);
  entries_.push_back(std::move(entry));
}

void ZipWriter::Finish() {
  const std::uint32_t start = Within4Gb(written_);
  std::string directory;
  for (const Entry& entry : entries_) {
    Put32(directory, kDirectorySignature);
    Put16(directory, kVersion);
    Put16(directory, kVersion);
    PutDescription(directory, entry);
    directory.append(12, '\0');  // no extra field, comment, disk or attributes
    Put32(directory, entry.offset);
    directory += entry.name;
  }
  const std::uint32_t size = Within4Gb(directory.size());
  Put32(directory, kEndSignature);
  Put32(directory, 0);  // disks
  Put16(directory, static_cast<std::uint16_t>(entries_.size()));
  Put16(directory, static_cast<std::uint16_t>(entries_.size()));
  Put32(directory, size);
  Put32(directory, start);
  Put16(directory, 0);  // no comment
  Write(directory);
}

void ZipWriter::Write(std::string_view bytes) {
  sink_->Write(bytes);
  written_ += bytes.size();
}

}  // namespace TarnixTools::engines::office
