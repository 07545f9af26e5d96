// Checks how a file is written: its frame, its cross-reference, and every object in it (ISO 19005-1,
// -2 and -3, 6.1), in the one pass in which the core reads all of them.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_FILECHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_FILECHECK_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/EmbeddedFileCheck.h"
#include "engines/pdfa/checks/TokenCheck.h"
#include "engines/pdfa/rules/FileFacts.h"
#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::engines::pdfa {

class FileCheck : public pdf::SyntaxObserver {
 public:
  explicit FileCheck(CheckedDocument& checked)
      : checked_(&checked),
        findings_(&checked.findings()),
        tokens_(checked.findings()),
        files_(checked) {}

  void Run();

  void OnHeader(const pdf::HeaderSyntax& header) override;
  void OnFileEnd(const pdf::FileEndSyntax& end) override;
  void OnXrefTable(const pdf::XrefTableSyntax& table) override;
  void OnXrefSubsection(const pdf::XrefSubsectionSyntax& subsection) override;
  void OnTrailer(const pdf::TrailerSyntax& trailer) override;
  void OnLinearization(const pdf::LinearizationSyntax& linearization) override;
  void OnObject(const pdf::ObjectSyntax& object) override;
  void OnToken(const pdf::TokenSyntax& token) override;
  void OnStream(const pdf::StreamSyntax& stream) override;
  void OnObjectEnd(const pdf::ObjectEndSyntax& end) override;

 private:
  void CheckContainers(const pdf::Object& value, std::uint32_t number);
  void AddContainer(const pdf::Object& value);
  void CheckStream(const pdf::Object& dictionary, std::uint32_t number);
  void CheckFilters(const pdf::Object& dictionary, std::uint32_t number);
  void CheckNoted();

  CheckedDocument* checked_;
  FindingList* findings_;
  TokenCheck tokens_;
  EmbeddedFileCheck files_;
  HeaderFacts header_;
  std::string header_line_;
  FileFacts file_;
  std::uint64_t file_size_ = 0;
  std::optional<std::uint64_t> first_trailer_;  // their offsets
  std::optional<std::uint64_t> last_trailer_;
  std::optional<XrefFacts> xref_;  // of the table that is being told of
  bool object_is_regular_ = true;
  bool is_stream_ = false;
  StreamFacts stream_;
  std::vector<pdf::Object> containers_;  // that are still to be looked at
  std::vector<std::uint32_t> noted_;     // streams whose filters have to be looked up
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_FILECHECK_H_
