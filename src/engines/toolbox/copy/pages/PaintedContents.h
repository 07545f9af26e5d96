// The contents of a copied page that something is painted onto: its own streams between ours.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAINTEDCONTENTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAINTEDCONTENTS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "engines/toolbox/content/ContentIsolation.h"
#include "engines/toolbox/content/PageContent.h"

namespace TarnixTools::engines::toolbox {

class CopyContext;

class PaintedContents {
 public:
  explicit PaintedContents(CopyContext& context);

  // Appends the page's /Contents entry.
  //   streams - the numbers in the source of the page's own
  //   prefix  - of the resources' names
  void Append(std::string& out, const std::vector<std::uint32_t>& streams,
              const PageContent& painted, const std::string& prefix);

 private:
  void AppendIsolated(std::string& out, const std::vector<std::uint32_t>& streams,
                      const std::string& over);
  void AppendStream(std::string& out, std::uint32_t source_number);

  CopyContext* context_;
  ContentIsolation isolation_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAINTEDCONTENTS_H_
