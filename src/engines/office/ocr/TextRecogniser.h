// Finds the text in pictures of pages.
//
//   TextRecogniser recogniser(is_cancelled);
//   const RecognisedText text = recogniser.Recognise(picture, 300);
#ifndef TARNIX_ENGINES_OFFICE_OCR_TEXTRECOGNISER_H_
#define TARNIX_ENGINES_OFFICE_OCR_TEXTRECOGNISER_H_

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace TarnixTools::engines::office {

// A picture in memory: a byte for each pixel, 255 for white, top row first.
struct GrayPicture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;

  // Turned to the right. degrees: 0, 90, 180 or 270.
  GrayPicture Turned(int degrees) const;
};

// Places are pixels of the picture turned to the right by RecognisedText::turn.
struct RecognisedWord {
  std::string text;       // UTF-8
  double confidence = 0;  // 0 to 100
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  double baseline = 0;  // under the middle of the word
  std::uint32_t line = 0;
};

struct RecognisedText {
  int turn = 0;  // degrees, to the right, that make the picture upright: 0, 90, 180 or 270
  std::vector<RecognisedWord> words;  // as they are read
};

// For one thread at a time.
class TextRecogniser {
 public:
  // The flag ends a recognition by Cancelled; it outlives this. Throws std::runtime_error without
  // Tesseract or without a language for it. English and two more of those that are installed are
  // recognised. The look at which way a page is turned does not ask the flag.
  explicit TextRecogniser(const std::atomic<bool>& is_cancelled);
  ~TextRecogniser();
  TextRecogniser(const TextRecogniser&) = delete;
  TextRecogniser& operator=(const TextRecogniser&) = delete;

  //   dpi - pixels per inch of the picture
  RecognisedText Recognise(const GrayPicture& picture, int dpi);

 private:
  struct Inside;

  int TurnOf(const GrayPicture& picture, int dpi);
  std::vector<RecognisedWord> WordsOf(const GrayPicture& upright, int dpi);

  std::unique_ptr<Inside> inside_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_OCR_TEXTRECOGNISER_H_
