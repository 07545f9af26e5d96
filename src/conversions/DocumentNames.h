// Paths for the documents of single images: as the images' names suggest them, but no document
// takes another's place.
#ifndef TARNIX_CONVERSIONS_DOCUMENTNAMES_H_
#define TARNIX_CONVERSIONS_DOCUMENTNAMES_H_

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace TarnixTools {

// The names of the documents that one run over the images makes.
class DocumentNames {
 public:
  // spares_files: files that are there already are not replaced, unless they were allowed.
  explicit DocumentNames(bool spares_files) : spares_files_(spares_files) {}

  void AllowReplacing(const std::string& path) { replaceable_.insert(path); }

  // The wanted path, or one with a number in front of its ".pdf" ("a-2.pdf"). An image that comes
  // again gets the path that it had.
  std::string Take(const std::string& wanted, const std::string& image);

 private:
  struct Use {
    std::string image;
    int last_number = 1;
  };

  bool IsFree(const std::string& path) const;

  bool spares_files_;
  std::unordered_set<std::string> replaceable_;
  std::unordered_map<std::string, Use> uses_;  // by path
};

}  // namespace TarnixTools

#endif  // TARNIX_CONVERSIONS_DOCUMENTNAMES_H_
