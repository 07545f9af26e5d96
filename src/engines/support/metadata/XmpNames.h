// Names of the namespaces in XMP packets (ISO 16684-1, clause 8; ISO 19005).
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPNAMES_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPNAMES_H_

#include <string_view>

namespace TarnixTools::engines {

inline constexpr std::string_view kRdfNamespace = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";
inline constexpr std::string_view kDcNamespace = "http://purl.org/dc/elements/1.1/";
inline constexpr std::string_view kXmpNamespace = "http://ns.adobe.com/xap/1.0/";
inline constexpr std::string_view kPdfNamespace = "http://ns.adobe.com/pdf/1.3/";
inline constexpr std::string_view kPdfAIdNamespace = "http://www.aiim.org/pdfa/ns/id/";
inline constexpr std::string_view kPdfAExtensionNamespace =
    "http://www.aiim.org/pdfa/ns/extension/";
inline constexpr std::string_view kPdfASchemaNamespace = "http://www.aiim.org/pdfa/ns/schema#";
inline constexpr std::string_view kPdfAPropertyNamespace = "http://www.aiim.org/pdfa/ns/property#";
inline constexpr std::string_view kPdfATypeNamespace = "http://www.aiim.org/pdfa/ns/type#";
inline constexpr std::string_view kPdfAFieldNamespace = "http://www.aiim.org/pdfa/ns/field#";

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPNAMES_H_
