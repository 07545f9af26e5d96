// Encodes on a thread of its own what the caller has drawn, while the caller draws what comes next.
// Images are encoded and completed in the order in which they came, so files are the same whatever
// the threads do.
//
//   PixelBuffer& pixels = queue.TakeBuffer(width * height * 4);   // waits for a free one
//   ... draw ...
//   queue.Encode(image, pixels, stride, height);
//   queue.Finish(image, page_number);
//   for (const FailedImage& failed : queue.Drain()) ...
#ifndef TARNIX_ENGINES_RASTERISER_ENCODINGQUEUE_H_
#define TARNIX_ENGINES_RASTERISER_ENCODINGQUEUE_H_

#include <array>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "engines/rasteriser/ErrorCodes.h"
#include "engines/rasteriser/ImageFile.h"

namespace TarnixTools::engines::rasteriser {

// Memory for pixels that is used over and over.
class PixelBuffer {
 public:
  // Sets all of the first `size` bytes to white. Throws std::bad_alloc.
  void Whiten(std::size_t size);

  std::uint8_t* data() { return bytes_.get(); }

 private:
  std::unique_ptr<std::uint8_t[]> bytes_;
  std::size_t capacity_ = 0;
};

struct FailedImage {
  std::int32_t page_number = 0;
  Pdf2ImgError error = kPdf2ImgNoError;
  int system_error = 0;  // an errno value, or 0
};

// Used by one thread, beside its own.
class EncodingQueue {
 public:
  EncodingQueue() = default;
  // What was given is completed first.
  ~EncodingQueue();
  EncodingQueue(const EncodingQueue&) = delete;
  EncodingQueue& operator=(const EncodingQueue&) = delete;

  // A white buffer, which Encode gives back.
  PixelBuffer& TakeBuffer(std::size_t size);
  void ReturnBuffer(PixelBuffer& buffer);

  // The next rows of an image that was started.
  void Encode(std::shared_ptr<ImageFile> image, PixelBuffer& buffer, std::size_t stride,
              std::size_t row_count);

  // The image is complete and gets its name.
  void Finish(std::shared_ptr<ImageFile> image, std::int32_t page_number);

  // Waits until all that was given is done, and tells what failed since the last time.
  std::vector<FailedImage> Drain();

 private:
  struct Work {
    std::shared_ptr<ImageFile> image;
    PixelBuffer* buffer = nullptr;  // null: the image is to be finished
    std::size_t stride = 0;
    std::size_t row_count = 0;
    std::int32_t page_number = 0;
  };

  void Add(Work work);
  void StartThread();
  void RunThread();
  static void Do(const Work& work) noexcept;
  void MarkFree(PixelBuffer& buffer);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::array<PixelBuffer, 2> buffers_;
  std::array<bool, 2> is_taken_{};
  std::deque<Work> work_;
  bool is_busy_ = false;
  bool is_ending_ = false;
  std::vector<FailedImage> failed_;
  std::thread thread_;
  bool has_no_thread_ = false;  // there is none to be had
};

}  // namespace TarnixTools::engines::rasteriser

#endif  // TARNIX_ENGINES_RASTERISER_ENCODINGQUEUE_H_
