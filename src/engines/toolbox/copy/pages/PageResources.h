// Resources of copied pages: shared ones once. When only some pages of a source are copied, what
// none of them uses stays behind, name by name: also in resources of forms, patterns, fonts and
// appearances, which often are those of pages that are not copied.
//
// A page's contents are read only while its resources name objects of which it is not known yet
// that another copied page uses them.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGERESOURCES_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGERESOURCES_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engines/toolbox/content/PageContent.h"
#include "pdf/content/ResourceUse.h"
#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/ObjectCopier.h"

namespace TarnixTools::engines::toolbox {

class CopyContext;

class PageResourceCopier : public pdf::ResourceFilter {
  // Where a page's resources stand: pages that share them have the same key.
  struct Place {
    pdf::Object value;
    std::uint64_t key = 0;
    bool is_shared = false;
  };

 public:
  // A page's own resources, looked up. Not to outlive the page's dictionary.
  class PageResources {
   public:
    // Names of the colour spaces that stand for those of the device on this page (8.6.5.6).
    std::vector<std::string_view> DefaultSpaces() const;

   private:
    friend class PageResourceCopier;
    Place place_;
    std::shared_ptr<const pdf::ResourceDictionary> dictionary_;  // null: there are none
  };

  explicit PageResourceCopier(CopyContext& context) : context_(&context) {}

  // Looks at what the copied pages use; to be called before any page is written.
  void Prepare();
  // Appends the page's /Resources entry.
  void Copy(std::string& page, const pdf::PageTree::Page& source_page,
            const pdf::Object& dictionary);
  PageResources Open(const pdf::PageTree::Page& source_page, const pdf::Object& dictionary);
  // Appends the page's /Resources entry with more resources. Returns what their names begin with,
  // so that none of them is one of the page's own.
  std::string CopyWith(std::string& page, const PageResources& own,
                       const std::vector<AddedResource>& added);
  // Appends the page's /Resources entry to the dictionary of a stream.
  void CopyToForm(std::string& form, const pdf::PageTree::Page& source_page,
                  const pdf::Object& dictionary);
  // To be called before a widget's appearances are copied, which keep the font of its text.
  void NoteWidget(const pdf::Object& widget);

  bool AppendResources(std::string& out, std::uint32_t number, const pdf::Object& dictionary,
                       bool is_stream) override;

 private:
  // What is known of the use of one resource dictionary.
  struct Use {
    pdf::UsedEntries entries;
    std::uint32_t settled_entries = 0;  // how many entries from the first need no more thought
    std::optional<bool> is_whole;       // decided when the first page is copied
    std::uint32_t target_number = 0;    // of the copy, for resources that are an object
  };

  Place PlaceOf(const pdf::PageTree::Page& page, const pdf::Object& dictionary) const;
  std::shared_ptr<const pdf::ResourceDictionary> Read(const Place& place);
  void Look(const pdf::PageTree::Page& page);
  bool IsSettled(const pdf::ResourceDictionary& resources, Use& use) const;
  bool IsKept(const pdf::ResourceDictionary& resources, const Use& use, std::size_t entry) const;
  void Apply(const pdf::ResourceUse& names, const pdf::ResourceDictionary& resources, Use& use);
  bool IsWhole(const pdf::ResourceDictionary& resources, const Use& use) const;
  std::string Pruned(const pdf::ResourceDictionary& resources, const Use& use);
  std::vector<bool> KeptOf(const pdf::ResourceDictionary& resources, const Use& use);
  std::string Merged(const Place& place, const pdf::ResourceDictionary& resources,
                     const std::vector<AddedResource>& added, const std::string& prefix);
  void AppendCategory(std::string& out, const pdf::ResourceDictionary& resources,
                      const std::vector<bool>& is_kept, std::size_t first, std::size_t end);
  std::uint32_t Write(const std::string& text);

  CopyContext* context_;
  pdf::Arena arena_;
  std::unordered_map<std::uint64_t, Use> uses_;  // of pages' resources, by key
  std::unordered_set<std::uint32_t> proven_;     // source objects that a copied page uses
  std::unordered_map<std::string, std::uint32_t> written_;  // pruned resources of forms, by text
  std::unordered_map<std::string, std::uint32_t> merged_;   // by place and what was added
  std::unordered_map<std::uint32_t, pdf::ResourceNameId> widget_fonts_;  // by appearance
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGERESOURCES_H_
