// The manual page, made from the job table.
#ifndef TARNIX_CLI_MAN_PAGE_H_
#define TARNIX_CLI_MAN_PAGE_H_

#include <string>

namespace TarnixTools::cli {

// tarnix(1) in roff with the man macros.
std::string ManPage();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_MAN_PAGE_H_
