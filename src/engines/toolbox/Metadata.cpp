// Document information (ISO 32000-2, 14.3.3).
#include <algorithm>
#include <cstring>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines {

namespace {

// Fills the buffer with as much of the value as fits, never half a character.
int FillBuffer(const std::string& value, char* buffer, std::int32_t size) {
  if (buffer == nullptr || size <= 0) {
    SetLastError(kArgumentError);
    return 0;
  }
  std::size_t count = std::min(value.size(), static_cast<std::size_t>(size) - 1);
  while (count > 0 && count < value.size() &&
         (static_cast<unsigned char>(value[count]) & 0xC0U) == 0x80U) {
    --count;
  }
  std::memcpy(buffer, value.data(), count);
  buffer[count] = '\0';
  return 1;
}

}  // namespace

TPdfMetadata* PdfDocumentGetMetadata(TPdfDocument* document) {
  if (document == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfMetadata* {
    auto metadata = std::make_unique<TPdfMetadata>();
    if (document->source != nullptr) {
      pdf::Document& source = document->source->document();
      pdf::Arena arena;
      const pdf::Object info = source.Resolve(source.trailer().Get("Info"), arena);
      const auto read = [&](const char* key) {
        return pdf::TextStringToUtf8(source.Resolve(info.Get(key), arena).Text());
      };
      *metadata = {read("Author"), read("Keywords"), read("Creator"), read("Producer")};
    }
    return metadata.release();
  });
}

int PdfMetadataGetAuthorA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return metadata == nullptr ? 0 : FillBuffer(metadata->author, buffer, size);
}

int PdfMetadataGetKeywordsA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return metadata == nullptr ? 0 : FillBuffer(metadata->keywords, buffer, size);
}

int PdfMetadataGetCreatorA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return metadata == nullptr ? 0 : FillBuffer(metadata->creator, buffer, size);
}

int PdfMetadataGetProducerA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return metadata == nullptr ? 0 : FillBuffer(metadata->producer, buffer, size);
}

}  // namespace TarnixTools::engines
