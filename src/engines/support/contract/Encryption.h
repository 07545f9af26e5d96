// What the passwords that a contract takes mean.
#ifndef TARNIX_ENGINES_SUPPORT_CONTRACT_ENCRYPTION_H_
#define TARNIX_ENGINES_SUPPORT_CONTRACT_ENCRYPTION_H_

#include <cstdint>
#include <optional>
#include <string>

#include "pdf/crypt/Security.h"

namespace TarnixTools::engines {

// Encryption for a document to be written; none when both passwords are empty. permissions: /P (ISO
// 32000-2, table 22). Throws as pdf::Security::Create does.
std::optional<pdf::Security> EncryptionWith(const std::wstring& user_password,
                                            const std::wstring& owner_password,
                                            std::uint32_t permissions);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTRACT_ENCRYPTION_H_
