#include "pdf/file/StreamFilters.h"

#include <algorithm>

#include "pdf/Limits.h"

namespace TarnixTools::pdf {

namespace {

FilterParameters ParametersOf(const Object& dictionary, const Resolver& resolve) {
  FilterParameters parameters;
  const auto read = [&](std::string_view key, std::int64_t& value) {
    const Object found = dictionary.Get(key);
    value = (found.IsReference() && resolve ? resolve(found) : found).IntegerOr(value);
  };
  read("Predictor", parameters.predictor);
  read("Colors", parameters.colors);
  read("BitsPerComponent", parameters.bits_per_component);
  read("Columns", parameters.columns);
  read("EarlyChange", parameters.early_change);
  return parameters;
}

}  // namespace

std::vector<FilterStep> FilterStepsOf(const Object& dictionary, const Resolver& resolve) {
  const auto follow = [&](const Object& value) {
    return value.IsReference() && resolve ? resolve(value) : value;
  };
  const auto either = [&](std::string_view name, std::string_view short_name) {
    const Object value = follow(dictionary.Get(name));
    return value.IsNull() ? follow(dictionary.Get(short_name)) : value;
  };
  const Object filter = either("Filter", "F");
  const Object parameters = either("DecodeParms", "DP");
  std::vector<FilterStep> steps;
  const auto add = [&](const Object& name, const Object& dictionary_of_step) {
    steps.push_back(
        {FilterKindOf(follow(name).Text()), ParametersOf(follow(dictionary_of_step), resolve)});
  };
  if (filter.IsName()) {
    add(filter,
        parameters.IsArray() && !parameters.Items().empty() ? parameters.Items()[0] : parameters);
  }
  const auto names = filter.Items();
  constexpr std::size_t kTooMany = static_cast<std::size_t>(limits::kMaxFilters) + 1;
  for (std::size_t i = 0; i < std::min(names.size(), kTooMany); ++i) {
    const auto all = parameters.Items();
    const Object own = i < all.size()                                   ? all[i]
                       : names.size() == 1 && parameters.IsDictionary() ? parameters
                                                                        : Object();
    add(names[i], own);
  }
  return steps;
}

std::string PredictorEntries(const FilterParameters& parameters) {
  const FilterParameters standard;
  std::string text;
  const auto add = [&](std::string_view key, std::int64_t value, std::int64_t without) {
    if (value != without) {
      text += "/" + std::string(key) + " " + std::to_string(value);
    }
  };
  add("Predictor", parameters.predictor, standard.predictor);
  add("Colors", parameters.colors, standard.colors);
  add("BitsPerComponent", parameters.bits_per_component, standard.bits_per_component);
  add("Columns", parameters.columns, standard.columns);
  return text;
}

}  // namespace TarnixTools::pdf
