#include "pdf/file/EncryptionDictionary.h"

#include "pdf/Error.h"

namespace TarnixTools::pdf {

namespace {

CryptMethod MethodOf(const Object& name) {
  if (name.IsName("V2")) {
    return CryptMethod::kRc4;
  }
  if (name.IsName("AESV2")) {
    return CryptMethod::kAes128;
  }
  if (name.IsName("AESV3")) {
    return CryptMethod::kAes256;
  }
  if (name.IsName("None") || name.IsNull()) {
    return CryptMethod::kIdentity;
  }
  throw Error(ErrorCode::kUnsupportedSecurity, "unknown crypt filter method");
}

}  // namespace

EncryptionDictionary ReadEncryptionDictionary(const Object& dictionary, std::string_view file_id,
                                              const Resolver& resolve) {
  const auto get = [&](const Object& holder, std::string_view key) {
    const Object value = holder.Get(key);
    return value.IsReference() ? resolve(value) : value;
  };
  EncryptionDictionary result;
  EncryptionFacts& facts = result.facts;
  facts.filter = get(dictionary, "Filter").Text();
  facts.version = static_cast<int>(get(dictionary, "V").IntegerOr(0));
  facts.revision = static_cast<int>(get(dictionary, "R").IntegerOr(0));
  facts.key_bits =
      static_cast<int>(get(dictionary, "Length").IntegerOr(facts.version >= 4 ? 128 : 40));
  facts.owner = get(dictionary, "O").Text();
  facts.user = get(dictionary, "U").Text();
  facts.owner_key = get(dictionary, "OE").Text();
  facts.user_key = get(dictionary, "UE").Text();
  facts.perms = get(dictionary, "Perms").Text();
  facts.permissions = static_cast<std::int32_t>(get(dictionary, "P").IntegerOr(0));
  facts.encrypt_metadata = get(dictionary, "EncryptMetadata").BooleanOr(true);
  facts.file_id = file_id;
  result.crypt_filters["Identity"] = CryptMethod::kIdentity;
  if (facts.version < 4) {
    return result;
  }
  const Object filters = get(dictionary, "CF");
  for (const DictionaryEntry& entry : filters.Entries()) {
    const Object filter = entry.value.IsReference() ? resolve(entry.value) : entry.value;
    result.crypt_filters.insert_or_assign(std::string(entry.Key()), MethodOf(get(filter, "CFM")));
    if (facts.version == 4 && filter.Has("Length") && !dictionary.Has("Length")) {
      facts.key_bits = static_cast<int>(get(filter, "Length").IntegerOr(128));
    }
  }
  const auto method = [&](std::string_view key, CryptMethod fallback) {
    const Object name = get(dictionary, key);
    if (!name.IsName()) {
      return fallback;
    }
    const auto found = result.crypt_filters.find(name.Text());
    if (found == result.crypt_filters.end()) {
      throw Error(ErrorCode::kUnsupportedSecurity, "a crypt filter that is not defined");
    }
    return found->second;
  };
  facts.stream_method = method("StmF", CryptMethod::kIdentity);
  facts.string_method = method("StrF", CryptMethod::kIdentity);
  facts.embedded_file_method = method("EFF", facts.stream_method);
  return result;
}

}  // namespace TarnixTools::pdf
