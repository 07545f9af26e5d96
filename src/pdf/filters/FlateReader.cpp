#include "pdf/filters/FlateReader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include <zlib.h>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/filters/FilterSteps.h"

namespace TarnixTools::pdf {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{64} << 10;
constexpr std::int64_t kFirstPngPredictor = 10;

}  // namespace

class FlateReader::Inflater {
 public:
  explicit Inflater(std::string_view deflated) : left_(deflated) {
    const int result = inflateInit2(&stream_, -MAX_WBITS);
    if (result == Z_MEM_ERROR) {
      throw std::bad_alloc();
    }
    if (result != Z_OK) {
      throw Error(ErrorCode::kInternal, "FlateDecode: inflate cannot start");
    }
  }

  ~Inflater() { inflateEnd(&stream_); }

  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  // Reads as many bytes as there are, `size` at most; less than 4 GiB.
  std::size_t Read(char* bytes, std::size_t size) {
    stream_.next_out = reinterpret_cast<Bytef*>(bytes);
    stream_.avail_out = static_cast<uInt>(size);
    while (stream_.avail_out > 0 && !is_at_end_) {
      if (stream_.avail_in == 0) {
        Refill();
      }
      const int result = inflate(&stream_, Z_NO_FLUSH);
      if (result == Z_MEM_ERROR) {
        throw std::bad_alloc();
      }
      is_at_end_ = result != Z_OK;
    }
    return size - stream_.avail_out;
  }

 private:
  void Refill() {
    const std::size_t take = std::min<std::size_t>(left_.size(), std::numeric_limits<uInt>::max());
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(left_.data()));
    stream_.avail_in = static_cast<uInt>(take);
    left_.remove_prefix(take);
  }

  z_stream stream_{};
  std::string_view left_;
  bool is_at_end_ = false;
};

std::unique_ptr<FlateReader> FlateReader::Open(std::string_view encoded,
                                               const FilterParameters& parameters) {
  if (!filters::StartsWithZlibHeader(encoded)) {
    return nullptr;
  }
  filters::CheckPredictor(parameters);
  const std::size_t row_bytes = filters::RowBytes(parameters);
  if (row_bytes > limits::kMaxStreamedRow) {
    return nullptr;
  }
  return std::unique_ptr<FlateReader>(
      new FlateReader(encoded.substr(filters::kZlibHeaderBytes), parameters, row_bytes));
}

FlateReader::FlateReader(std::string_view deflated, const FilterParameters& parameters,
                         std::size_t row_bytes)
    : inflater_(std::make_unique<Inflater>(deflated)),
      parameters_(parameters),
      row_bytes_(row_bytes),
      is_png_(parameters.predictor >= kFirstPngPredictor) {}

FlateReader::~FlateReader() = default;

std::size_t FlateReader::Read(char* bytes, std::size_t size) {
  std::size_t done = 0;
  while (done < size && (next_ < block_.size() || ReadBlock())) {
    const std::size_t count = std::min(size - done, block_.size() - next_);
    std::memcpy(bytes + done, block_.data() + next_, count);
    next_ += count;
    done += count;
  }
  return done;
}

// Whole rows, the predictor undone. PNG rows build on the one above: that of the block before goes
// first, as one that is not predicted.
bool FlateReader::ReadBlock() {
  const std::size_t size = std::max<std::size_t>(1, kBlockBytes / row_bytes_) * row_bytes_;
  std::string raw;
  if (!above_.empty()) {
    raw = '\0' + above_;
  }
  const std::size_t start = raw.size();
  raw.resize(start + size);
  raw.resize(start + inflater_->Read(raw.data() + start, size));
  next_ = above_.size();
  if (raw.size() == start) {
    block_.clear();
    next_ = 0;
    return false;
  }
  block_ = filters::UndoPredictor(std::move(raw), parameters_).data;
  if (is_png_ && block_.size() >= next_ + row_bytes_ - 1) {
    above_ = block_.substr(block_.size() - (row_bytes_ - 1));
  }
  return next_ < block_.size();
}

}  // namespace TarnixTools::pdf
