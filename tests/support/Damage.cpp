#include "support/Damage.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <vector>

#include "support/Expected.h"

namespace TarnixTools::testing {
namespace {

// What an outcome has that the first one has not, and the place where that begins.
std::string Difference(const std::string& outcome, const std::string& first) {
  const std::size_t most = std::min(outcome.size(), first.size());
  std::size_t start = 0;
  while (start < most && outcome[start] == first[start]) {
    ++start;
  }
  std::size_t end = 0;
  while (end < most - start && outcome[outcome.size() - 1 - end] == first[first.size() - 1 - end]) {
    ++end;
  }
  return "[" + std::to_string(start) + " for " + std::to_string(first.size() - start - end) + "] " +
         outcome.substr(start, outcome.size() - start - end);
}

// Outcomes with what leads to each, in the order in which they were first met.
class Outcomes {
 public:
  void Add(const std::string& outcome, const std::string& cause) {
    EntryOf(outcome).causes += " " + cause;
  }

  // The byte at a place leads to this, changed in one way or in both.
  void AddPlace(const std::string& outcome, std::size_t place, const char* way) {
    Entry& entry = EntryOf(outcome);
    if (*way != '\0') {
      entry.causes += " " + std::to_string(place) + way;
      entry.next_place = 0;
      return;
    }
    if (entry.next_place == place && place > 0) {
      entry.causes.resize(entry.run_end);
      entry.causes += "-" + std::to_string(place);
    } else {
      entry.causes += " " + std::to_string(place);
      entry.run_end = entry.causes.size();
    }
    entry.next_place = place + 1;
  }

  std::string Text() const {
    std::string text;
    for (const Entry& entry : outcomes_) {
      const std::string& first = outcomes_.front().outcome;
      text += (entry.outcome == first ? first : Difference(entry.outcome, first)) + " <" +
              entry.causes + "\n";
    }
    return text;
  }

 private:
  struct Entry {
    std::string outcome;
    std::string causes;
    std::size_t next_place = 0;  // that would go on a run of places; 0: there is none
    std::size_t run_end = 0;     // where the run's first place ends in the text
  };

  Entry& EntryOf(const std::string& outcome) {
    const auto [found, is_new] = places_.try_emplace(outcome, outcomes_.size());
    if (is_new) {
      outcomes_.push_back({outcome, {}});
    }
    return outcomes_[found->second];
  }

  std::map<std::string, std::size_t> places_;
  std::vector<Entry> outcomes_;
};

void AddChanges(Outcomes& outcomes, const std::string& bytes, const Outcome& outcome,
                std::size_t end) {
  std::string damaged = bytes;
  for (std::size_t i = 0; i < end; ++i) {
    damaged[i] = static_cast<char>(bytes[i] + 1);
    const std::string more = outcome(damaged);
    damaged[i] = static_cast<char>(bytes[i] ^ 0x80);
    const std::string other = outcome(damaged);
    outcomes.AddPlace(more, i, more == other ? "" : "+");
    if (more != other) {
      outcomes.AddPlace(other, i, "~");
    }
    damaged[i] = bytes[i];
  }
}

// Lengths side by side that end alike stand together.
void AddCuts(Outcomes& outcomes, const std::string& bytes, const Outcome& outcome,
             std::size_t end) {
  std::size_t first = 0;
  std::string before = outcome("");
  for (std::size_t size = 1; size <= end; ++size) {
    const std::string next = size < end ? outcome(bytes.substr(0, size)) : "";
    if (size == end || next != before) {
      const std::string last = size - 1 > first ? "-" + std::to_string(size - 1) : "";
      outcomes.Add(before, "cut " + std::to_string(first) + last);
      first = size;
      before = next;
    }
  }
}

}  // namespace

std::string DamageText(const std::string& bytes, const Outcome& outcome, std::size_t end,
                       std::size_t cut_end) {
  Outcomes outcomes;
  outcomes.Add(outcome(bytes), "whole");
  AddChanges(outcomes, bytes, outcome, std::min(end, bytes.size()));
  AddCuts(outcomes, bytes, outcome, std::min(cut_end, bytes.size()));
  return outcomes.Text();
}

std::string DigitsText(const std::string& bytes, const Outcome& outcome, std::size_t end,
                       bool with_names) {
  const std::string sound = outcome(bytes);
  std::string text;
  std::string changed = bytes;
  for (std::size_t start = 0; start < end; start = bytes.find('\n', start) + 1) {
    std::string outcomes;
    int same = 0;
    for (std::size_t at = start; bytes[at] != '\n'; ++at) {
      const bool is_digit = std::isdigit(static_cast<unsigned char>(bytes[at])) != 0;
      if (!is_digit && !(with_names && at > 0 && bytes[at - 1] == '/')) {
        continue;
      }
      changed[at] = bytes[at] == '9' ? '8' : static_cast<char>(bytes[at] + 1);
      const std::string other = outcome(changed);
      changed[at] = bytes[at];
      same += other == sound ? 1 : 0;
      outcomes += other == sound ? "" : other + '\0';
    }
    text += std::to_string(start) + ": " + std::to_string(same) + " same";
    text += outcomes.empty() ? "\n" : ", " + DataText(outcomes) + "\n";
  }
  return text;
}

}  // namespace TarnixTools::testing
