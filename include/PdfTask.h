// What every job has: input documents, an output directory, a password for the output.
//
// A task class of one job derives from PdfTask, adds its options, and defines its own Execute:
//
//   PdfMergeTask task;
//   task.AddPdfDoc(first);
//   task.AddPdfDoc(second);
//   task.SetOutputPath("/data/out");
//   task.Execute();
//
// A task may be executed more than once; it keeps its documents and options. What Execute throws
// (PdfException) leaves them as they were, but for an output path that was filled in. A task is
// used by one thread at a time.
#ifndef TARNIX_PDF_TASK_H_
#define TARNIX_PDF_TASK_H_

#include <cstdint>
#include <functional>
#include <list>
#include <string>
#include <vector>

#include "PdfDoc.h"
#include "PdfReport.h"
#include "TarnixExport.h"

namespace TarnixTools {

// How far a job is; true as long as it is to go on, false to have it stop.
//   job  - the job's name in English: "merge", "split", "rotate", "remove pages", "compress", "number",
//          "stamp text", "stamp image", "transform", "metadata", "protect", "unlock", "PDF/A", "repair",
//          "images to PDF", "pages to images", "extract images", "office"
//   done - of its steps, which are pages, pieces, images or documents, or hundredths of the whole where one
//          document is compressed, repaired or made PDF/A; never less than told before within one part of
//          the work
//   of   - how many there are; 0 as long as that is not known
using PdfProgress = std::function<bool(const std::string& job, std::int64_t done, std::int64_t of)>;

// A value class without virtual members: call Execute on the job's own type.
class TARNIX_EXPORT PdfTask {
 public:
  // Without documents and without an output path.
  PdfTask();

  // The task owns copies of the documents, in their order: later changes to the host's do not reach
  // it. No document is opened here. An output path is stored as SetOutputPath does.
  explicit PdfTask(const PdfDoc& document);
  PdfTask(const PdfDoc& document, const std::string& output_path);
  explicit PdfTask(const std::list<PdfDoc>& documents);
  PdfTask(const std::list<PdfDoc>& documents, const std::string& output_path);

  // A copy has documents, options and report of its own. Moving leaves the source without
  // documents, path and password.
  PdfTask(const PdfTask& other);
  PdfTask(PdfTask&& other) noexcept;
  PdfTask& operator=(const PdfTask& other);
  PdfTask& operator=(PdfTask&& other) noexcept;
  ~PdfTask();

  // Appends a copy. Neither duplicates nor missing files are looked for, nor whether the job takes
  // that many documents: Execute does that.
  void AddPdfDoc(const PdfDoc& document);

  // The task then holds no document; options and output path stay.
  void ClearPdfDocs();

  // The task then holds copies of these documents, which may be its own list.
  void SetPdfDocs(const std::list<PdfDoc>& documents);

  // The task's own list, which the host may change.
  std::list<PdfDoc>& GetPdfDocs() { return documents_; }

  // How many documents the task holds.
  int GetPdfDocsNum() const;

  // The output directory: UTF-8, slashes become backslashes, and one is put at its end when there
  // is none. An empty path is therefore stored as a single backslash, the root; a task for which
  // this was never called writes beside its first document or, where its class says so, to the
  // current directory. Whether the directory exists is not looked at here, and none is ever made.
  void SetOutputPath(const std::string& path);

  // The output directory with a separator at its end; empty when none was set, until an Execute
  // fills it in. The task's own text: what a host puts into it directly is taken as it stands.
  std::string& GetOutputPath() { return output_path_; }

  // The password to put on what is written, UTF-8; empty, as at first, for none. It opens the
  // output and allows everything. The passwords of the documents are their own,
  // PdfDoc::SetPassword.
  void SetOutPassword(const std::string& password);

  // As it was set. The task's own text, kept in memory as it is.
  std::string& GetOutPassword() { return out_password_; }

  // Whether the output of a job on a single document keeps what that says of itself, as
  // PdfDoc::SetKeepMetadata tells; false at first. A merge has nothing to keep.
  void SetKeepMetadata(bool keep);

  bool GetKeepMetadata() const { return keep_metadata_; }

  // What the last Execute of the job kept, renamed and dropped beside the pages. Empty after a
  // failed one, unless the job's class says otherwise, and before the first. Valid until the next Execute.
  const PdfReport& GetReport() const { return report_; }

  // The files that the last Execute of the job has written under their names, as full paths and in order;
  // after a failed one, those that were complete by then. Files that the job has deleted again are
  // not among them. Valid until the next Execute.
  const std::vector<std::string>& GetWrittenFiles() const { return written_files_; }

  // Has the host told how far Execute is, several times a second where that can be; empty, as at
  // first, for not at all. It is called on the thread that called Execute, while that works, and may
  // use other tasks and documents; what it does with them is no part of this job. To execute this task
  // once more fails with InternalError as long as it works. When it answers that the job is to stop,
  // Execute throws InternalError ("Cancelled by the host") as soon as it can, and what it throws itself
  // leaves Execute. An output that was not complete by then does not appear, one that was stays; a job
  // that had nothing left to do comes to its end all the same.
  //
  //   task.SetProgress([&](const std::string& job, std::int64_t done, std::int64_t of) {
  //     window.Show(job, done, of);       // on this thread: nothing to be locked
  //     return !window.IsCancelPressed();
  //   });
  void SetProgress(PdfProgress progress);

  // Does nothing: every job has its own, which hides this one. Not virtual, so that a job called
  // through a reference to PdfTask is not executed.
  void Execute();

 protected:
  // Does what an Execute does, with the job watched by the host. Report and written files begin anew.
  //   name - of the job, as PdfProgress has it
  void RunJob(const char* name, const std::function<void()>& work);

  // An output path that is still empty becomes the first document's directory, for this run and
  // later ones. There must be a document.
  void FillOutputPath();

  // The first of the documents, as the job works on it.
  PdfDoc InputDocument() const;

  std::list<PdfDoc> documents_;
  std::string output_path_;  // empty, or ends in a backslash
  std::string out_password_;
  bool keep_metadata_ = false;
  PdfReport report_;
  std::vector<std::string> written_files_;
  PdfProgress progress_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_TASK_H_
