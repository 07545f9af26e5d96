// Document information through the contract.
#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

using namespace toolbox;

namespace {

using Value = std::optional<std::string> DocumentInfo::*;

// Fills the buffer with as much of the value as fits, never half a character.
int Get(const TPdfMetadata* metadata, Value value, char* buffer, std::int32_t size) {
  return Guarded({metadata}, [&] {
    Require(buffer != nullptr && size > 0);
    const auto& set = metadata->info.*value;
    const std::string_view text = set ? std::string_view(*set) : std::string_view();
    const std::size_t count = Utf8LengthWithin(text, static_cast<std::size_t>(size) - 1);
    text.copy(buffer, count);
    buffer[count] = '\0';
  });
}

int Set(TPdfMetadata* metadata, Value value, const char* bytes, std::int64_t size) {
  return Guarded({metadata}, [&] {
    Require(bytes != nullptr && size >= 0);
    metadata->info.*value = std::string(bytes, static_cast<std::size_t>(size));
  });
}

}  // namespace

TPdfMetadata* PdfDocumentGetMetadata(TPdfDocument* document) {
  return Guarded({document}, [&] {
    auto metadata = std::make_unique<TPdfMetadata>();
    metadata->info = document->source != nullptr ? ReadDocumentInfo(document->source->document())
                                                 : document->target->info();
    return metadata.release();
  });
}

TPdfMetadata* PdfDocumentCopyMetadata(TPdfDocument* target, TPdfMetadata* metadata) {
  return Guarded({target, metadata}, [&] {
    Require(target->target != nullptr);
    return std::make_unique<TPdfMetadata>(*metadata).release();
  });
}

int PdfDocumentSetMetadata(TPdfDocument* target, TPdfMetadata* metadata) {
  return Guarded({target, metadata}, [&] {
    Require(target->target != nullptr);
    target->target->SetInfo(metadata->info);
  });
}

int PdfDocumentKeepMetadata(TPdfDocument* target, TPdfDocument* source) {
  return Guarded({target, source}, [&] {
    Require(target->target != nullptr && source->source != nullptr);
    target->target->KeepMetadata(*source->source);
  });
}

int PdfDocumentSetClaimProof(TPdfDocument* target, TPdfClaimProof proof, std::FILE* file) {
  return Guarded({target}, [&] {
    Require(target->target != nullptr && proof != nullptr && file != nullptr);
    target->target->SetClaimProof(proof, file);
  });
}

int PdfDocumentKeepClaim(TPdfDocument* target, TPdfDocument* source) {
  return Guarded({target, source}, [&] {
    Require(target->target != nullptr && source->source != nullptr);
    target->target->KeepClaim(*source->source);
  });
}

int PdfMetadataGetAuthorA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return Get(metadata, &DocumentInfo::author, buffer, size);
}

int PdfMetadataGetKeywordsA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return Get(metadata, &DocumentInfo::keywords, buffer, size);
}

int PdfMetadataGetCreatorA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return Get(metadata, &DocumentInfo::creator, buffer, size);
}

int PdfMetadataGetProducerA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return Get(metadata, &DocumentInfo::producer, buffer, size);
}

int PdfMetadataGetTitleA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return Get(metadata, &DocumentInfo::title, buffer, size);
}

int PdfMetadataGetSubjectA(TPdfMetadata* metadata, char* buffer, std::int32_t size) {
  return Get(metadata, &DocumentInfo::subject, buffer, size);
}

int PdfMetadataSetAuthorA(TPdfMetadata* metadata, const char* value, std::int64_t size) {
  return Set(metadata, &DocumentInfo::author, value, size);
}

int PdfMetadataSetKeywordsA(TPdfMetadata* metadata, const char* value, std::int64_t size) {
  return Set(metadata, &DocumentInfo::keywords, value, size);
}

int PdfMetadataSetCreatorA(TPdfMetadata* metadata, const char* value, std::int64_t size) {
  return Set(metadata, &DocumentInfo::creator, value, size);
}

int PdfMetadataSetProducerA(TPdfMetadata* metadata, const char* value, std::int64_t size) {
  return Set(metadata, &DocumentInfo::producer, value, size);
}

int PdfMetadataSetTitleA(TPdfMetadata* metadata, const char* value, std::int64_t size) {
  return Set(metadata, &DocumentInfo::title, value, size);
}

int PdfMetadataSetSubjectA(TPdfMetadata* metadata, const char* value, std::int64_t size) {
  return Set(metadata, &DocumentInfo::subject, value, size);
}

}  // namespace TarnixTools::engines
