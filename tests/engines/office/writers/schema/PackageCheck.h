// Whether the parts of a package go together: every one is of a known type, is led to by a
// relationship of its kind, and keeps the schema; what refers to something finds it; identifiers
// are told apart.
#ifndef TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_PACKAGECHECK_H_
#define TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_PACKAGECHECK_H_

#include <map>
#include <string>

namespace TarnixTools::engines::office {

// What is wrong with the package of a document or a presentation, a line each; empty for nothing.
//   parts - by name, inflated
std::string PackageComplaints(const std::map<std::string, std::string>& parts);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_PACKAGECHECK_H_
