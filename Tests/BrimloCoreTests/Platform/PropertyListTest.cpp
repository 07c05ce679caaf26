#include "BrimloCore/Platform/macOS/PropertyList.h"

#include "BrimloCore/Platform/PeriodicJob.h"

#include <gmock/gmock.h>

#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

namespace Brimlo::Platform {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

PropertyList text(const std::string& words) {
    return {.value = words};
}

PropertyList number(std::int64_t count) {
    return {.value = count};
}

/// A document around a root.
std::string document(const std::string& root) {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE plist>\n<plist version=\"1.0\">" + root + "</plist>";
}

/// Every character that may stand in XML, some beyond the basic plane, and what looks like markup.
std::string allCharacters() {
    std::string text = "\t\n\r";
    for (char c = ' '; c < '\x7f'; ++c) {
        text += c;
    }
    return text + "\u00e9\u00df\u4e2d\U0001F600 ]]> <!-- --> &amp; &#10; <string>";
}

TEST(PropertyListTest, ReadsBackWhatItWrites) {
    const std::string all = allCharacters();
    const PropertyList nothing = text("");
    const PropertyList word = text(all);
    const PropertyList words{
        Array{word, nothing}
    };
    const PropertyList empty{Dictionary{}};
    const PropertyList nested{
        Array{words, empty, number(0)}
    };
    const PropertyList::Entry pairs[] = {
        {all, word  },
        {"",  words },
        {"k", nested}
    };
    const std::vector<PropertyList> lists{
        nothing,
        word,
        number(-1),
        number(21'600),
        PropertyList{Array{}},
        empty,
        nested,
        PropertyList{Dictionary{std::begin(pairs), std::end(pairs)}},
    };
    for (const PropertyList& list : lists) {
        const std::string xml = list.xml();
        EXPECT_EQ(PropertyList::parse(xml), list) << xml;
        // One character less or one more is no other list.
        for (std::size_t length = 0; length + 1 < xml.size(); ++length) {
            ASSERT_EQ(PropertyList::parse(xml.substr(0, length)), std::nullopt) << length;
        }
        EXPECT_EQ(PropertyList::parse(xml + "<"), std::nullopt);
    }
}

TEST(PropertyListTest, ReadsWhatOthersWrite) {
    using Answer = std::optional<PropertyList>;
    const PropertyList mixed{
        Array{text(""), PropertyList{}, PropertyList{}}
    };
    const std::pair<std::string, Answer> read[] = {
        {"<string>a&#x41;&#233;&#x1F600;&lt;</string>",           text("aA\u00e9\U0001F600<")},
        {"<string>a<!-- no --><![CDATA[<b>&amp;]]></string>",     text("a<b>&amp;")          },
        {"<array >\n<string/> <true/><real>1.5</real></array>\n", mixed                      },
        {" <!-- x --> <dict/><!-- y -->",                         PropertyList{Dictionary{}} },
        {"<integer> 7 </integer>",                                number(7)                  },
    };
    for (const auto& [root, list] : read) {
        EXPECT_EQ(PropertyList::parse(document(root)), list) << root;
    }
    EXPECT_TRUE(PropertyList::parse("\n<plist><array/></plist>\n<!-- x -->\n"));
    for (const char* const root :
         {"<integer>7x</integer>",
          "<integer>99999999999999999999</integer>",
          "<string>&#0;</string>",
          "<string>&#xD800;</string>",
          "<string>&#x110000;</string>",
          "<string>&#;</string>",
          "<string>&nbsp;</string>",
          "<string>&amp</string>",
          "<string>a</array>",
          "<string><b/></string>",
          "<array><string>a</array>",
          "<dict><string>a</string></dict>",
          "<dict><key>a</key></dict>",
          "<dict><key>a</key><string>b</string></array>",
          "<array/><array/>",
          ""}) {
        EXPECT_EQ(PropertyList::parse(document(root)), std::nullopt) << root;
    }
    for (const char* const other :
         {"<plist/>",
          "</plist>",
          "<array/>",
          "bplist00",
          "<!-- <plist><array/></plist>",
          "<plist><array/></plist>x"}) {
        EXPECT_EQ(PropertyList::parse(other), std::nullopt) << other;
    }
}

TEST(PropertyListTest, IsNotLedTooDeep) {
    const auto nested = [](int levels) {
        std::string open;
        std::string close;
        for (int i = 0; i < levels; ++i) {
            open += "<array>";
            close += "</array>";
        }
        return document(open + close);
    };
    EXPECT_TRUE(PropertyList::parse(nested(30)));
    EXPECT_FALSE(PropertyList::parse(nested(100'000)));
}

TEST(PropertyListTest, DefinesTheJob) {
    const PeriodicJob job{"app.brimlo.autoclean", "/Users/a&b"};
    const std::string path = "/Users/a&b/Library/LaunchAgents/app.brimlo.autoclean.plist";
    EXPECT_EQ(job.paths(), std::vector{path});
    const std::string tool = "/Users/a&b/<\u00e9>/\"x\"/it's/brimlo";
    const auto files = job.files({
        .arguments = {tool, "autoclean", "--execute"},
        .intervalSeconds = 21'600,
        .log = "/l o g",
    });
    ASSERT_TRUE(files && files->size() == 1);
    EXPECT_EQ(files->front().path, path);
    Dictionary expected;
    expected.emplace_back("Label", text("app.brimlo.autoclean"));
    const Array words{text(tool), text("autoclean"), text("--execute")};
    expected.emplace_back("ProgramArguments", PropertyList{words});
    expected.emplace_back("StartInterval", number(21'600));
    expected.emplace_back("StandardOutPath", text("/l o g"));
    expected.emplace_back("StandardErrorPath", text("/l o g"));
    EXPECT_EQ(PropertyList::parse(files->front().text), PropertyList{expected});
    EXPECT_EQ(PeriodicJob::program(files->front().text), tool);

    using Moment = PeriodicJob::Moment;
    using Commands = std::vector<PeriodicJob::Command>;
    const std::string session = "gui/" + std::to_string(getuid());
    const std::string launchctl = "/bin/launchctl";
    EXPECT_EQ(
        job.commands(Moment::beforeChange),
        (Commands{
            {launchctl, "bootout", session + "/app.brimlo.autoclean"}
    }));
    EXPECT_EQ(
        job.commands(Moment::afterWriting),
        (Commands{
            {launchctl, "bootstrap", session, path}
    }));
    EXPECT_EQ(job.commands(Moment::afterRemoving), Commands{});
    for (const char* const bad : {"/a\nb", "/a\x7f", "/\x01"}) {
        EXPECT_FALSE(job.files({.arguments = {bad}, .log = "/l"})) << bad;
        EXPECT_FALSE(job.files({.arguments = {"/x"}, .log = bad})) << bad;
    }
}

TEST(PropertyListTest, TellsTheProgramOfAnEditedJob) {
    const auto arguments = [](const std::string& value) {
        return document("<dict><key>ProgramArguments</key>" + value + "</dict>");
    };
    const std::string word = "<string>/x y</string>";
    EXPECT_EQ(PeriodicJob::program(arguments("<array>" + word + word + "</array>")), "/x y");
    for (const std::string& other :
         {arguments(word),
          arguments("<array/>"),
          arguments("<array>" + word + "<integer>1</integer></array>"),
          document("<dict><key>Program</key>" + word + "</dict>"),
          document("<array>" + word + "</array>"),
          std::string{}}) {
        EXPECT_EQ(PeriodicJob::program(other), std::nullopt) << other;
    }
}

}  // namespace
}  // namespace Brimlo::Platform
