#include "engines/office/sdk/PageAnalysers.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "engines/office/Limits.h"
#include "engines/office/ocr/ScannedPage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/pages/Cancellation.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::office {

namespace {

using ConversionSdk::ConversionLoss;

constexpr std::size_t kMostThreads = 8;
// Pages that are worth a thread of their own: it reads the document's cross-reference anew.
constexpr std::size_t kPagesOfThread = 4;

// A page that is hardly smaller than it was is not worth a word.
constexpr double kSlightlySmaller = 0.99;

// Glyphs of which nothing tells what they stand for that are more than a sign here and there.
constexpr std::size_t kLeastUntold = 20;

constexpr double kLetterWidth = 612;
constexpr double kLetterHeight = 792;

// What the layout does not refer to goes, so that a document of many pages fits into memory.
void DropText(PageModel& model) {
  model.text = {};
  model.styles = {};
  model.glyphs = {};
  model.roles = {};
}

// Whether nothing tells what most of the page's glyphs stand for.
bool LacksText(const PageModel& page) {
  const auto untold =
      static_cast<std::size_t>(std::count_if(page.glyphs.begin(), page.glyphs.end(),
                                             [](const Glyph& glyph) { return glyph.length == 0; }));
  return untold >= kLeastUntold && 2 * untold > page.glyphs.size();
}

// Whether what was thrown is about this page alone.
bool IsAboutPage(const pdf::Error& error) {
  return error.is_damage();
}

OfficePage BlankPage(std::size_t page_index) {
  OfficePage page;
  page.model.number = static_cast<std::uint32_t>(page_index);
  page.model.width = kLetterWidth;
  page.model.height = kLetterHeight;
  page.layout.width = kLetterWidth;
  page.layout.height = kLetterHeight;
  return page;
}

// What a thread recognises text with, once it has met a scanned page.
struct Recognition {
  std::unique_ptr<ScannedPages> pages;
  bool is_missing = false;  // was tried, and failed for the document as a whole
  std::string why;
};

// About the bytes that a page takes, its layout counted by its glyphs.
std::size_t WeightOf(const PageModel& page) {
  return page.glyphs.size() * sizeof(Glyph) + page.paths.size() * sizeof(PathShape) +
         page.images.size() * sizeof(ImagePlace) + page.links.size() * sizeof(PageLink);
}

// The pages that wait, and what has come of the others.
class Work {
 public:
  Work(const std::vector<std::size_t>& page_indexes, const ScanSettings& scans,
       const ConversionSdk::ConversionState& state)
      : indexes_(&page_indexes), scans_(&scans), state_(&state), pages_(page_indexes.size()) {}

  // Takes pages until there are none left.
  void Run(DocumentReader& reader) {
    try {
      Recognition recognition;
      while (const auto place = Next()) {
        Finish(*place, Analyze(reader, recognition, (*indexes_)[*place]));
      }
    } catch (...) {
      Fail(std::current_exception());
    }
  }

  // Tells what is done until all is. Throws what a thread has failed with.
  void Tell(const AnalysisEvents& events) {
    std::unique_lock lock(mutex_);
    for (std::size_t told = 0; told < pages_.size() || !warnings_.empty();) {
      changed_.wait(lock,
                    [&] { return done_ > told || !warnings_.empty() || failure_ != nullptr; });
      if (failure_ != nullptr) {
        std::rethrow_exception(failure_);
      }
      const std::deque<PageWarning> warnings = std::exchange(warnings_, {});
      const std::size_t done = done_;
      lock.unlock();
      std::for_each(warnings.begin(), warnings.end(), events.warning);
      for (; told < done; ++told) {
        events.page_done();
      }
      lock.lock();
    }
  }

  void Stop() { Fail(nullptr); }

  std::vector<OfficePage> TakePages() { return std::move(pages_); }

 private:
  std::optional<std::size_t> Next() {
    StopIfCancelled(state_->is_cancelled);
    const std::lock_guard lock(mutex_);
    return next_ < pages_.size() && !is_stopped_ ? std::optional(next_++) : std::nullopt;
  }

  OfficePage Analyze(DocumentReader& reader, Recognition& recognition, std::size_t page_index) {
    try {
      OfficePage page;
      page.model = reader.Read(page_index);
      if (page.model.is_partial) {
        Warn({page_index, ConversionLoss::kPartOfPage,
              "something of the page cannot be read, or is too much"});
      }
      if (page.model.scale < kSlightlySmaller) {
        Warn({page_index, ConversionLoss::kPageSize, "larger than a page can be there"});
      }
      if (LacksText(page.model)) {
        AddTextOfPicture(recognition, page.model);
      } else if (scans_->recognises_text && reader.IsScanned(page_index)) {
        AddText(recognition, page.model);
      }
      StopIfCancelled(state_->is_cancelled);
      Weigh(page.model);
      page.layout = AnalyzePage(page.model);
      DropText(page.model);
      return page;
    } catch (const pdf::Error& error) {
      if (!IsAboutPage(error)) {
        throw;
      }
      Warn({page_index, ConversionLoss::kPage,
            std::string("the page cannot be read: ") + error.what()});
      return BlankPage(page_index);
    }
  }

