#include "engines/support/files/ByteReader.h"

#include <algorithm>

namespace TarnixTools::engines {

std::string_view ByteReader::View(std::uint64_t offset, std::size_t count) {
  if (offset >= size_) {
    return {};
  }
  count = static_cast<std::size_t>(std::min<std::uint64_t>({count, kWindow, size_ - offset}));
  const bool is_inside = offset >= window_start_ && offset - window_start_ + count <= window_size_;
  if (!is_inside) {
    Fill(offset);
    count = std::min(count, window_size_);
  }
  return {window_.get() + (offset - window_start_), count};
}

void ByteReader::Fill(std::uint64_t offset) {
  if (window_ == nullptr) {
    window_ = std::make_unique_for_overwrite<char[]>(kWindow);
  }
  window_size_ = 0;
  window_size_ = source_->ReadAt(offset, window_.get(), kWindow);
  window_start_ = offset;
}

std::string_view ByteReader::Available(std::uint64_t offset) {
  if (offset < window_start_ || offset >= window_start_ + window_size_) {
    if (offset >= size_) {
      return {};
    }
    Fill(offset);
  }
  const auto start = static_cast<std::size_t>(offset - window_start_);
  return {window_.get() + start, window_size_ - start};
}

std::string ByteReader::Read(std::uint64_t offset, std::size_t count) {
  if (offset >= size_) {
    return {};
  }
  std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset)), '\0');
  bytes.resize(source_->ReadAt(offset, bytes.data(), bytes.size()));
  return bytes;
}

// Small pieces come through the window.
std::size_t ByteReader::ReadInto(std::uint64_t offset, unsigned char* buffer, std::size_t count) {
  if (offset >= size_) {
    return 0;
  }
  count = static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset));
  if (count <= kWindow / 4) {
    const std::string_view view = View(offset, count);
    std::copy(view.begin(), view.end(), buffer);
    return view.size();
  }
  return source_->ReadAt(offset, reinterpret_cast<char*>(buffer), count);
}

std::uint8_t ByteReader::Byte(std::uint64_t offset) {
  return static_cast<std::uint8_t>(Number(offset, 1, ByteOrder::kBig));
}

std::uint16_t ByteReader::Number16(std::uint64_t offset, ByteOrder order) {
  return static_cast<std::uint16_t>(Number(offset, 2, order));
}

std::uint32_t ByteReader::Number32(std::uint64_t offset, ByteOrder order) {
  return static_cast<std::uint32_t>(Number(offset, 4, order));
}

std::uint64_t ByteReader::Number64(std::uint64_t offset, ByteOrder order) {
  return Number(offset, 8, order);
}

std::uint64_t ByteReader::Number(std::uint64_t offset, std::size_t bytes, ByteOrder order) {
  const std::string_view view = View(offset, bytes);
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < bytes; ++i) {
    const std::size_t at = order == ByteOrder::kBig ? i : bytes - 1 - i;
    number = (number << 8) | (at < view.size() ? static_cast<unsigned char>(view[at]) : 0U);
  }
  return number;
}

}  // namespace TarnixTools::engines
