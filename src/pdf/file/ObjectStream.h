// An object stream's text and the places of its objects (ISO 32000-2, 7.5.7).
#ifndef TARNIX_PDF_FILE_OBJECTSTREAM_H_
#define TARNIX_PDF_FILE_OBJECTSTREAM_H_

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TarnixTools::pdf {

class ObjectStream {
 public:
  struct Member {
    std::uint32_t number;
    std::uint32_t offset;  // in text
  };

  // `text` is the decoded stream; first and count are what its dictionary says and may be wrong.
  ObjectStream(std::string text, std::int64_t first, std::int64_t count);

  const std::vector<Member>& members() const { return members_; }

  // The object's text; more may follow it. `index` is where the cross-reference says it is.
  std::optional<std::string_view> Find(std::uint32_t number, std::uint32_t index) const;

  std::size_t size() const { return text_.size(); }

 private:
  std::string text_;
  std::vector<Member> members_;
};

// Decoded object streams, the latest used ones.
class ObjectStreamCache {
 public:
  // Null when not there.
  std::shared_ptr<const ObjectStream> Find(std::uint32_t number);
  void Put(std::uint32_t number, std::shared_ptr<const ObjectStream> stream);
  void Clear();

 private:
  static constexpr std::size_t kMaxBytes = std::size_t{4} << 20;

  struct Kept {
    std::uint32_t number;
    std::shared_ptr<const ObjectStream> stream;
  };

  std::list<Kept> kept_;  // latest used first
  std::unordered_map<std::uint32_t, std::list<Kept>::iterator> places_;
  std::size_t bytes_ = 0;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_OBJECTSTREAM_H_
