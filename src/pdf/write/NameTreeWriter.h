// Writes name trees (ISO 32000-2, 7.9.6).
#ifndef TARNIX_PDF_WRITE_NAMETREEWRITER_H_
#define TARNIX_PDF_WRITE_NAMETREEWRITER_H_

#include <cstdint>
#include <string>
#include <vector>

#include "pdf/write/FileWriter.h"

namespace TarnixTools::pdf {

struct NamedObject {
  std::string name;
  std::uint32_t number = 0;  // of the value's object
};

// Writes a balanced tree of these, whose names differ, and returns its root's number.
std::uint32_t WriteNameTree(FileWriter& writer, std::vector<NamedObject> objects);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_NAMETREEWRITER_H_
