#include "BrimloCore/Platform/Fmt.h"

#include <limits>
#include <utility>

namespace Brimlo {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

TEST(FmtTest, Bytes) {
    const std::pair<std::int64_t, const char*> cases[] = {
        {0,                  "0 bytes" },
        {1,                  "1 byte"  },
        {1000,               "1 KB"    },
        {999'500,            "1 MB"    },
        {999'999,            "1 MB"    },
        {999'950'000,        "1 GB"    },
        {1'005'000'000,      "1.01 GB" },
        {-1'100'000'000'000, "-1.1 TB" },
        {kMost,              "9.22 EB" },
        {-kMost - 1,         "-9.22 EB"},
    };
    for (const auto& [count, text] : cases) {
        EXPECT_EQ(Fmt::bytes(count), text);
    }
}

TEST(FmtTest, Days) {
    const std::pair<std::int64_t, const char*> cases[] = {
        {-kMost - 1, "today"               },
        {0,          "today"               },
        {1,          "1d"                  },
        {30,         "1mo"                 },
        {365,        "1.0y"                },
        {547,        "1.5y"                },
        {kMost,      "25269512429739112.0y"},
    };
    for (const auto& [count, text] : cases) {
        EXPECT_EQ(Fmt::days(count), text);
    }
}

}  // namespace
}  // namespace Brimlo
