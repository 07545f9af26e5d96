#include "engines/office/ocr/TextRecogniser.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "engines/office/ocr/TesseractApi.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {

namespace {

using tesseract::PSM_AUTO;
using tesseract::PSM_OSD_ONLY;
using tesseract::RIL_TEXTLINE;
using tesseract::RIL_WORD;

constexpr std::size_t kMaxWords = 20'000;
constexpr int kMostLanguages = 3;
constexpr float kSureOfTurn = 2;  // of Tesseract's confidence, for which more than 15 are usual

struct BaseDeleter {
  void operator()(TessBaseAPI* base) const noexcept { LoadTesseract()->TessBaseAPIDelete(base); }
};

struct IteratorDeleter {
  void operator()(TessResultIterator* iterator) const noexcept {
    LoadTesseract()->TessResultIteratorDelete(iterator);
  }
};

struct MonitorDeleter {
  void operator()(ETEXT_DESC* monitor) const noexcept {
    LoadTesseract()->TessMonitorDelete(monitor);
  }
};

using BasePtr = std::unique_ptr<TessBaseAPI, BaseDeleter>;

// Null for a language that is not installed. What Tesseract has to say goes nowhere: a library does
// not print.
BasePtr OpenLanguage(const TesseractApi& api, const std::string& language) {
  BasePtr base(api.TessBaseAPICreate());
  if (base != nullptr) {
    api.TessBaseAPISetVariable(base.get(), "debug_file", "/dev/null");
  }
  const bool is_open =
      base != nullptr && api.TessBaseAPIInit3(base.get(), nullptr, language.c_str()) == 0;
  return is_open ? std::move(base) : nullptr;
}

// The languages that are installed, joined as Tesseract takes them, behind the one that comes first;
// empty for none.
std::string LanguagesOf(const TesseractApi& api, const TessBaseAPI* base, std::string first) {
  std::string joined = std::move(first);
  char** const names = api.TessBaseAPIGetAvailableLanguagesAsVector(base);
  int count = joined.empty() ? 0 : 1;
  for (char** name = names; name != nullptr && *name != nullptr; ++name) {
    const std::string language = *name;
    const bool is_other = language != "eng" && language != "osd" && language != "equ" &&
                          language.find('/') == std::string::npos;
    if (is_other && count < kMostLanguages) {
      joined += (joined.empty() ? "" : "+") + language;
      ++count;
    }
  }
  api.TessDeleteTextArray(names);
  return joined;
}

void SetResolution(const TesseractApi& api, TessBaseAPI* base, int dpi) {
  api.TessBaseAPISetSourceResolution(base, dpi);
  api.TessBaseAPISetVariable(base, "user_defined_dpi", std::to_string(dpi).c_str());
}

bool IsCancelled(void* flag, int /*words*/) {
  return static_cast<const std::atomic<bool>*>(flag)->load(std::memory_order_relaxed);
}

RecognisedWord WordAt(const TesseractApi& api, const TessResultIterator* words) {
  RecognisedWord word;
  const TessPageIterator* place =
      api.TessResultIteratorGetPageIteratorConst(const_cast<TessResultIterator*>(words));
  if (char* const text = api.TessResultIteratorGetUTF8Text(words, RIL_WORD)) {
    word.text = text;
    api.TessDeleteText(text);
  }
  word.confidence = api.TessResultIteratorConfidence(words, RIL_WORD);
  api.TessPageIteratorBoundingBox(place, RIL_WORD, &word.left, &word.top, &word.right,
                                  &word.bottom);
  int x1 = 0;
  int y1 = 0;
  int x2 = 0;
  int y2 = 0;
  const bool has_baseline = api.TessPageIteratorBaseline(place, RIL_WORD, &x1, &y1, &x2, &y2) != 0;
  word.baseline = has_baseline ? (y1 + y2) / 2.0 : word.bottom;
  return word;
}

}  // namespace

GrayPicture GrayPicture::Turned(int degrees) const {
  if (degrees == 0) {
    return *this;
  }
  const bool is_across = degrees != 180;
  GrayPicture turned{is_across ? height : width, is_across ? width : height, {}};
  turned.pixels.resize(pixels.size());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int to_x = degrees == 90 ? height - 1 - y : degrees == 180 ? width - 1 - x : y;
      const int to_y = degrees == 90 ? x : degrees == 180 ? height - 1 - y : width - 1 - x;
      turned.pixels[static_cast<std::size_t>(to_y) * static_cast<std::size_t>(turned.width) +
                    static_cast<std::size_t>(to_x)] =
          pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                 static_cast<std::size_t>(x)];
    }
  }
  return turned;
}

struct TextRecogniser::Inside {
  const TesseractApi* api = nullptr;
  const std::atomic<bool>* is_cancelled = nullptr;
  BasePtr orientation;  // null where its data is not installed
  BasePtr text;
};

