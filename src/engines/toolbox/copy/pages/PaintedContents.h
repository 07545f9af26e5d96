// The contents of a copied page that something is painted onto: its own streams between ours.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAINTEDCONTENTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAINTEDCONTENTS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engines/toolbox/content/ContentIsolation.h"
#include "engines/toolbox/content/PageContent.h"
#include "engines/toolbox/copy/pages/PageResources.h"

namespace TarnixTools::engines::toolbox {

class CopyContext;

// A page of the source and what is painted onto its copy.
struct PaintedPage {
  const pdf::PageTree::Page& page;
  const pdf::Object& dictionary;
  std::uint32_t number = 0;  // one-based, in the target
  const PageContent& painted;
  const std::string& structure_key;  // the entry by which tags find its content, or nothing
};

class PaintedContents {
 public:
  // Both outlive this.
  PaintedContents(CopyContext& context, PageResourceCopier& resources);

  // Appends the page's /Contents and /Resources entries and its structure key. Where its content
  // has become a form, the key goes there; the result is the form's number then, and 0 otherwise.
  std::uint32_t Append(std::string& out, const PaintedPage& page);

 private:
  std::vector<std::uint32_t> StreamsOf(const PaintedPage& page);
  IsolatedContent OwnContent(const PaintedPage& page);
  AddedResource OwnForm(const PaintedPage& page, const std::string& content);
  void PutIntoForms(PageContent& painted, const PaintedPage& page,
                    const std::vector<std::string_view>& default_spaces);
  void AppendContents(std::string& out, const IsolatedContent& own, const PageContent& painted,
                      const std::string& prefix);
  void AppendOver(std::string& out, const IsolatedContent& own, const std::string& over);
  void AppendStream(std::string& out, const ContentStream& stream);

  CopyContext* context_;
  PageResourceCopier* resources_;
  ContentIsolation isolation_;
  std::unordered_map<std::string, std::uint32_t> forms_;  // of pages, by what is in them
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAINTEDCONTENTS_H_