  // A page whose fonts do not tell its text. Unlike those of scanned pages its pictures stay.
  void AddTextOfPicture(Recognition& recognition, PageModel& page) {
    const std::vector<ImagePlace> images = page.images;
    if (scans_->recognises_text) {
      AddText(recognition, page);
      page.images = images;
    }
    if (LacksText(page)) {
      Warn({page.number, ConversionLoss::kScannedText,
            "the fonts of the page do not tell what its text is"});
    }
  }

  // A page whose text cannot be recognised stays a picture.
  void AddText(Recognition& recognition, PageModel& page) {
    try {
      Prepare(recognition);
      recognition.pages->AddText(page);
    } catch (const Cancelled&) {
      throw;
    } catch (const std::exception& failure) {
      Warn({page.number, ConversionLoss::kScannedText,
            std::string("not recognised: ") + failure.what()});
    }
  }

  void Prepare(Recognition& recognition) {
    if (recognition.is_missing) {
      throw std::runtime_error(recognition.why);
    }
    if (recognition.pages != nullptr) {
      return;
    }
    try {
      recognition.pages =
          std::make_unique<ScannedPages>(scans_->path, scans_->password, state_->is_cancelled);
    } catch (const std::exception& failure) {
      recognition.is_missing = true;
      recognition.why = failure.what();
      throw;
    }
  }

  // The sum does not depend on which thread has which page.
  void Weigh(const PageModel& page) {
    const std::lock_guard lock(mutex_);
    weight_ += WeightOf(page);
    if (weight_ > limits::kMaxBytesOfPages) {
      throw std::bad_alloc();
    }
  }

  void Finish(std::size_t place, OfficePage page) {
    const std::lock_guard lock(mutex_);
    pages_[place] = std::move(page);
    ++done_;
    changed_.notify_all();
  }

  void Warn(PageWarning warning) {
    const std::lock_guard lock(mutex_);
    warnings_.push_back(std::move(warning));
    changed_.notify_all();
  }

  void Fail(std::exception_ptr failure) {
    const std::lock_guard lock(mutex_);
    is_stopped_ = true;
    if (failure_ == nullptr) {
      failure_ = std::move(failure);
    }
    changed_.notify_all();
  }

  const std::vector<std::size_t>* indexes_;
  const ScanSettings* scans_;
  const ConversionSdk::ConversionState* state_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<OfficePage> pages_;
  std::size_t next_ = 0;
  std::size_t done_ = 0;
  std::size_t weight_ = 0;
  bool is_stopped_ = false;
  std::deque<PageWarning> warnings_;
  std::exception_ptr failure_;
};

// Threads that are joined before what they work on goes.
class Threads {
 public:
  explicit Threads(Work& work) : work_(&work) {}

  ~Threads() {
    work_->Stop();
    for (std::thread& thread : threads_) {
      thread.join();
    }
  }

  Threads(const Threads&) = delete;
  Threads& operator=(const Threads&) = delete;

  void Start(DocumentReader& reader) {
    threads_.emplace_back([work = work_, &reader] { work->Run(reader); });
  }

 private:
  Work* work_;
  std::vector<std::thread> threads_;
};

std::size_t ThreadCount(std::size_t page_count) {
  const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
  return std::clamp<std::size_t>(page_count / kPagesOfThread, 1, std::min(cores, kMostThreads));
}

}  // namespace

std::vector<OfficePage> AnalyzePages(DocumentReader& reader,
                                     const std::vector<std::size_t>& page_indexes,
                                     const ScanSettings& scans,
                                     const ConversionSdk::ConversionState& state,
                                     const AnalysisEvents& events) {
  Work work(page_indexes, scans, state);
  reader.SetCancelFlag(state.is_cancelled);
  std::vector<std::unique_ptr<DocumentReader>> readers;
  for (std::size_t count = ThreadCount(page_indexes.size()); count > 1; --count) {
    readers.push_back(reader.OpenAgain());
  }
  {
    Threads threads(work);
    threads.Start(reader);
    for (const auto& other : readers) {
      try {
        threads.Start(*other);
      } catch (const std::system_error&) {
        break;  // those that there are do the work
      }
    }
    work.Tell(events);
  }
  return work.TakePages();
}

}  // namespace TarnixTools::engines::office
