#include "engines/optimizer/fonts/FontPlan.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engines/optimizer/fonts/SamePrograms.h"
#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::optimizer {

using fonts::DocumentFont;
using fonts::FontDescriptor;
using fonts::ProgramEntry;
using pdf::Arena;
using pdf::Document;
using pdf::Object;

namespace {

struct Program {
  FontJob job;
  bool is_whole = false;
  bool has_lists = false;           // of its glyphs
  bool is_listed_in_place = false;  // in a descriptor that is no object of its own
};

using Programs = std::map<std::uint32_t, Program>;

std::string_view SubtypeOf(const Program& program) {
  return program.job.uses.front().font->descriptor().program_subtype;
}

void AddUse(Program& program, const FontUse::Font& font) {
  const FontDescriptor& descriptor = font.font->descriptor();
  const bool is_other =
      program.job.entry != ProgramEntry::kNone && program.job.entry != descriptor.entry;
  program.job.entry = descriptor.entry;
  program.is_whole =
      program.is_whole || is_other || font.is_whole || !font.font->is_encoding_known();
  program.has_lists = program.has_lists || descriptor.lists_glyphs;
  program.is_listed_in_place =
      program.is_listed_in_place || (descriptor.lists_glyphs && descriptor.number == 0);
  program.job.uses.push_back({font.font, font.codes.Codes()});
}

// By the numbers that they will have in the end.
Programs CollectPrograms(const FontUse& use, pdf::DocumentRewriter& rewriter) {
  Programs programs;
  for (const auto& [number, font] : use.fonts()) {
    const std::uint32_t written = rewriter.Successor(font.font->descriptor().program);
    if (written == 0 || rewriter.IsChanged(written)) {
      continue;
    }
    Program& program = programs[written];
    program.job.program = written;
    AddUse(program, font);
    program.is_whole = program.is_whole || use.IsWholeProgram(font.font->descriptor().program);
  }
  return programs;
}

bool IsEmbeddedAlike(const Program& a, const Program& b) {
  return a.job.entry == b.job.entry && SubtypeOf(a) == SubtypeOf(b);
}

void Join(const Program& twin, Program& kept) {
  kept.job.twins.push_back(twin.job.program);
  kept.job.uses.insert(kept.job.uses.end(), twin.job.uses.begin(), twin.job.uses.end());
  kept.has_lists = kept.has_lists || twin.has_lists;
  kept.is_listed_in_place = kept.is_listed_in_place || twin.is_listed_in_place;
}

// Programs with the same bytes become one. Where one of them is kept whole, or embedded in another
// way, all are kept whole.
void JoinTwins(Document& document, Programs& programs) {
  std::vector<std::uint32_t> numbers;
  for (const auto& [number, program] : programs) {
    numbers.push_back(number);
  }
  const auto same = FindSamePrograms(document, numbers);
  for (const auto& [number, first] : same) {
    const Program& twin = programs[number];
    Program& kept = programs[first];
    kept.is_whole = kept.is_whole || twin.is_whole || !IsEmbeddedAlike(twin, kept);
  }
  for (const auto& [number, first] : same) {
    Program& twin = programs[number];
    Program& kept = programs[first];
    twin.is_whole = kept.is_whole;
    if (!kept.is_whole) {
      Join(twin, kept);
      programs.erase(number);
    }
  }
}

std::uint64_t LengthOf(Document& document, std::uint32_t number) {
  const auto stream = document.StreamOf(number);
  return stream ? document.PlainLength(*stream) : 0;
}

void CountLeft(FontReport& report, FontLeftAlone why, std::uint64_t bytes) {
  ++report.left_alone[static_cast<std::size_t>(why)];
  report.bytes_after += bytes;
}

std::optional<FontLeftAlone> WhyLeft(const Program& program, const FontOptions& options) {
  if (program.job.encoded_bytes == 0) {
    return FontLeftAlone::kUnreadable;
  }
  if (program.is_whole) {
    return FontLeftAlone::kAnyCode;
  }
  const bool is_wanted = options.keeps_glyph_lists && program.has_lists;
  return is_wanted || program.is_listed_in_place ? std::optional(FontLeftAlone::kConformance)
                                                 : std::nullopt;
}

// The dictionary without what tells of the data as it was.
std::string DictionaryFor(const Object& dictionary, const FontJob& job, const CutProgram& cut) {
  constexpr std::array<std::string_view, 10> kOfData = {
      "Length",  "Filter",  "DecodeParms", "DL",      "F",
      "FFilter", "Length1", "Length2",     "Length3", "FDecodeParms"};
  std::string text = "<<";
  pdf::AppendEntries(text, dictionary, kOfData);
  const auto length = [&](std::string_view key, std::uint64_t bytes) {
    pdf::AppendName(text, key);
    pdf::AppendInteger(text, static_cast<std::int64_t>(bytes));
  };
  if (job.entry == ProgramEntry::kFontFile2) {
    length("Length1", cut.byte_count);
  } else if (job.entry == ProgramEntry::kFontFile) {
    length("Length1", cut.clear_bytes);
    length("Length2", cut.encrypted_bytes);
    length("Length3", cut.byte_count - cut.clear_bytes - cut.encrypted_bytes);
  }
  return text + "/Filter/FlateDecode>>";
}

}  // namespace

std::vector<FontJob> PlanFonts(Document& document, const FontUse& use,
                               pdf::DocumentRewriter& rewriter, const FontOptions& options,
                               FontReport& report) {
  Programs programs = CollectPrograms(use, rewriter);
  JoinTwins(document, programs);
  std::vector<FontJob> jobs;
  for (auto& [number, program] : programs) {
    const std::uint64_t bytes = LengthOf(document, number);
    program.job.encoded_bytes = bytes;
    program.job.drops_hints = options.drops_hints;
    report.programs += 1 + program.job.twins.size();
    report.bytes_before += bytes;
    for (const std::uint32_t twin : program.job.twins) {
      report.bytes_before += LengthOf(document, twin);
    }
    if (const auto why = WhyLeft(program, options)) {
      CountLeft(report, *why, bytes);
    } else {
      jobs.push_back(std::move(program.job));
    }
  }
  return jobs;
}

void ApplyCut(pdf::DocumentRewriter& rewriter, Document& document, const FontJob& job,
              const CutResult& result, FontReport& report) {
  for (const std::uint32_t twin : job.twins) {
    rewriter.Merge(twin, job.program);
    ++report.merged;
  }
  if (!result.cut) {
    CountLeft(report, result.left_alone, job.encoded_bytes);
    return;
  }
  Arena arena;
  const Object dictionary = document.Load({job.program, document.GenerationOf(job.program)}, arena);
  rewriter.Change(job.program, pdf::ObjectChange::Stream(
                                   DictionaryFor(dictionary, job, *result.cut), result.cut->data));
  report.bytes_after += result.cut->data.size();
  for (const FontJob::Use& use : job.uses) {
    const FontDescriptor& descriptor = use.font->descriptor();
    if (descriptor.lists_glyphs) {
      rewriter.RemoveEntry(rewriter.Successor(descriptor.number), "CIDSet");
      rewriter.RemoveEntry(rewriter.Successor(descriptor.number), "CharSet");
    }
  }
}

}  // namespace TarnixTools::engines::optimizer
