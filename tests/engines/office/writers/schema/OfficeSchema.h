// What ECMA-376 lets the elements be that our writers make: their children in order, their
// attributes and the values of these, and the namespaces of their names.
#ifndef TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_OFFICESCHEMA_H_
#define TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_OFFICESCHEMA_H_

#include <string>
#include <string_view>

#include "engines/office/writers/schema/XmlNode.h"

namespace TarnixTools::engines::office {

// What is wrong with the part, a line each; empty for nothing.
std::string SchemaComplaints(const XmlNode& root);
std::string SchemaComplaints(std::string_view xml);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_OFFICESCHEMA_H_
