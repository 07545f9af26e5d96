#include "pdf/write/RewriteFixture.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "pdf/Error.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::testing {

using pdf::Document;
using pdf::Object;

namespace {

// Decoded where it can be; else as it is encoded. The first character tells which.
std::string DataOf(Document& document, std::uint32_t number) {
  const auto decoded = document.TryDecodeStream(number);
  if (decoded && decoded->complete) {
    return "d" + decoded->data;
  }
  const auto stream = document.StreamOf(number);
  return "e" + (document.is_encrypted()
                    ? ""
                    : document.reader().ReadBytes(stream->extent.offset, stream->extent.length));
}

// Walks through both documents at once.
class Comparison {
 public:
  Comparison(Document& first, Document& second) : first_(&first), second_(&second) {}

  std::string Run() {
    Add(first_->Catalog(first_arena_), second_->Catalog(second_arena_), "catalog");
    Add(first_->trailer().Get("Info"), second_->trailer().Get("Info"), "info");
    while (!waiting_.empty() && difference_.empty()) {
      const Pair pair = std::move(waiting_.back());
      waiting_.pop_back();
      Compare(pair);
    }
    return difference_;
  }

 private:
  struct Pair {
    Object first;
    Object second;
    std::string place;
  };

  void Add(const Object& first, const Object& second, const std::string& place) {
    if (place.size() < 400) {  // further on it is told shorter
      waiting_.push_back({first, second, place});
    } else {
      waiting_.push_back({first, second, "..." + place.substr(place.size() - 100)});
    }
  }

  void Compare(const Pair& pair) {
    const std::uint32_t first_number = pair.first.AsReference().number;
    const std::uint32_t second_number = pair.second.AsReference().number;
    const Object first = first_->Resolve(pair.first, first_arena_);
    const Object second = second_->Resolve(pair.second, second_arena_);
    if (first_number != 0 && second_number != 0) {
      const auto [known, is_new] = partners_.emplace(first_number, second_number);
      if (!is_new) {
        Expect(known->second == second_number, pair.place + ": another object than before");
        return;
      }
      CompareData(first_number, second_number, pair.place);
    }
    Expect(first.kind() == second.kind(), pair.place + ": another kind");
    if (first.IsArray()) {
      CompareArrays(first, second, pair.place);
    } else if (first.IsDictionary()) {
      const bool are_streams = first_number != 0 && first_->IsStream(first_number);
      CompareDictionaries(first, second, are_streams, pair.place);
    } else {
      std::string first_text;
      std::string second_text;
      pdf::AppendObject(first_text, first);
      pdf::AppendObject(second_text, second);
      Expect(first.IsString() ? first.Text() == second.Text() : first_text == second_text,
             pair.place + ": " + first_text + " became " + second_text);
    }
  }

  void CompareData(std::uint32_t first, std::uint32_t second, const std::string& place) {
    Expect(first_->IsStream(first) == second_->IsStream(second), place + ": a stream in one only");
    if (first_->IsStream(first)) {
      Expect(DataOf(*first_, first) == DataOf(*second_, second), place + ": other data");
    }
  }

  void CompareArrays(const Object& first, const Object& second, const std::string& place) {
    Expect(first.Items().size() == second.Items().size(), place + ": another length");
    for (std::size_t i = 0; i < first.Items().size() && difference_.empty(); ++i) {
      Add(first.Items()[i], second.Items()[i], place + "[" + std::to_string(i) + "]");
    }
  }

  void CompareDictionaries(const Object& first, const Object& second, bool are_streams,
                           const std::string& place) {
    std::map<std::string, std::pair<Object, Object>> entries;
    for (const pdf::DictionaryEntry& entry : first.Entries()) {
      entries[std::string(entry.Key())].first = entry.value;
    }
    for (const pdf::DictionaryEntry& entry : second.Entries()) {
      entries[std::string(entry.Key())].second = entry.value;
    }
    for (const auto& [key, values] : entries) {
      if (!are_streams || (key != "Length" && key != "Filter" && key != "DecodeParms")) {
        Add(values.first, values.second, place + "/" + key);
      }
    }
  }

  void Expect(bool holds, const std::string& otherwise) {
    if (!holds && difference_.empty()) {
      difference_ = otherwise;
    }
  }

  Document* first_;
  Document* second_;
  pdf::Arena first_arena_;
  pdf::Arena second_arena_;
  std::vector<Pair> waiting_;
  std::map<std::uint32_t, std::uint32_t> partners_;
  std::string difference_;
};

}  // namespace

std::unique_ptr<Document> OpenBytes(const std::string& bytes, const std::string& password) {
  return Document::Open(std::make_unique<pdf::MemorySource>(bytes), password);
}

std::string Expanded(Document& document, const Object& value, int depth) {
  std::string text;
  pdf::SerializeHooks hooks;
  hooks.reference = [&](std::string& out, pdf::Reference reference) {
    if (depth == 0) {
      out += "...";
      return;
    }
    pdf::Arena arena;
    pdf::AppendToken(out, Expanded(document, document.Load(reference, arena), depth - 1));
    if (document.IsStream(reference.number)) {
      out += "(" + DataOf(document, reference.number).substr(1) + ")";
    }
  };
  pdf::AppendObject(text, value, hooks);
  return text;
}

std::string RewrittenBytes(Document& document, const pdf::RewriteOptions& options) {
  pdf::StringSink sink;
  pdf::DocumentRewriter(document).Write(sink, options);
  return sink.Take();
}

std::string DifferenceOf(Document& first, Document& second) {
  return Comparison(first, second).Run();
}

Document& RewriteCase::Write(const pdf::RewriteOptions& options, const std::string& password) {
  pdf::StringSink sink;
  rewriter_.Write(sink, options);
  written_.reset();
  bytes_ = sink.Take();
  written_ = OpenBytes(bytes_, password);
  return *written_;
}

std::string RewriteCase::Own() {
  Document& written = written_ != nullptr ? *written_ : Write();
  pdf::Arena arena;
  const Object own = written.Catalog(arena).Get("Own");
  return Expanded(written, own);
}

int RewriteCase::CountObjects() {
  Document& written = written_ != nullptr ? *written_ : Write();
  int count = 0;
  for (std::uint32_t number = 1; number < written.object_limit(); ++number) {
    pdf::Arena arena;
    const Object type = written.Load({number, 0}, arena).Get("Type");
    count += written.Exists(number) && !type.IsName("ObjStm") && !type.IsName("XRef") ? 1 : 0;
  }
  return count;
}

}  // namespace TarnixTools::testing
