#include "BrimloToolTests/ToolTest.h"

namespace Brimlo::Testing {

namespace {

class ConfigCommandTest : public ToolTest {};

constexpr std::string_view kDefaults =
    R"({"autoCleanEnabled":false,"freeSpaceThresholdGB":30,"staleDays":90,)"
    R"("trashRetentionDays":7,"autoCleanIncludesCustomRules":false,"cliInstallOffered":false})";

TEST_F(ConfigCommandTest, ShowsAndChangesOneSetting) {
    const std::string noNumber = "brimlo: stale-days takes a whole number, 0 or more, not ";
    const std::string noFlag = "brimlo: auto-clean-enabled takes true or false, not ";
    struct Case {
        std::vector<std::string> arguments;
        Outcome outcome;
    };
    const Case cases[] = {
        {{"stale-days"},                        {0, "90\n", ""}                                 },
        {{"stale-days", "0"},                   {0, "0\n", ""}                                  },
        {{"stale-days", "60"},                  {0, "60\n", ""}                                 },
        {{"stale-days", "-1"},                  {2, "", noNumber + "\"-1\".\n"}                 },
        {{"stale-days", "1e3"},                 {2, "", noNumber + "\"1e3\".\n"}                },
        {{"stale-days", ""},                    {2, "", noNumber + "\"\".\n"}                   },
        {{"stale-days", "9223372036854775808"}, {2, "", noNumber + "\"9223372036854775808\".\n"}},
        {{"stale-days", "--json"},              {0, "{\"staleDays\":60}\n", ""}                 },
        {{"auto-clean-enabled", "yes"},         {2, "", noFlag + "\"yes\".\n"}                  },
        {{"auto-clean-enabled", "true"},        {0, "true\n", ""}                               },
        {{"auto-clean-enabled", "--json"},      {0, "{\"autoCleanEnabled\":true}\n", ""}        },
    };
    EXPECT_EQ(Json::compact(answer({"config"})), kDefaults);
    for (auto [arguments, outcome] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        arguments.insert(arguments.begin(), "config");
        EXPECT_EQ(run(arguments), outcome);
    }
}

TEST_F(ConfigCommandTest, TellsWhatCouldNotBeSaved) {
    makeFolder(support("config.json/occupied"));
    const Outcome failed{1, "", "brimlo: The setting could not be saved.\n"};
    EXPECT_EQ(run({"config", "stale-days", "60"}), failed);
    makeFolder(support("disabled-rules.json/occupied"));
    const Outcome failedToo{1, "", "brimlo: The change could not be saved.\n"};
    EXPECT_EQ(run({"rules", "disable", "npm.cache"}), failedToo);
}

TEST_F(ConfigCommandTest, GoesOnWithDamagedFiles) {
    const std::string entry =
        R"({"id":"9B2D0F54-0F3B-4A55-8E4E-0C5C4F0B7A11","date":"2024-01-02T03:04:05Z",)"
        R"("originalPath":"/x","size":1,"undone":false,"purgedFromTrash":false,)"
        R"("batchID":"1B2D0F54-0F3B-4A55-8E4E-0C5C4F0B7A11"})";
    const std::string config{kDefaults};
    struct Case {
        std::string file;
        std::string content;
        std::vector<std::string> command;
        std::string answer;
        bool isKept;
    };
    const Case cases[] = {
        {"config.json",         "{",                       {"config"},                       config,            true },
        {"config.json",         R"({"staleDays":"60"})",   {"config"},                       config,            true },
        {"config.json",         "\xff",                    {"config"},                       config,            true },
        {"journal.json",        "",                        {"history"},                      "[]",              true },
        {"journal.json",        "{}",                      {"history"},                      "[]",              true },
        {"journal.json",        "[" + entry + "," + entry, {"history"},                      "[]",              true },
        {"journal.json",        "[1," + entry + ",{}]",    {"history"},                      "[" + entry + "]", true },
        {"journal.json",        "[" + entry + "]",         {"history"},                      "[" + entry + "]", false},
        {"disabled-rules.json",
         "[\"npm.cache\"",                                 {"rules", "enable", "npm.cache"},
         R"({"id":"npm.cache","enabled":true})",                                                                false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.content);
        const std::string path = write(support(c.file), c.content);
        EXPECT_EQ(Json::compact(answer(c.command)), c.answer);
        EXPECT_EQ(exists(path + ".corrupt"), c.isKept);
        if (c.isKept) {
            EXPECT_EQ(contentOf(path), c.content);
            EXPECT_EQ(contentOf(path + ".corrupt"), c.content);
            std::remove((path + ".corrupt").c_str());
        }
    }
}

}  // namespace

}  // namespace Brimlo::Testing
