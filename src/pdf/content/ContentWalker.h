// Goes through content operator by operator, and through the content that it leads to, with the
// graphics state that is in force, and tells a visitor what is painted.
//
//   ImageCounter counter;  // a ContentVisitor
//   ContentWalker walker(document, counter, {.images = true, .forms = true});
//   walker.BeginPage(pages, page_index);
//   walker.Run();
//
// Content within content is a stack of a bounded depth: no recursion. What readers pass over is
// passed over, and the visitor is told. Nothing is worked out that the options do not ask for.
#ifndef TARNIX_PDF_CONTENT_CONTENTWALKER_H_
#define TARNIX_PDF_CONTENT_CONTENTWALKER_H_

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "pdf/content/ContentVisitor.h"
#include "pdf/content/Operators.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::pdf {

struct ContentFrame;
struct PendingContent;
struct WalkContext;

class ContentWalker {
 public:
  // The document, the visitor and the layers of the options outlive the walker.
  ContentWalker(Document& document, ContentVisitor& visitor, const WalkOptions& options);
  ~ContentWalker();
  ContentWalker(const ContentWalker&) = delete;
  ContentWalker& operator=(const ContentWalker&) = delete;

  // Each begins a walk anew. All of them throw Error for a document that cannot be read any more.

  // Goes to a page: its content, then the appearances of its annotations. The tree outlives this.
  //   matrix - from the page's space to that of the walk
  void BeginPage(const PageTree& pages, std::size_t page_index, const Matrix& matrix = {});
  // Goes to any other content, as a ResourceGraph tells of it.
  //   user   - where names are looked up when it has no resources itself; outlives this
  //   matrix - from the space that its own matrix leads to, to that of the walk
  void BeginContent(const ContentPlace& content, const ResourceScope& user,
                    const Matrix& matrix = {});

  // Runs the next operator, or goes into or out of content; false at the end. What the visitor was
  // told of lives until the next step.
  bool Step();
  // Goes on to the end.
  void Run();

  // Marked content that the running content has open, outermost first.
  const std::vector<MarkedContent>& marks() const;

 private:
  using Runner = void (*)(ContentFrame&, const Operation&);

  void Reset();
  void SetRunners(const WalkOptions& options);
  void Run(ContentFrame& frame, const Operation& operation);
  void Enter(const PendingContent& content);
  bool MayEnter(std::uint32_t number);
  ContentEntry EntryOf(const PendingContent& content, Arena& arena);
  void SetState(ContentFrame& frame, const PendingContent& content);
  void Push(std::unique_ptr<ContentFrame> frame, std::string content);
  void Leave();
  bool EnterNextAppearance();

  std::unique_ptr<WalkContext> walk_;
  std::array<Runner, kOperatorGroups> runners_{};
  std::vector<std::unique_ptr<ContentFrame>> frames_;
  Arena root_arena_;
  ResourceScope root_scope_;
  Matrix root_matrix_;
  PageContents contents_;            // of the page
  std::vector<Object> annotations_;  // of the page, whose appearances are still to come
  std::size_t next_annotation_ = 0;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_CONTENTWALKER_H_
