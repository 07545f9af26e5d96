#include "engines/support/contract/Encryption.h"

#include "foundation/Utf8.h"

namespace TarnixTools::engines {

std::optional<pdf::Security> EncryptionWith(const std::wstring& user_password,
                                            const std::wstring& owner_password,
                                            std::uint32_t permissions) {
  if (user_password.empty() && owner_password.empty()) {
    return std::nullopt;
  }
  return pdf::Security::Create(WideToUtf8(user_password), WideToUtf8(owner_password),
                               static_cast<std::int32_t>(permissions));
}

}  // namespace TarnixTools::engines
