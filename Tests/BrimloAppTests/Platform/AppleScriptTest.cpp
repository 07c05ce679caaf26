#include "BrimloApp/Platform/macOS/AppleScript.h"

#include <gtest/gtest.h>

#include <string>

namespace Brimlo::Platform {
namespace {

constexpr std::string_view kBefore = "do shell script \"";
constexpr std::string_view kBehind = "\" with administrator privileges";

/// What AppleScript hands to the shell: the text between the first quote and the next one that is
/// not escaped, its escapes taken off. Empty when the script goes on in any other way than it
/// should.
std::string heard(std::string_view source) {
    std::string text;
    source.remove_prefix(kBefore.size());
    while (!source.empty() && source.front() != '"') {
        if (source.front() == '\\') {
            source.remove_prefix(1);
            const bool isKnown = source.front() == '\\' || source.front() == '"';
            EXPECT_TRUE(isKnown) << "another escape: " << source.front();
        }
        text += source.front();
        source.remove_prefix(1);
    }
    return source == kBehind ? text : "";
}

TEST(AppleScriptTest, HandsEveryCharacterToTheShell) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        EXPECT_EQ(heard(AppleScript::asAdministrator(one)), one) << byte;
        all += one;
    }
    for (const std::string& command :
         {all, all + all, std::string{R"(\)"}, std::string{R"(\")"}, std::string{R"(\\"\")"}}) {
        const std::string source = AppleScript::asAdministrator(command);
        EXPECT_TRUE(source.starts_with(kBefore));
        EXPECT_EQ(heard(source), command);
    }
}

TEST(AppleScriptTest, TellsARefusalFromAFailure) {
    using Outcome = PrivilegedRun::Outcome;
    const PrivilegedRun cancelled{Outcome::cancelled, ""};
    const PrivilegedRun unknown{Outcome::failed, "authorization failed"};
    EXPECT_EQ(AppleScript::ending(-128, "User canceled."), cancelled);
    EXPECT_EQ(AppleScript::ending(-128, {}), cancelled);
    EXPECT_EQ(AppleScript::ending(1, "ln: no"), (PrivilegedRun{Outcome::failed, "ln: no"}));
    EXPECT_EQ(AppleScript::ending({}, "why"), (PrivilegedRun{Outcome::failed, "why"}));
    EXPECT_EQ(AppleScript::ending(-60007, {}), unknown);
    EXPECT_EQ(AppleScript::ending({}, {}), unknown);
}

}  // namespace
}  // namespace Brimlo::Platform
