#include "engines/pdfa/checks/EmbeddedFileCheck.h"

#include "engines/pdfa/checks/EmbeddedPdf.h"
#include "engines/pdfa/rules/EmbeddedFileFacts.h"

namespace TarnixTools::engines::pdfa {

void EmbeddedFileCheck::Note(const pdf::Object& dictionary, std::uint32_t number,
                             bool is_whole_object) {
  const pdf::Object associated = dictionary.Get("AF");
  if (associated.IsReference()) {
    lists_.push_back(associated);
  }
  for (const pdf::Object& item : associated.Items()) {
    associated_.insert(item.AsReference().number);
  }
  if (!dictionary.Get("Type").IsName("Filespec")) {
    return;
  }
  if (is_whole_object) {
    specifications_.push_back(number);
  } else {
    CheckSpecification(dictionary, number);
  }
}

void EmbeddedFileCheck::Run() {
  FindAssociated();
  for (const std::uint32_t number : specifications_) {
    pdf::Arena arena;
    CheckSpecification(checked_->document().Load({number, 0}, arena), number);
  }
}

void EmbeddedFileCheck::FindAssociated() {
  pdf::Arena arena;
  for (const pdf::Object& list : lists_) {
    const pdf::Followed followed = checked_->document().Follow(list, arena);
    associated_.insert(followed.number);
    for (const pdf::Object& item : followed.value.Items()) {
      associated_.insert(item.AsReference().number);
    }
  }
}

void EmbeddedFileCheck::CheckSpecification(const pdf::Object& dictionary, std::uint32_t number) {
  pdf::Arena arena;
  checked_->findings().Check(
      FileSpecificationFacts{.embeds_file = dictionary.Has("EF"),
                             .has_names = dictionary.Has("F") && dictionary.Has("UF"),
                             .has_relationship = dictionary.Has("AFRelationship"),
                             .is_associated = associated_.contains(number)},
      {.object = number});
  const pdf::Object files = checked_->Get(dictionary, "EF", arena);
  for (const pdf::DictionaryEntry& entry : files.Entries()) {
    CheckFile(entry.value);
  }
}

void EmbeddedFileCheck::CheckFile(const pdf::Object& stream) {
  const std::uint32_t number = stream.AsReference().number;
  if (!checked_files_.insert(number).second) {
    return;
  }
  pdf::Arena arena;
  const pdf::Object dictionary = checked_->document().Load({number, 0}, arena);
  const pdf::Object type = checked_->Get(dictionary, "Subtype", arena);
  EmbeddedFileFacts facts{.media_type = type.Text()};
  facts.is_pdfa = PartOf(checked_->level()) != 2 ||
                  IsEmbeddedPdfA(checked_->document(), number, checked_->embedded_depth());
  checked_->findings().Check(facts, {.object = number});
}

}  // namespace TarnixTools::engines::pdfa
