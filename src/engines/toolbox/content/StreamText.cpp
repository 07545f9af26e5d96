#include "engines/toolbox/content/StreamText.h"

#include "pdf/filters/Filters.h"

namespace TarnixTools::engines::toolbox {

namespace {

constexpr std::size_t kWorthDeflating = 160;
constexpr int kDeflateLevel = 6;
constexpr std::string_view kFilterEntry = "/Filter/FlateDecode";

}  // namespace

std::uint32_t WriteStreamText(pdf::FileWriter& writer, const std::string& entries,
                              std::string_view data) {
  const std::uint32_t number = writer.Reserve();
  std::string dictionary = "<<" + entries;
  std::string deflated;
  if (data.size() >= kWorthDeflating) {
    pdf::DeflateTo(deflated, data, kDeflateLevel);
    if (deflated.size() + kFilterEntry.size() < data.size()) {
      dictionary += kFilterEntry;
      data = deflated;
    }
  }
  writer.BeginStream(number, dictionary, data.size());
  writer.AppendStream(data);
  writer.EndStream();
  return number;
}

}  // namespace TarnixTools::engines::toolbox
