#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/LaunchAgent/LaunchAgent.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"
#include "BrimloCoreTests/Support/SampleRule.h"
#include "Support/Proof.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include <sys/stat.h>
#include <unistd.h>

// Who else may read, write or plant what the program keeps.

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;

constexpr uid_t kSomebody = 1;
constexpr const char* kSupport = "Library/Application Support/Brimlo/";

class CleanerAccessTest : public Testing::CleaningHome {
protected:
    /// All that the program writes, made by it.
    void useAll() {
        static_cast<void>(AppConfig::change([](AppConfig& config) { config.staleDays = 5; }));
        EXPECT_TRUE(
            UserRules::save(Testing::sampleRule("custom.a"), UserRules::defaultDirectory()));
        EXPECT_TRUE(DisabledRules::set("npm.cache", true));
        clean({write("work/item")});
    }

    static const std::vector<std::string>& files() {
        static const std::vector<std::string> kFiles{
            "journal.json", "config.json", "disabled-rules.json", "Rules/custom.a.json"};
        return kFiles;
    }

    /// What the program makes of its files now.
    [[nodiscard]] std::vector<bool> readable() const {
        return {
            !journal_->entries().value_or(std::vector<JournalEntry>{}).empty(),
            AppConfig::load().staleDays == 5,
            DisabledRules::isDisabled("npm.cache"),
            !UserRules::load(UserRules::defaultDirectory()).rules.empty()};
    }
};

TEST_F(CleanerAccessTest, WhatIsMadeIsForItsOwnerAlone) {
    umask(0);
    useAll();
    for (const std::string& file : files()) {
        const std::string saved = contentOf(at(kSupport + file));
        write(kSupport + file, "damaged");
        static_cast<void>(readable());  // Makes the copies of what is damaged.
        write(kSupport + file, saved);
    }
    const std::string tool = write("tool", "#!/bin/sh\n");
    chmod(tool.c_str(), 0755);
    setenv("PATH", "/nowhere", 1);
    EXPECT_TRUE(LaunchAgent::install(tool));
    std::int64_t seen = 0;
    std::int64_t open = 0;
    for (const std::string& folder : std::vector<std::string>{kSupport, ".local/share/Trash"}) {
        for (const auto& entry : fs::recursive_directory_iterator{at(folder)}) {
            const std::string path = entry.path();
            if (path != inTrash("item")) {  // That one keeps its own mode.
                ++seen;
                open += (statusOf(path).st_mode & 077U) == 0 ? 0 : 1;
                EXPECT_EQ(statusOf(path).st_mode & 077U, 0U) << path;
            }
        }
    }
    for (const std::string& path : {StoragePaths::support(), LaunchAgent::definitionPath()}) {
        ++seen;
        open += (statusOf(path).st_mode & 077U) == 0 ? 0 : 1;
    }
    EXPECT_EQ(open, 0);
    EXPECT_GE(seen, 10);
    Testing::told("files and folders for their owner alone", seen, open);
}

TEST_F(CleanerAccessTest, WhatSomebodyElseMadeIsNotTrusted) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "giving a file away needs root";
    }
    useAll();
    EXPECT_EQ(readable(), std::vector<bool>(4, true));
    std::int64_t broken = 0;
    for (std::size_t i = 0; i < files().size(); ++i) {
        SCOPED_TRACE(files()[i]);
        const std::string path = at(kSupport + files()[i]);
        ASSERT_EQ(chown(path.c_str(), kSomebody, kSomebody), 0);
        std::vector<bool> expected(4, true);
        expected[i] = false;
        const bool isRight = readable() == expected;
        EXPECT_TRUE(isRight);
        broken += isRight ? 0 : 1;
        ASSERT_EQ(chown(path.c_str(), 0, 0), 0);
    }
    Testing::told("files that somebody else has planted", 4, broken);
}

TEST_F(CleanerAccessTest, AForeignFileIsNeverOverwritten) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "giving a file away needs root";
    }
    useAll();
    for (const char* file : {"journal.json", "config.json", "disabled-rules.json"}) {
        const std::string path = at(std::string{kSupport} + file);
        const std::string before = contentOf(path);
        ASSERT_EQ(chown(path.c_str(), kSomebody, kSomebody), 0);
        const auto changed = AppConfig::change([](AppConfig& config) { config.staleDays = 6; });
        EXPECT_EQ(changed.has_value(), std::string{file} != "config.json");
        const auto switched = DisabledRules::set("npm.logs", true);
        EXPECT_EQ(switched.has_value(), std::string{file} != "disabled-rules.json");
        // The item still goes: trouble with the journal never stops a clean. But no entry is told.
        const CleanReport report = clean({write("work/other")});
        EXPECT_EQ(report.processed, 1);
        EXPECT_EQ(report.journalIDs.empty(), std::string{file} == "journal.json");
        EXPECT_EQ(contentOf(path), before);
        ASSERT_EQ(chown(path.c_str(), 0, 0), 0);
    }
}

TEST_F(CleanerAccessTest, LinksOfTheUsersOwnLeadWhereTheySayAndNoFurther) {
    struct Case {
        const char* name;
        std::string link;  ///< Relative to the home folder.
        bool isFolder;
        bool isFollowed;  ///< What is written goes through the link.
    };
    const std::string support = kSupport;
    const Case cases[] = {
        {"support folder", support.substr(0, support.size() - 1), true, true},
        {"rules folder", support + "Rules", true, true},
        {"journal", support + "journal.json", false, false},
        {"lock", support + "journal.json.lock", false, false},
        {"settings lock", support + "config.json.lock", false, false},
        {"settings", support + "config.json", false, false},
        {"rule", support + "Rules/custom.a.json", false, false},
        {"job", ".config/systemd/user/app.brimlo.autoclean.service", false, false},
    };
    const std::string tool = write("tool", "#!/bin/sh\n");
    chmod(tool.c_str(), 0755);
    setenv("PATH", "/nowhere", 1);
    std::int64_t broken = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        for (const char* old : {"Library", ".config", "elsewhere"}) {
            fs::remove_all(at(old));
        }
        const std::string target = c.isFolder ? makeFolder("elsewhere") : write("elsewhere", "old");
        link(c.link, target);
        useAll();
        EXPECT_TRUE(LaunchAgent::install(tool));
        const bool isRight = c.isFolder ? !fs::is_empty(target) && fs::is_symlink(at(c.link))
                                        : contentOf(target) == "old";
        EXPECT_TRUE(isRight);
        EXPECT_EQ(readable(), std::vector<bool>(4, true));
        broken += isRight ? 0 : 1;
    }
    Testing::told("links in the places of folders and files", std::size(cases), broken);
}

}  // namespace
}  // namespace Brimlo
