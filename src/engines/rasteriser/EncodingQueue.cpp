#include "engines/rasteriser/EncodingQueue.h"

#include <cstring>
#include <system_error>
#include <utility>

#include "engines/rasteriser/Pdf2ImgFailure.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::rasteriser {

void PixelBuffer::Whiten(std::size_t size) {
  if (size > capacity_) {
    bytes_.reset();
    capacity_ = 0;
    bytes_ = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    capacity_ = size;
  }
  std::memset(bytes_.get(), 0xFF, size);
}

EncodingQueue::~EncodingQueue() {
  {
    const std::lock_guard lock(mutex_);
    is_ending_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) {
    thread_.join();
  }
}

PixelBuffer& EncodingQueue::TakeBuffer(std::size_t size) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return !is_taken_[0] || !is_taken_[1]; });
  const std::size_t index = is_taken_[0] ? 1 : 0;
  lock.unlock();
  buffers_[index].Whiten(size);
  lock.lock();
  is_taken_[index] = true;
  return buffers_[index];
}

void EncodingQueue::ReturnBuffer(PixelBuffer& buffer) {
  const std::lock_guard lock(mutex_);
  MarkFree(buffer);
}

void EncodingQueue::MarkFree(PixelBuffer& buffer) {
  is_taken_[&buffer == &buffers_[0] ? 0 : 1] = false;
}

void EncodingQueue::Encode(std::shared_ptr<ImageFile> image, PixelBuffer& buffer,
                           std::size_t stride, std::size_t row_count) {
  Add({.image = std::move(image), .buffer = &buffer, .stride = stride, .row_count = row_count});
}

void EncodingQueue::Finish(std::shared_ptr<ImageFile> image, std::int32_t page_number) {
  Add({.image = std::move(image), .page_number = page_number});
}

void EncodingQueue::Add(Work work) {
  StartThread();
  {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
  }
  if (has_no_thread_) {
    RunThread();
  } else {
    changed_.notify_all();
  }
}

void EncodingQueue::StartThread() {
  if (thread_.joinable() || has_no_thread_) {
    return;
  }
  try {
    thread_ = std::thread(&EncodingQueue::RunThread, this);
  } catch (const std::system_error&) {
    has_no_thread_ = true;
  }
}

void EncodingQueue::RunThread() {
  std::unique_lock lock(mutex_);
  while (true) {
    if (!has_no_thread_) {
      changed_.wait(lock, [this] { return !work_.empty() || is_ending_; });
    }
    if (work_.empty()) {
      return;
    }
    Work work = std::move(work_.front());
    work_.pop_front();
    is_busy_ = true;
    lock.unlock();
    Do(work);
    const Pdf2ImgError error = work.image->error;
    const int system_error = work.image->system_error;
    work.image.reset();
    lock.lock();
    is_busy_ = false;
    if (work.buffer != nullptr) {
      MarkFree(*work.buffer);
    } else if (error != kPdf2ImgNoError) {
      failed_.push_back({work.page_number, error, system_error});
    }
    changed_.notify_all();
  }
}

// After a failure the rest of the image is passed over; without Finish no file comes of it.
void EncodingQueue::Do(const Work& work) noexcept {
  if (work.image->error != kPdf2ImgNoError) {
    return;
  }
  const auto note = [&](Pdf2ImgError code) {
    work.image->error = code;
    work.image->system_error = platform::LastSystemError();
  };
  GuardedBy<Pdf2ImgErrors>(note, [&] {
    if (work.buffer != nullptr) {
      work.image->WriteRows(work.buffer->data(), work.stride, work.row_count);
    } else {
      work.image->Finish();
    }
  });
}

std::vector<FailedImage> EncodingQueue::Drain() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return work_.empty() && !is_busy_; });
  return std::exchange(failed_, {});
}

}  // namespace TarnixTools::engines::rasteriser
