#include "BrimloCore/Support/AppConfig.h"

#include "BrimloCore/Support/Files.h"
#include "BrimloCoreTests/Support/Words.h"
#include "Support/TempHome.h"

#include <cerrno>
#include <filesystem>
#include <functional>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using Testing::contentOf;
using Testing::exists;

class AppConfigTest : public Testing::TempHome {
protected:
    [[nodiscard]] std::vector<std::string> names() const { return Folders::names(home()).value(); }

    static std::function<void(AppConfig&)> become(const AppConfig& wanted) {
        return [wanted](AppConfig& config) { config = wanted; };
    }

    std::string path_ = at("config.json");
};

TEST_F(AppConfigTest, TakesDefaultsForWhatIsAbsent) {
    EXPECT_EQ(AppConfig::load(path_), AppConfig{});
    const std::pair<const char*, AppConfig> cases[] = {
        {"{}",                                {}                   },
        {R"({"staleDays": null, "new": []})", {}                   },
        {R"({"staleDays": 7.0})",             {.staleDays = 7}     },
        {R"({"staleDays": 36500})",           {.staleDays = 36'500}},
    };
    for (const auto& [text, config] : cases) {
        write("config.json", text);
        EXPECT_EQ(AppConfig::load(path_), config) << text;
    }
    EXPECT_EQ(names(), std::vector<std::string>{"config.json"});
}

TEST_F(AppConfigTest, KeepsADamagedFileAside) {
    const AppConfig saved{.autoCleanEnabled = true, .staleDays = 7};
    std::vector<std::string> texts = Testing::words(R"(oops [] {"staleDays":"soon"}
        {"staleDays":1.5} {"staleDays":1e400} {"staleDays":9223372036854775808}
        {"autoCleanEnabled":1} {"staleDays":36501} {"trashRetentionDays":-1}
        {"freeSpaceThresholdGB":9223372037})");
    texts.insert(texts.end(), {"", "{\"x\": \"\xFF\"}", std::string(100'000'000, '[')});
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 60));
        write("config.json", text);
        EXPECT_EQ(AppConfig::load(path_), AppConfig{});
        EXPECT_EQ(std::filesystem::file_size(path_), text.size());
        EXPECT_EQ(AppConfig::read(path_).error().domain, kErrorDomain);
        EXPECT_EQ(AppConfig::change(become(saved), path_), saved);
        EXPECT_EQ(AppConfig::load(path_), saved);
        ASSERT_EQ(std::filesystem::file_size(path_ + ".corrupt"), text.size());
        EXPECT_TRUE(text.size() > 1'000'000 || contentOf(path_ + ".corrupt") == text);
    }
}

TEST_F(AppConfigTest, IsWrittenPrettyAndSortedInItsPlace) {
    ASSERT_TRUE(AppConfig::change(become({.staleDays = 0})));
    const std::string path = at("Library/Application Support/Brimlo/config.json");
    EXPECT_TRUE(contentOf(path).starts_with("{\n  \"autoCleanEnabled\": false,\n  \"autoClean"));
    EXPECT_TRUE(contentOf(path).ends_with("\"staleDays\": 0,\n  \"trashRetentionDays\": 7\n}\n"));
    EXPECT_EQ(AppConfig::load(), AppConfig{.staleDays = 0});
    EXPECT_EQ(
        AppConfig::change(become({.staleDays = -1})).error().description,
        "The setting could not be saved: staleDays is -1, not from 0 to 36500");
    EXPECT_EQ(AppConfig::load(), AppConfig{.staleDays = 0}) << "beyond the limits";
    EXPECT_EQ(
        AppConfig::change(become({}), at("missing/config.json")).error().description,
        "The setting could not be saved: No such file or directory");
    EXPECT_FALSE(exists(at("missing")));
}

TEST_F(AppConfigTest, AFileIsReplacedAsAWholeOrNotAtAll) {
    write("config.json", "old");
    {
        auto dropped = AtomicFile::prepare(path_, "new");
        ASSERT_TRUE(dropped);
        const AtomicFile moved = *std::move(dropped);
        EXPECT_EQ(names().size(), 2U);
        EXPECT_EQ(contentOf(path_), "old");
    }
    EXPECT_EQ(names(), std::vector<std::string>{"config.json"});
    EXPECT_TRUE(AtomicFile::write(path_, ""));
    EXPECT_EQ(contentOf(path_), "");

    // A folder in the way: the write fails, and nothing is left beside it.
    ASSERT_TRUE(std::filesystem::remove(path_));
    write("config.json/inside", "kept");
    EXPECT_EQ(AtomicFile::write(path_, "new").error(), Error::fromSystem(EISDIR));
    EXPECT_EQ(names(), std::vector<std::string>{"config.json"});
    EXPECT_EQ(contentOf(path_ + "/inside"), "kept");
    EXPECT_EQ(AtomicFile::write("", "x").error(), Error::fromSystem(EINVAL));
    EXPECT_EQ(AtomicFile::write(at("missing/x"), "x").error(), Error::fromSystem(ENOENT));
}

TEST_F(AppConfigTest, ReadsOnlyRegularFilesOfLimitedLength) {
    const std::string file = write("file", "12345");
    const std::string pipe = at("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(readFile(file, 5), "12345");
    EXPECT_EQ(readFile(link("link", file), 100), "12345");
    EXPECT_EQ(readFile(write("empty", ""), 0), "");
    const std::string circle = link("circle", "circle");
    const std::pair<std::string, int> cases[] = {
        {file,          EFBIG },
        {pipe,          EINVAL},
        {"/dev/zero",   EINVAL},
        {home(),        EISDIR},
        {at("missing"), ENOENT},
        {circle,        ELOOP },
        {"",            EINVAL},
        {file + '\0',   EINVAL},
    };
    for (const auto& [path, code] : cases) {
        EXPECT_EQ(readFile(path, 4).error(), Error::fromSystem(code)) << path;
    }
}

}  // namespace
}  // namespace Brimlo
