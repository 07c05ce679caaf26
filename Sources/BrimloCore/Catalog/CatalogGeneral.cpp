#include "BrimloCore/Catalog/CatalogGeneral.h"

namespace Brimlo::CatalogGeneral {

const std::vector<CleanupRule>& all() {
    static const std::vector<CleanupRule> kRules{
        {
         .id = "general.app-caches",
         .name = "Other app caches",
         .group = "macOS",
         .personas = {Persona::general},
         .risk = Risk::safe,
         .paths = {"~/Library/Caches"},
         .regenerates =
                "Apps rebuild their caches on demand. Apple-owned caches are left alone.", .contentsOnly = true,
         .excludes = {"com.apple.*", "CloudKit", "Metadata", "GeoServices", "*.plist"},
         .isCatchAll = true,
         .confidence = Confidence::unverified,
         },
    };
    return kRules;
}

}  // namespace Brimlo::CatalogGeneral