TextRecogniser::TextRecogniser(const std::atomic<bool>& is_cancelled)
    : inside_(std::make_unique<Inside>()) {
  const TesseractApi* api = LoadTesseract();
  if (api == nullptr) {
    throw std::runtime_error("Tesseract is not installed: libtesseract5");
  }
  inside_->api = api;
  inside_->is_cancelled = &is_cancelled;
  inside_->orientation = OpenLanguage(*api, "osd");
  inside_->text = OpenLanguage(*api, "eng");
  const bool has_english = inside_->text != nullptr;
  const TessBaseAPI* any = has_english ? inside_->text.get() : inside_->orientation.get();
  const std::string languages =
      any != nullptr ? LanguagesOf(*api, any, has_english ? "eng" : "") : std::string();
  if (!languages.empty() && languages != "eng") {
    if (BasePtr all = OpenLanguage(*api, languages)) {
      inside_->text = std::move(all);
    }
  }
  if (inside_->text == nullptr) {
    throw std::runtime_error("Tesseract has no language: tesseract-ocr-eng");
  }
}

TextRecogniser::~TextRecogniser() = default;

// Has Tesseract work on the calling thread alone while this lives. Pages are recognised side by side:
// four threads for each of them wait for each other most of the time.
class WithoutThreads {
 public:
  explicit WithoutThreads(const TesseractApi& api) : api_(&api) {
    if (has_levels()) {
      before_ = api_->omp_get_max_active_levels();
      api_->omp_set_max_active_levels(0);
    }
  }

  ~WithoutThreads() {
    if (has_levels()) {
      api_->omp_set_max_active_levels(before_);
    }
  }

  WithoutThreads(const WithoutThreads&) = delete;
  WithoutThreads& operator=(const WithoutThreads&) = delete;

 private:
  bool has_levels() const {
    return api_->omp_get_max_active_levels != nullptr && api_->omp_set_max_active_levels != nullptr;
  }

  const TesseractApi* api_;
  int before_ = 0;
};

RecognisedText TextRecogniser::Recognise(const GrayPicture& picture, int dpi) {
  const WithoutThreads without_threads(*inside_->api);
  RecognisedText text;
  text.turn = TurnOf(picture, dpi);
  StopIfCancelled(*inside_->is_cancelled);
  text.words = WordsOf(picture.Turned(text.turn), dpi);
  return text;
}

// Tesseract tells how far the picture is turned to the left.
int TextRecogniser::TurnOf(const GrayPicture& picture, int dpi) {
  TessBaseAPI* const base = inside_->orientation.get();
  if (base == nullptr) {
    return 0;
  }
  const TesseractApi& api = *inside_->api;
  api.TessBaseAPISetPageSegMode(base, PSM_OSD_ONLY);
  api.TessBaseAPISetImage(base, picture.pixels.data(), picture.width, picture.height, 1,
                          picture.width);
  SetResolution(api, base, dpi);
  int degrees = 0;
  float sure_of_degrees = 0;
  const char* script = nullptr;
  float sure_of_script = 0;
  const bool is_found = api.TessBaseAPIDetectOrientationScript(base, &degrees, &sure_of_degrees,
                                                               &script, &sure_of_script) != 0;
  api.TessBaseAPIClear(base);
  const bool is_quarter = degrees == 90 || degrees == 180 || degrees == 270;
  return is_found && is_quarter && sure_of_degrees >= kSureOfTurn ? 360 - degrees : 0;
}

std::vector<RecognisedWord> TextRecogniser::WordsOf(const GrayPicture& upright, int dpi) {
  TessBaseAPI* const base = inside_->text.get();
  const TesseractApi& api = *inside_->api;
  api.TessBaseAPISetPageSegMode(base, PSM_AUTO);
  api.TessBaseAPISetImage(base, upright.pixels.data(), upright.width, upright.height, 1,
                          upright.width);
  SetResolution(api, base, dpi);
  const std::unique_ptr<ETEXT_DESC, MonitorDeleter> monitor(api.TessMonitorCreate());
  api.TessMonitorSetCancelFunc(monitor.get(), &IsCancelled);
  api.TessMonitorSetCancelThis(monitor.get(),
                               const_cast<void*>(static_cast<const void*>(inside_->is_cancelled)));
  const bool is_done = api.TessBaseAPIRecognize(base, monitor.get()) == 0;
  StopIfCancelled(*inside_->is_cancelled);
  const std::unique_ptr<TessResultIterator, IteratorDeleter> found(
      is_done ? api.TessBaseAPIGetIterator(base) : nullptr);
  std::vector<RecognisedWord> words;
  std::uint32_t line = 0;
  while (found != nullptr && words.size() < kMaxWords) {
    const TessPageIterator* place = api.TessResultIteratorGetPageIteratorConst(found.get());
    line += api.TessPageIteratorIsAtBeginningOf(place, RIL_TEXTLINE) != 0 ? 1 : 0;
    RecognisedWord word = WordAt(api, found.get());
    word.line = line;
    if (!word.text.empty() && word.right > word.left && word.bottom > word.top) {
      words.push_back(std::move(word));
    }
    if (api.TessResultIteratorNext(found.get(), RIL_WORD) == 0) {
      break;
    }
  }
  api.TessBaseAPIClear(base);
  return words;
}

}  // namespace TarnixTools::engines::office
