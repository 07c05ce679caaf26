#include "BrimloCore/Support/Glob.h"

#include "BrimloCoreTests/Support/Words.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

namespace Brimlo {
namespace {

using namespace std::string_literals;
using Testing::words;

using GlobTest = Testing::TempHome;

TEST_F(GlobTest, FindsWhatAPatternNames) {
    for (const std::string& file : words("d/a.log d/b.log d/.hidden d/sub/c.log d/[x] d/a[b ~/x")) {
        write(file);
    }
    link("d/dangling", "missing");
    link("d/folder", "sub");
    const std::pair<std::string, const char*> cases[] = {
        {"~/d/*",          "d/[x] d/a.log d/a[b d/b.log d/dangling d/folder d/sub"},
        {"~/d/.h*",        "d/.hidden"                                            },
        {"~/d/**/c.log",   "d/folder/c.log d/sub/c.log"                           },
        {"~/d/[!a].log",   "d/b.log"                                              },
        {"~/d/[[]x]",      "d/[x]"                                                },
        {"~/d/a[b",        "d/a[b"                                                },
        {"~/d/dangling",   "d/dangling"                                           },
        {"~/d/dangling/x", ""                                                     },
        {"~/\\d/a.l*",     "d/a.log"                                              },
        {"~/d/\\a\\[b",    "d/a[b"                                                },
        {"~/d/*/",         "d/folder d/sub"                                       },
        {"~/d/sub/.*/*",   ""                                                     },
        {"~/d/sub/../*",   ""                                                     },
        {"~/d/sub/\\../*", ""                                                     },
        {"~root/d",        ""                                                     },
        {"~/~/x",          "~/x"                                                  },
        {"",               ""                                                     },
        {"~/d\0/x"s,       ""                                                     },
        {"~/d/*\0"s,       ""                                                     },
    };
    for (const auto& [pattern, names] : cases) {
        std::vector<std::string> expected;
        for (const std::string& name : words(names)) {
            expected.push_back(at(name));
        }
        // The order is the directory's.
        EXPECT_THAT(Glob::expand(pattern), testing::UnorderedElementsAreArray(expected)) << pattern;
    }
    EXPECT_EQ(Glob::expand("~"), std::vector{home()});
    // The home's own text is literal, written out, too.
    const std::string file = write("a [b]*/d/x");
    setenv("HOME", at("a [b]*").c_str(), 1);
    for (const std::string& pattern : {"~/d/?"s, at("a [b]*/d/x"), at("a [b]*/?/x")}) {
        EXPECT_EQ(Glob::expand(pattern), std::vector{file}) << pattern;
    }
}

TEST_F(GlobTest, MatchesANameAsAWhole) {
    const std::string yes = R"(a/b=a*b a/b=a?b .hidden=* a*=a\* a=[a-c] d=[!a-c] [=[)";
    const std::string no = R"(com.x=COM.* ab=a ab=a\* a=[!a])";
    for (const std::string& pair : words(yes + " " + no)) {
        const std::size_t equals = pair.find('=');
        EXPECT_EQ(
            Glob::matches(pair.substr(0, equals), pair.substr(equals + 1)), yes.contains(pair))
            << pair;
    }
}

}  // namespace
}  // namespace Brimlo
