#include "BrimloCore/SuggestionEngine/ArtifactMatcher.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

using Texts = std::vector<std::string>;

TEST(ArtifactMatcherTest, KnowsFoldersByNameNeighboursAndExceptions) {
    const std::vector<ArtifactPattern> patterns{
        {.id = "star",                     .names = {"out*"}, .excludes = {"*.keep", "[!o]*"}},
        {.id = "literal", .names = {"out?", "out", "out"}},
        {.id = "suffix",                  .suffixes = {"put", ""}, .markers = {"never"}},
        {.id = "both",                                .names = {"out"}, .suffixes = {"out", "t"}},
        {.id = "marked",.names = {"out"}, .markers = {"a.*", "B"}},
        {.id = "escaped",                                .names = {"out"}, .markers = {"\\*"}},
        {.id = "nothing"},
    };
    const ArtifactMatcher matcher{patterns};
    const struct {
        std::string name;
        std::vector<std::string_view> siblings;
        Texts ids;
    } cases[] = {
        {"out",      {},                 {"star", "literal", "both"}                     },
        {"out",      {"out", "a.b"},     {"star", "literal", "both", "marked"}           },
        {"out",      {"b", "a", ".a.b"}, {"star", "literal", "both"}                     },
        {"out",      {"B", "*"},         {"star", "literal", "both", "marked", "escaped"}},
        {"out?",     {},                 {"star", "literal"}                             },
        {"out1",     {},                 {"star"}                                        },
        {"out.keep", {},                 {}                                              },
        {"out*",     {},                 {"star"}                                        },
        {"t",        {},                 {"both"}                                        },
        {"output",   {"never"},          {"star", "suffix", "both"}                      },
        {"Out",      {},                 {"both"}                                        },
        {"",         {},                 {}                                              },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name + " among " + std::to_string(c.siblings.size()));
        Texts ids;
        for (const ArtifactPattern* pattern : matcher.matches(c.name, c.siblings)) {
            ids.push_back(pattern->id);
        }
        EXPECT_EQ(ids, c.ids);
    }
}

}  // namespace
}  // namespace Brimlo
