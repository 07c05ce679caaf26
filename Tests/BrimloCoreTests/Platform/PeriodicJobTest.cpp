#include "BrimloCore/Platform/PeriodicJob.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include <unistd.h>

namespace Brimlo::Platform {
namespace {

TEST(PeriodicJobTest, DefinesTheJob) {
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
    const std::string& xml = files->front().text;
    for (const char* part :
         {"<key>Label</key>\n\t<string>app.brimlo.autoclean</string>",
          "<string>autoclean</string>\n\t\t<string>--execute</string>",
          "<key>StartInterval</key>\n\t<integer>21600</integer>",
          "<key>StandardErrorPath</key>\n\t<string>/l o g</string>"}) {
        EXPECT_THAT(xml, testing::HasSubstr(part));
    }
    EXPECT_EQ(PeriodicJob::program(xml), tool);

    using Moment = PeriodicJob::Moment;
    const std::string session = "gui/" + std::to_string(getuid());
    const PeriodicJob::Command stop{"/bin/launchctl", "bootout", session + "/app.brimlo.autoclean"};
    const PeriodicJob::Command start{"/bin/launchctl", "bootstrap", session, path};
    EXPECT_EQ(job.commands(Moment::beforeChange), std::vector<PeriodicJob::Command>{stop});
    EXPECT_EQ(job.commands(Moment::afterWriting), std::vector<PeriodicJob::Command>{start});
    EXPECT_EQ(job.commands(Moment::afterRemoving), std::vector<PeriodicJob::Command>{});
    for (const char* const bad : {"/a\nb", "/a\x7f", "/\x01", "/\xff"}) {
        EXPECT_FALSE(job.files({.arguments = {bad}, .log = "/l"})) << bad;
        EXPECT_FALSE(job.files({.arguments = {"/x"}, .log = bad})) << bad;
    }
}

TEST(PeriodicJobTest, TellsTheProgramOfAnEditedJob) {
    const auto document = [](const std::string& root) {
        return "<?xml version=\"1.0\"?>\n<plist version=\"1.0\">" + root + "</plist>";
    };
    const auto arguments = [&](const std::string& value) {
        return document("<dict><key>ProgramArguments</key>" + value + "</dict>");
    };
    const std::string word = "<string>/x y</string>";
    EXPECT_EQ(PeriodicJob::program(arguments("<array>" + word + word + "</array>")), "/x y");
    for (const std::string& other :
         {arguments(word),
          arguments("<array>" + word + "<integer>1</integer></array>"),
          document("<dict><key>Program</key>" + word + "</dict>"),
          document("<array>" + word + "</array>"),
          arguments("<array>" + word),
          std::string{}}) {
        EXPECT_EQ(PeriodicJob::program(other), std::nullopt) << other;
    }
}

}  // namespace
}  // namespace Brimlo::Platform
