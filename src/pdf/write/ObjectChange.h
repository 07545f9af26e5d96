// What becomes of an object when its document is written again.
#ifndef TARNIX_PDF_WRITE_OBJECTCHANGE_H_
#define TARNIX_PDF_WRITE_OBJECTCHANGE_H_

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "pdf/file/ByteSink.h"

namespace TarnixTools::pdf {

struct ObjectChange {
  enum class Kind : std::uint8_t { kKept, kValue, kStream, kLeftOut };
  // Writes a stream's data to the sink, in pieces of any size.
  using DataWriter = std::function<void(ByteSink& sink)>;

  Kind kind = Kind::kKept;
  std::string text;   // the value, or the stream's dictionary
  std::string data;   // of the stream, encoded as its dictionary says
  DataWriter writer;  // when there is one, in place of `data`

  // The object as it is.
  static ObjectChange Keep() { return {}; }

  // An object that is not a stream.
  static ObjectChange Value(std::string text) {
    return {.kind = Kind::kValue, .text = std::move(text), .data = {}, .writer = {}};
  }

  // dictionary: whole, from "<<" to ">>"; a /Length in it does not matter. Data for which it names
  // no filter is deflated where that makes it shorter.
  static ObjectChange Stream(std::string dictionary, std::string data) {
    return {.kind = Kind::kStream,
            .text = std::move(dictionary),
            .data = std::move(data),
            .writer = {}};
  }

  // The writer is called when the stream's turn has come. What it writes is not held, however much
  // it is.
  static ObjectChange StreamFrom(std::string dictionary, DataWriter writer) {
    return {.kind = Kind::kStream,
            .text = std::move(dictionary),
            .data = {},
            .writer = std::move(writer)};
  }

  // Nothing: what has been written already may refer to it, and thereby to null.
  static ObjectChange LeaveOut() {
    return {.kind = Kind::kLeftOut, .text = {}, .data = {}, .writer = {}};
  }
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_OBJECTCHANGE_H_
