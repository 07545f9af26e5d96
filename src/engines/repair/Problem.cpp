#include "engines/repair/Problem.h"

#include <cctype>

namespace TarnixTools::engines::repair {

namespace {

const char* TextOf(Outcome outcome, Tense tense) {
  switch (outcome) {
    case Outcome::kFixed:
      return tense == Tense::kDone ? "fixed" : "can be fixed";
    case Outcome::kWorkedAround:
      return tense == Tense::kDone ? "worked around" : "can be worked around";
    case Outcome::kLost:
      return "lost";
  }
  return "";
}

std::string PlaceOf(const Problem& problem) {
  std::string place;
  if (problem.page != 0) {
    place += "page " + std::to_string(problem.page) + ": ";
  }
  if (problem.object != 0) {
    place += "object " + std::to_string(problem.object) + ": ";
  } else if (problem.offset) {
    place += "byte " + std::to_string(*problem.offset) + ": ";
  }
  return place;
}

}  // namespace

std::string MessageOf(const Problem& problem, Tense tense) {
  std::string message = PlaceOf(problem) + KindOf(problem.code).sentence;
  message.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(message.front())));
  if (!problem.detail.empty()) {
    message += " (" + problem.detail + ")";
  }
  return message + "; " + TextOf(problem.outcome, tense);
}

}  // namespace TarnixTools::engines::repair
