// Jobs that are given several inputs and do each on its own: one that fails does not stop the
// others. A single input that fails is a failure of the job.
//
//   JobResult Repair(JobContext& context) {
//     return WriteEach(context, OutputName, RepairOne);
//   }
#ifndef TARNIX_CLI_EACH_INPUT_H_
#define TARNIX_CLI_EACH_INPUT_H_

#include <functional>
#include <string>
#include <vector>

#include "Job.h"
#include "OptionTable.h"
#include "PdfDoc.h"
#include "PdfReport.h"

namespace TarnixTools::cli {

class JobContext;

// The name of the output that a job makes of a document.
using OutputNamer = std::string (*)(const OptionValues& options, const PdfDoc& document);

// What a job makes of one document. The directory of the output is the job's business.
using DocumentJob = JobResult (*)(JobContext& context, PdfDoc document);

// What a job tells of one input: an object with the path. It may add to the text and set the exit
// status.
using InputTeller = std::function<Json(const std::string& input, JobResult& result)>;

// A job that writes one file for each input. The fields of several results are objects of "files", beside
// "input" and "output". Throws UsageError when two outputs would have one name.
JobResult WriteEach(JobContext& context, OutputNamer name, DocumentJob run);

// A job that tells of each input in "files" and writes nothing: of an input that fails it tells the
// error there.
JobResult TellOfEach(const JobContext& context, const InputTeller& tell);

// A line for everything that somebody may have counted on and that is not there any more.
std::vector<std::string> WarningsOf(const PdfReport& report, bool loses_protection);

// The lines of that which tell what damage took of the inputs; nothing where nothing is lost.
std::vector<std::string> LossesOf(const PdfReport& report);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_EACH_INPUT_H_
