#include "BrimloCore/Support/Text.h"

#include "BrimloCore/Support/Dates.h"
#include "BrimloCoreTests/Support/Words.h"

#include <chrono>
#include <utility>

namespace Brimlo {
namespace {

using namespace std::string_literals;
using Testing::words;

TEST(TextTest, CountsWhatAReaderTakesForOneCharacter) {
    const std::string kOnes = "e\u0301 \u00E9 👨‍👩‍👧‍👦 👍🏽 🇩🇪 한 \xFF";
    for (const std::string& text : words(kOnes)) {
        EXPECT_EQ(Text::characterCount(text), 1U) << text;
        EXPECT_EQ(Text::characters(text), std::vector<std::string_view>{text});
        EXPECT_EQ(Text::characterCount("a" + text + "z\r\n"), 4U) << text;
    }
    EXPECT_EQ(Text::characterCount(""), 0U);
    EXPECT_EQ(Text::characterCount("\n\r\r\n\0"s), 4U);
}

TEST(TextTest, ShowsNothingButText) {
    const std::pair<std::string, std::string> cases[] = {
        {"a b é 😀",              "a b é 😀"                            },
        {"a\nb\t\x1B[31m\x7F\0"s, "a\uFFFDb\uFFFD\uFFFD[31m\uFFFD\uFFFD"},
        {"a\xFFz",                "a\uFFFDz"                            },
        {"\xC3",                  "\uFFFD"                              },
    };
    for (const auto& [text, shown] : cases) {
        EXPECT_EQ(Text::printable(text), shown);
    }
    for (const std::string& bad : words("\xFF \xC3 \xC0\xAF \xED\xA0\x80 \xF4\x90\x80\x80 é\x80")) {
        EXPECT_FALSE(Text::isValid(bad));
        EXPECT_TRUE(Text::isValid(Text::printable(bad)));
    }
    EXPECT_TRUE(Text::isValid("\0é\uFFFF\U0010FFFF"s));
}

TEST(TextTest, ReadsDatesThatItCanWrite) {
    const std::pair<const char*, std::int64_t> good[] = {
        {"1969-12-31T23:59:59Z",      -1             },
        {"2026-02-28T23:30:00-1000",  1'772'357'400  },
        {"2026-03-01T10:30:00+01:00", 1'772'357'400  },
        {"2016-12-31T23:59:60Z",      1'483'228'800  },
        {"0000-01-01T00:00:00Z",      -62'167'219'200},
        {"9999-12-31T23:59:59Z",      253'402'300'799},
    };
    for (const auto& [text, moment] : good) {
        const auto date = Dates::parse(text);
        ASSERT_EQ(date, std::chrono::sys_seconds{std::chrono::seconds{moment}}) << text;
        EXPECT_EQ(Dates::parse(Dates::format(*date)), date) << text;
    }
    for (const std::string& text : words(R"(Z 2026-03-01 2026-03-01T09:30:00 2026-3-1T09:30:00Z
             2026-03-01T09:30:00.5Z 2026-03-01T24:00:00Z 2026-02-29T00:00:00Z
             2026-13-01T00:00:00Z -026-03-01T09:30:00Z 2026-03-01T09:30:00Zx
             2026-03-01T09:30:00+1 0000-01-01T00:00:00+01:00 9999-12-31T23:59:59-01:00)")) {
        EXPECT_EQ(Dates::parse(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace Brimlo
